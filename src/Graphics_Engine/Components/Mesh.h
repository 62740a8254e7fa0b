// Mesh: a model drawn with a material, the component most objects are seen
// through. It names its model (resolved through the model manager the engine
// hands over, see MeshResources.h; an unknown name draws the built-in cube),
// carries a GraphicsMaterial and a local Rotation that turns the model inside
// the object. It needs the owner's Transform: without one it is not picked.
//
// In data, under the names scripts use too:
//
//   Mesh
//   {
//     Model "crate"
//     Rotation { 0 0.7071 0 0.7071 }
//     Material { Diffuse { 255 0 0 255 } }
//   }
//
// Meshes of one model and one program are drawn as instances of one call; each
// writes eleven rows of the instance stream (WriteInstance): rows 0-3 the
// world matrix with Rotation folded in (applied before the object's own
// scale, rotation and position), rows 4-7 the transposed inverse of that
// matrix (for normals), row 8 the diffuse colour, row 9 the specular colour
// with the specular power in w, row 10 ambient, emissive, glow (the unsigned
// integer 0 or 1 stored in the float's bits) and the texture slot (as a
// float value). Meshes of the built-in cube (model 0) are drawn one by one.
#pragma once

#include "Graphics_Engine/Components/BaseGraphicsComponent.h"
#include "Graphics_Engine/Components/GraphicsMaterial.h"
#include "Graphics_Engine/Model/Vertex.h"
#include "engine/Math/Quaternion.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Graphics
{
class Model;

class Mesh : public BaseGraphicsComponent
{
public:
    // Rows one mesh instance takes in the instance stream.
    static constexpr unsigned kInstanceRows = 11;

    Mesh() = default;
    // Finds the Transform and resolves the model name again (the manager may have come since).
    void Initialize() override;
    Component* Clone() const override;
    Meta::Data* GetMeta() const override;

    // The model's Id, the batching key; 0 without a model.
    unsigned GetModelId() const override;
    // Sets the topology and binds the model's buffers.
    void Bind(GraphicsDevice& device) override;
    // Casts the ray against the model's triangles in model space; the distance is the world's.
    bool Pick(float& distance, bool dummy, const Math::Point3D& origin, const Math::Vector3D& direction) override;
    // Writes the eleven rows of the instance and closes it.
    void WriteInstance(const Math::Matrix4& world, ShaderProgram* shader, InstanceBuffer& buffer) override;

    // The model's name as set.
    const std::string& GetModelName() const { return m_ModelName; }
    // Names the model and resolves it; an unknown name draws the cube. The element count becomes
    // the model's index count.
    virtual void SetModel(const std::string& name);
    // The resolved model, or null (no manager, or not resolved yet).
    Model* GetModel() const { return m_Model; }

    // The model's vertices, for scripts; empty without a model.
    const std::vector<Vertex>& GetVertices() const;
    // The model's indices, for scripts; empty without a model.
    const std::vector<std::uint32_t>& GetIndices() const;

    // The world matrix the mesh is drawn and picked with: Rotation, then the Transform's own.
    Math::Matrix4 MeshWorld(const Math::Matrix4& world) const;

    // How the surface looks.
    GraphicsMaterial Material;
    // The model's own rotation inside the object.
    Math::Quaternion Rotation;

protected:
    // Writes the three material rows of the instance.
    void WriteMaterialRows(InstanceBuffer& buffer) const;

    // The model's name as set.
    std::string m_ModelName;
    // The resolved model, or null.
    Model* m_Model = nullptr;
};

// The three material rows of an instance: diffuse; specular with the power; ambient, emissive,
// glow in bits and texture slot.
void WriteMaterialRows(const GraphicsMaterial& material, InstanceBuffer& buffer);
}
