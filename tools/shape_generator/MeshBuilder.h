// MeshBuilder collects the vertices and triangles of a generated shape and
// turns them into a static kbm model. Triangles are given counter-clockwise as
// seen from outside (the engine's front faces). Tangents are made at Build from
// the texture coordinates: each vertex's tangent points along increasing u,
// perpendicular to its normal. Texture coordinates have their origin at the
// top left (v grows downwards), as the engine samples them.
#pragma once

#include "Graphics_Engine/Model/ModelFile.h"

#include <cstdint>
#include <vector>

namespace ShapeTools
{
// A small 3D vector for building shapes.
struct Vec3
{
    float x = 0.0f, y = 0.0f, z = 0.0f;

    Vec3 operator+(const Vec3& o) const { return {x + o.x, y + o.y, z + o.z}; }
    Vec3 operator-(const Vec3& o) const { return {x - o.x, y - o.y, z - o.z}; }
    Vec3 operator*(float s) const { return {x * s, y * s, z * s}; }
    // The dot product.
    float Dot(const Vec3& o) const { return x * o.x + y * o.y + z * o.z; }
    // The cross product.
    Vec3 Cross(const Vec3& o) const { return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x}; }
    float Length() const;
    // This vector at length 1; the zero vector stays zero.
    Vec3 Normalized() const;
};

// A rigid placement of a part: rotation by Rotation (rows of a row-vector matrix), then Offset.
struct Placement
{
    Vec3 Rotation[3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    Vec3 Offset;

    // The point moved by this placement.
    Vec3 Apply(const Vec3& p) const { return Rotation[0] * p.x + Rotation[1] * p.y + Rotation[2] * p.z + Offset; }
    // The direction turned by this placement.
    Vec3 Turn(const Vec3& d) const { return Rotation[0] * d.x + Rotation[1] * d.y + Rotation[2] * d.z; }
};

class MeshBuilder
{
public:
    // Adds a vertex; its index.
    std::uint32_t AddVertex(const Vec3& position, const Vec3& normal, float u, float v);
    // Adds the triangle a, b, c, counter-clockwise seen from outside.
    void AddTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c);
    // Adds a flat convex polygon, corners counter-clockwise seen from outside, with its own
    // vertices, the face's normal and texture coordinates projected along its main axis.
    void AddFlatFace(const std::vector<Vec3>& corners);
    // Adds every vertex and triangle of another builder, moved by `placement`.
    void Append(const MeshBuilder& other, const Placement& placement = {});

    // The vertices so far (tangents are made by Build).
    const std::vector<Graphics::Vertex>& Vertices() const { return m_Vertices; }
    // The triangle corners so far, three a triangle.
    const std::vector<std::uint32_t>& Indices() const { return m_Indices; }

    // The static model of these triangles, with tangents.
    Graphics::ModelFile Build() const;

private:
    std::vector<Graphics::Vertex> m_Vertices;
    std::vector<std::uint32_t> m_Indices;
};

// Reads a vertex's position.
Vec3 PositionOf(const Graphics::Vertex& vertex);
// Reads a vertex's normal.
Vec3 NormalOf(const Graphics::Vertex& vertex);
}
