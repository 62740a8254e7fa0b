#include "rooms/WallMeshGenerator.h"

#include "rooms/RoomData.h"
#include "utilities/Meta/Registration.h"

META_REGISTER_ENUM(RandomType, {{"RandomType::UNIFORM", UNIFORM}, {"RandomType::GAUSS", GAUSS}});

META_REGISTER(WallMeshGenerator)
{
    DERIVE(Component);
    DESCRIPTION("Turns a room's tile grid into rough rock meshes (the meshes are not made yet).");
    DEPENDENCY(Transform);
    MEMBER(m_FloorRandomMin, "Lowest noise of floor vertices");
    MEMBER(m_FloorRandomMax, "Highest noise of floor vertices");
    MEMBER(m_WallRandomMin, "Lowest noise of wall vertices");
    MEMBER(m_WallRandomMax, "Highest noise of wall vertices");
    MEMBER(m_PitRandomMin, "Lowest noise of pit vertices");
    MEMBER(m_PitRandomMax, "Highest noise of pit vertices");
    MEMBER_FLAGS(m_Distribution, false, true, "Uniform or Gaussian noise");
    MEMBER_FLAGS(m_ArchetypeName, false, true, "Archetype of the chunk objects");
    MEMBER_FLAGS(m_ChunkSize, false, true, "Lattice cells per chunk side");
    MEMBER(m_WallPoints, "Points of a vertical wall column");
    MEMBER(m_GuassDev, "Scale of the Gaussian deviation");
    MEMBER_FLAGS(m_Scale, false, true, "World size of a tile, set by Generate");
    MEMBER_FLAGS(m_GridSize, false, true, "Unpadded width and height of the grid, set by Generate");
}

Meta::Data* WallMeshGenerator::GetMeta() const
{
    return Meta::Get<WallMeshGenerator>();
}

void WallMeshGenerator::Generate(const std::vector<std::vector<int>>& grid, const Math::Vector3D& scale,
                                 float depthTop, float depthBottom)
{
    const std::size_t width = RoomData::Width(grid);
    m_Grid.assign(grid.size() + 2, std::vector<int>(width + 2, 0));
    for (std::size_t row = 0; row < grid.size(); ++row)
        for (std::size_t column = 0; column < grid[row].size(); ++column)
            m_Grid[row + 1][column + 1] = grid[row][column];
    m_GridSize = Math::Vector2D(static_cast<float>(width), static_cast<float>(grid.size()));
    m_Scale = scale;
    m_DepthTop = depthTop;
    m_DepthBottom = depthBottom;
    // Not built yet: the vertex lattice, its noise, the chunk objects of m_ArchetypeName with
    // their WallMesh, and the per-side wall flags of the room's boxes. The quad tree of the
    // space is built by the room (Room::CreateEnviroment), as this would.
}
