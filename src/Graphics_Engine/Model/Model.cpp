#include "Graphics_Engine/Model/Model.h"

#include "Graphics_Engine/GraphicsDevice.h"
#include "Graphics_Engine/Model/ModelFile.h"
#include "Graphics_Engine/Model/Skeleton.h"
#include "engine/Log.h"
#include "utilities/Meta/Registration.h"

#include <limits>

namespace Graphics
{
namespace
{
// The bytes of `count` items of `each` bytes, or 0 when they do not fit a device buffer.
std::uint32_t BufferBytes(std::size_t count, std::size_t each)
{
    if (count > std::numeric_limits<std::uint32_t>::max() / each)
        return 0;
    return static_cast<std::uint32_t>(count * each);
}

void Subtract(const float a[3], const float b[3], float out[3])
{
    for (int i = 0; i < 3; ++i)
        out[i] = a[i] - b[i];
}

void Cross(const float a[3], const float b[3], float out[3])
{
    out[0] = a[1] * b[2] - a[2] * b[1];
    out[1] = a[2] * b[0] - a[0] * b[2];
    out[2] = a[0] * b[1] - a[1] * b[0];
}

float Dot(const float a[3], const float b[3])
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
}

Model::~Model()
{
    DestroyBuffers();
}

void Model::SetFromFile(ModelFile&& file)
{
    Vertices = std::move(file.Vertices);
    Indices = std::move(file.Indices);
    GlobalTransform = file.GlobalTransform;
    BuildBones(file.Bones, Bones);
    Animations = std::move(file.Animations);
}

void Model::SetGeometry(const std::vector<Vertex>& vertices, const std::vector<std::uint32_t>& indices)
{
    Vertices = vertices;
    Indices = indices;
    GlobalTransform = Math::Matrix4();
    Bones.clear();
    Animations.clear();
}

void Model::CreateBuffers(GraphicsDevice& device)
{
    DestroyBuffers();
    m_Device = &device;
    if (!Vertices.empty())
        CreateVertexBuffer();
    if (!Indices.empty())
        CreateIndexBuffer();
}

void Model::CreateVertexBuffer()
{
    const std::uint32_t size = BufferBytes(Vertices.size(), sizeof(Vertex));
    if (size != 0)
        VertexBuffer = m_Device->CreateBuffer({size, BufferKind::Vertex, BufferUsage::Default}, Vertices.data());
    if (!VertexBuffer)
        FATAL_ERROR_IN("Graphics::Model::CreateVertexBuffer", "Failed To Create Vertex Buffer");
}

void Model::CreateIndexBuffer()
{
    const std::uint32_t size = BufferBytes(Indices.size(), sizeof(std::uint32_t));
    if (size != 0)
        IndexBuffer = m_Device->CreateBuffer({size, BufferKind::Index, BufferUsage::Default}, Indices.data());
    if (!IndexBuffer)
        FATAL_ERROR_IN("Graphics::Model::CreateIndexBuffer", "Failed To Create Index Buffer");
}

void Model::DestroyBuffers()
{
    if (m_Device)
    {
        if (VertexBuffer)
            m_Device->DestroyBuffer(VertexBuffer);
        if (IndexBuffer)
            m_Device->DestroyBuffer(IndexBuffer);
    }
    VertexBuffer = {};
    IndexBuffer = {};
}

void Model::Bind(GraphicsDevice& device) const
{
    device.BindVertexBuffer(0, VertexBuffer, kVertexStride, 0);
    if (!Indices.empty())
        device.BindIndexBuffer(IndexBuffer, true);
}

bool Model::Intersect(const Math::Point3D& origin, const Math::Vector3D& direction, float& distance) const
{
    distance = std::numeric_limits<float>::max();
    if (Indices.empty())
        return false;
    const float from[3] = {origin.x, origin.y, origin.z};
    const float along[3] = {direction.x, direction.y, direction.z};
    bool hit = false;
    for (std::size_t i = 0; i + 2 < Indices.size(); i += 3)
    {
        // A triangle naming a vertex that does not exist (a generated model's mistake) is skipped.
        if (Indices[i] >= Vertices.size() || Indices[i + 1] >= Vertices.size() || Indices[i + 2] >= Vertices.size())
            continue;
        const float* v0 = Vertices[Indices[i]].position;
        const float* v1 = Vertices[Indices[i + 1]].position;
        const float* v2 = Vertices[Indices[i + 2]].position;
        float e1[3], e2[3], p[3], t[3], q[3];
        Subtract(v1, v0, e1);
        Subtract(v2, v0, e2);
        Cross(along, e2, p);
        // No test for a zero determinant: a ray in the triangle's plane gives infinities or NaNs,
        // which fail the comparisons below.
        const float inverse = 1.0f / Dot(e1, p);
        Subtract(from, v0, t);
        const float u = Dot(t, p) * inverse;
        Cross(t, e1, q);
        const float v = Dot(along, q) * inverse;
        const float at = Dot(e2, q) * inverse;
        // Either side counts, and so does a triangle behind the origin (negative distance).
        if (u >= 0.0f && v >= 0.0f && u + v <= 1.0f && at <= distance)
        {
            distance = at;
            hit = true;
        }
    }
    return hit;
}
}

META_REGISTER_NS(Graphics, Model)
{
    DESCRIPTION("The geometry behind meshes: vertices, indices and, for skinned models, bones.");
    MEMBER_FLAGS(Id, false, true, "The model's number, the batching key of its meshes.");
    METHOD(GetVertices);
    METHOD(GetIndices);
}
