#include "Graphics_Engine/Components/Mesh.h"

#include "Graphics_Engine/Components/CloneGraphicsComponent.h"
#include "Graphics_Engine/WorldMatrix.h"
#include "Graphics_Engine/Components/MeshResources.h"
#include "Graphics_Engine/Model/ModelManager.h"
#include "Graphics_Engine/PipeLines/InstanceBuffer/InstanceBuffer.h"
#include "utilities/Meta/Registration.h"

#include <bit>
#include <cmath>

META_REGISTER_NS(Graphics, Mesh)
{
    DERIVE(Graphics::BaseGraphicsComponent);
    DESCRIPTION("A model drawn with a material; needs the object's Transform.");
    DEPENDENCY(Transform);
    MEMBER(Material, "How the surface looks.");
    MEMBER(Rotation, "The model's own rotation inside the object.");
    PROPERTY(Model, GetModelName, SetModel, "The model's name; an unknown name draws the cube.");
    METHOD(GetModelName);
    METHOD(SetModel);
    METHOD(GetVertices);
    METHOD(GetIndices);
}

namespace Graphics
{
namespace
{
const std::vector<Vertex> kNoVertices;
const std::vector<std::uint32_t> kNoIndices;
}

Component* Mesh::Clone() const
{
    return CloneGraphicsComponent(*this);
}

Meta::Data* Mesh::GetMeta() const
{
    return Meta::Get<Mesh>();
}

void Mesh::Initialize()
{
    BaseGraphicsComponent::Initialize();
    SetModel(m_ModelName);
}

void Mesh::SetModel(const std::string& name)
{
    m_ModelName = name;
    ModelManager* models = GetMeshModels();
    m_Model = models ? models->GetModel(name) : nullptr;
    m_ElementCount = m_Model ? static_cast<unsigned>(m_Model->Indices.size()) : 0;
}

unsigned Mesh::GetModelId() const
{
    return m_Model ? m_Model->Id : 0;
}

void Mesh::Bind(GraphicsDevice& device)
{
    BaseGraphicsComponent::Bind(device);
    if (m_Model)
        m_Model->Bind(device);
}

Math::Matrix4 Mesh::MeshWorld(const Math::Matrix4& world) const
{
    return RotationMatrix(Rotation) * world;
}

bool Mesh::Pick(float& distance, bool, const Math::Point3D& origin, const Math::Vector3D& direction)
{
    if (!m_Transform || !m_Model)
        return false;
    const Math::Matrix4 inverse = MeshWorld(MakeWorldMatrix(*m_Transform)).Inverse();
    const float from[4] = {origin.x, origin.y, origin.z, 1.0f};
    const float along[4] = {direction.x, direction.y, direction.z, 0.0f};
    float localFrom[4];
    float localAlong[4];
    inverse.TransformRow(from, localFrom);
    inverse.TransformRow(along, localAlong);
    Math::Vector3D localDirection(localAlong[0], localAlong[1], localAlong[2]);
    const float length = localDirection.Length();
    if (!(length > 0.0f) || !std::isfinite(length))
        return false;
    localDirection = localDirection / length;
    float localDistance = 0.0f;
    if (!m_Model->Intersect(Math::Point3D(localFrom[0], localFrom[1], localFrom[2]), localDirection, localDistance))
        return false;
    distance = localDistance / length;
    return true;
}

void WriteMaterialRows(const GraphicsMaterial& material, InstanceBuffer& buffer)
{
    const Math::Color& diffuse = material.Diffuse;
    const Math::Color& specular = material.Specular;
    buffer.WriteRow({diffuse.r, diffuse.g, diffuse.b, diffuse.a});
    buffer.WriteRow({specular.r, specular.g, specular.b, material.SpecularPower});
    const float glow = std::bit_cast<float>(material.Glow ? 1u : 0u);
    buffer.WriteRow({material.Ambient, material.Emissive, glow, static_cast<float>(material.MaterialID)});
}

void Mesh::WriteMaterialRows(InstanceBuffer& buffer) const
{
    Graphics::WriteMaterialRows(Material, buffer);
}

void Mesh::WriteInstance(const Math::Matrix4& world, ShaderProgram*, InstanceBuffer& buffer)
{
    const Math::Matrix4 meshWorld = MeshWorld(world);
    buffer.WriteMatrix(meshWorld);
    buffer.WriteMatrix(meshWorld.Inverse().Transposed());
    WriteMaterialRows(buffer);
    buffer.CloseInstance();
}

const std::vector<Vertex>& Mesh::GetVertices() const
{
    return m_Model ? m_Model->GetVertices() : kNoVertices;
}

const std::vector<std::uint32_t>& Mesh::GetIndices() const
{
    return m_Model ? m_Model->GetIndices() : kNoIndices;
}
}
