#include "shape_generator/MeshBuilder.h"

#include <cmath>

namespace ShapeTools
{
float Vec3::Length() const
{
    return std::sqrt(Dot(*this));
}

Vec3 Vec3::Normalized() const
{
    const float length = Length();
    return length > 0.0f ? *this * (1.0f / length) : *this;
}

Vec3 PositionOf(const Graphics::Vertex& vertex)
{
    return {vertex.position[0], vertex.position[1], vertex.position[2]};
}

Vec3 NormalOf(const Graphics::Vertex& vertex)
{
    return {vertex.normal[0], vertex.normal[1], vertex.normal[2]};
}

std::uint32_t MeshBuilder::AddVertex(const Vec3& position, const Vec3& normal, float u, float v)
{
    Graphics::Vertex vertex;
    const Vec3 n = normal.Normalized();
    const float p[3] = {position.x, position.y, position.z};
    const float q[3] = {n.x, n.y, n.z};
    for (int k = 0; k < 3; ++k)
    {
        vertex.position[k] = p[k];
        vertex.normal[k] = q[k];
    }
    vertex.uv[0] = u;
    vertex.uv[1] = v;
    m_Vertices.push_back(vertex);
    return static_cast<std::uint32_t>(m_Vertices.size() - 1);
}

void MeshBuilder::AddTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c)
{
    m_Indices.insert(m_Indices.end(), {a, b, c});
}

void MeshBuilder::AddFlatFace(const std::vector<Vec3>& corners)
{
    if (corners.size() < 3)
        return;
    // Newell's normal: robust for any planar polygon.
    Vec3 normal;
    for (std::size_t i = 0; i < corners.size(); ++i)
        normal = normal + corners[i].Cross(corners[(i + 1) % corners.size()]);
    normal = normal.Normalized();

    // Project along the main axis so that the picture is upright and unmirrored seen from outside.
    const float ax = std::fabs(normal.x), ay = std::fabs(normal.y), az = std::fabs(normal.z);
    auto uvOf = [&](const Vec3& p, float& u, float& v) {
        if (ay >= ax && ay >= az)
        {
            u = p.x;
            v = normal.y > 0.0f ? p.z : -p.z;
        }
        else if (ax >= az)
        {
            u = normal.x > 0.0f ? -p.z : p.z;
            v = -p.y;
        }
        else
        {
            u = normal.z > 0.0f ? p.x : -p.x;
            v = -p.y;
        }
        u += 0.5f;
        v += 0.5f;
    };
    std::vector<std::uint32_t> indices;
    for (const Vec3& corner : corners)
    {
        float u = 0.0f, v = 0.0f;
        uvOf(corner, u, v);
        indices.push_back(AddVertex(corner, normal, u, v));
    }
    for (std::size_t i = 1; i + 1 < indices.size(); ++i)
        AddTriangle(indices[0], indices[i], indices[i + 1]);
}

void MeshBuilder::Append(const MeshBuilder& other, const Placement& placement)
{
    const auto base = static_cast<std::uint32_t>(m_Vertices.size());
    for (const Graphics::Vertex& vertex : other.m_Vertices)
        AddVertex(placement.Apply(PositionOf(vertex)), placement.Turn(NormalOf(vertex)), vertex.uv[0], vertex.uv[1]);
    for (std::uint32_t index : other.m_Indices)
        m_Indices.push_back(base + index);
}

Graphics::ModelFile MeshBuilder::Build() const
{
    Graphics::ModelFile model;
    model.Vertices = m_Vertices;
    model.Indices = m_Indices;

    // Accumulate each triangle's direction of increasing u on its corners.
    std::vector<Vec3> tangents(m_Vertices.size());
    for (std::size_t t = 0; t + 2 < m_Indices.size(); t += 3)
    {
        const Graphics::Vertex& a = m_Vertices[m_Indices[t]];
        const Graphics::Vertex& b = m_Vertices[m_Indices[t + 1]];
        const Graphics::Vertex& c = m_Vertices[m_Indices[t + 2]];
        const Vec3 e1 = PositionOf(b) - PositionOf(a), e2 = PositionOf(c) - PositionOf(a);
        const float du1 = b.uv[0] - a.uv[0], dv1 = b.uv[1] - a.uv[1];
        const float du2 = c.uv[0] - a.uv[0], dv2 = c.uv[1] - a.uv[1];
        const float det = du1 * dv2 - du2 * dv1;
        if (std::fabs(det) < 1e-12f)
            continue;
        const Vec3 tangent = (e1 * dv2 - e2 * dv1) * (1.0f / det);
        for (std::size_t k = 0; k < 3; ++k)
            tangents[m_Indices[t + k]] = tangents[m_Indices[t + k]] + tangent;
    }
    for (std::size_t i = 0; i < model.Vertices.size(); ++i)
    {
        const Vec3 normal = NormalOf(model.Vertices[i]);
        Vec3 tangent = tangents[i] - normal * normal.Dot(tangents[i]);
        if (tangent.Length() < 1e-6f)
        {
            // No texture direction here: any direction along the surface.
            const Vec3 axis = std::fabs(normal.y) < 0.99f ? Vec3{0, 1, 0} : Vec3{1, 0, 0};
            tangent = axis.Cross(normal);
        }
        tangent = tangent.Normalized();
        model.Vertices[i].tangent[0] = tangent.x;
        model.Vertices[i].tangent[1] = tangent.y;
        model.Vertices[i].tangent[2] = tangent.z;
    }
    return model;
}
}
