// Graphics::Model: the geometry behind every mesh. It holds the vertices and
// 32-bit indices, for skinned models the skeleton and its animations, and the
// two immutable device buffers the geometry is drawn from. The model manager
// makes models from kbm files, from the built-in shapes and for generated
// meshes; meshes point at them and bind them before drawing. A model with no
// geometry (a file that failed to read) has no buffers and draws nothing.
//
//   Graphics::Model model;
//   model.SetGeometry(vertices, indices);
//   model.CreateBuffers(device);   // "Failed To Create Vertex Buffer" on failure
//   model.Bind(device);            // before DrawIndexed(model.Indices.size(), 0, 0)
//
// Intersect is the picking test against the model's own triangles, in model
// space.
#pragma once

#include "Graphics_Engine/DeviceTypes.h"
#include "Graphics_Engine/Model/Animation.h"
#include "Graphics_Engine/Model/Bone.h"
#include "Graphics_Engine/Model/Vertex.h"
#include "engine/Math/Matrix4.h"
#include "engine/Math/Point3D.h"
#include "engine/Math/Vector3D.h"

#include <cstdint>
#include <vector>

namespace Graphics
{
class GraphicsDevice;
struct ModelFile;

class Model
{
public:
    Model() = default;
    // Destroys the buffers on the device that made them.
    ~Model();
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;

    // Replaces the geometry, skeleton and animations with a file's (buffers are left alone).
    void SetFromFile(ModelFile&& file);
    // Replaces the vertices and indices with copies, dropping any skeleton and animations.
    void SetGeometry(const std::vector<Vertex>& vertices, const std::vector<std::uint32_t>& indices);
    // Makes the vertex and index buffers on `device` (destroying earlier ones); no geometry, no buffers.
    void CreateBuffers(GraphicsDevice& device);
    // Destroys the buffers, if any.
    void DestroyBuffers();
    // Binds the vertex buffer to slot 0 (72-byte stride) and, when there are indices, the index buffer.
    void Bind(GraphicsDevice& device) const;
    // Picking: the nearest distance along `direction` at which the ray meets a triangle, either
    // side; false (and the largest finite float) when it meets none.
    bool Intersect(const Math::Point3D& origin, const Math::Vector3D& direction, float& distance) const;

    // The vertices, for scripts and tools.
    const std::vector<Vertex>& GetVertices() const { return Vertices; }
    // The indices, for scripts and tools.
    const std::vector<std::uint32_t>& GetIndices() const { return Indices; }

    // The immutable vertex buffer; empty without vertices.
    BufferHandle VertexBuffer;
    // The immutable index buffer; empty without indices.
    BufferHandle IndexBuffer;
    // The manager's number for the model, from 0 in creation order; the batching key of meshes.
    unsigned Id = 0;
    std::vector<Vertex> Vertices;
    // The skeleton of a skinned model, parents before children.
    std::vector<Bone> Bones;
    // The clips a skinned model carries; their tracks name bones by index.
    std::vector<Animation> Animations;
    // Applied to the whole model before its bones (skinned models), identity otherwise.
    Math::Matrix4 GlobalTransform;
    // Three per triangle.
    std::vector<std::uint32_t> Indices;

private:
    // Makes the vertex buffer; reports "Failed To Create Vertex Buffer" when the device refuses.
    void CreateVertexBuffer();
    // Makes the index buffer; reports "Failed To Create Index Buffer" when the device refuses.
    void CreateIndexBuffer();

    // The device that made the buffers, to destroy them on.
    GraphicsDevice* m_Device = nullptr;
};
}
