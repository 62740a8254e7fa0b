// WallMeshGenerator: the component that turns a room's tile grid into rough
// rock meshes, made once per room build from the archetype
// "WallMeshGenerator". Its serialized values are the noise of each kind of
// vertex (floor, wall, pit), the points of a wall column and the spread of the
// Gaussian noise:
//
//   WallMeshGenerator
//   {
//     FloorRandomMin { -0.1 -0.1 -0.1 }
//     FloorRandomMax { 0.1 0.1 0.1 }
//     WallPoints 10
//     GuassDev 1
//   }
//
// Generate keeps the padded grid, its size and the tile size. The meshes
// themselves (the lattice, the noise and the chunk objects with their
// WallMesh) are not made yet: for now the room's boxes are what shows.
#pragma once

#include "engine/Component.h"
#include "engine/Math/Vector2D.h"
#include "engine/Math/Vector3D.h"

#include <random>
#include <string>
#include <vector>

// How the generator draws its noise.
enum RandomType
{
    UNIFORM = 0,
    GAUSS = 1
};

class WallMeshGenerator : public Component
{
public:
    Component* Clone() const override { return new WallMeshGenerator(*this); }
    Meta::Data* GetMeta() const override;

    // Builds the rock meshes of `grid` (grid[row][column], tile values) with tiles of size `scale`
    // between the heights `depthTop` and `depthBottom`. For now it keeps the grid padded by a ring
    // of wall, its unpadded size and the scale; the meshes are not made yet.
    void Generate(const std::vector<std::vector<int>>& grid, const Math::Vector3D& scale, float depthTop,
                  float depthBottom);

    // Noise bounds of floor vertices.
    Math::Vector3D m_FloorRandomMin{-0.1f, -0.1f, -0.1f};
    Math::Vector3D m_FloorRandomMax{0.1f, 0.1f, 0.1f};
    // Noise bounds of wall vertices.
    Math::Vector3D m_WallRandomMin{-0.1f, -0.1f, -0.1f};
    Math::Vector3D m_WallRandomMax{0.1f, 0.1f, 0.1f};
    // Noise bounds of pit vertices.
    Math::Vector3D m_PitRandomMin{-0.1f, -0.1f, -0.1f};
    Math::Vector3D m_PitRandomMax{0.1f, 0.1f, 0.1f};
    // The generator of the noise; the same sequence each run unless reseeded.
    std::mt19937 m_Random{5489u};
    // Uniform or Gaussian noise.
    RandomType m_Distribution = GAUSS;
    // Archetype of the chunk objects.
    std::string m_ArchetypeName = "WallMesh";
    // Lattice cells per chunk side.
    int m_ChunkSize = 10;
    // Points of a vertical wall column.
    int m_WallPoints = 10;
    // Scale of the Gaussian deviation.
    float m_GuassDev = 1.0f;
    // World size of a tile, set by Generate.
    Math::Vector3D m_Scale{1.0f, 1.0f, 1.0f};
    // The tile grid padded by a ring of wall, set by Generate.
    std::vector<std::vector<int>> m_Grid;
    // Unpadded width and height of the grid, set by Generate.
    Math::Vector2D m_GridSize{0.0f, 0.0f};
    // Heights passed to Generate.
    float m_DepthTop = 0.0f;
    float m_DepthBottom = 0.0f;
};
