#include "Graphics_Engine/Components/Billboard.h"

#include "Graphics_Engine/Components/CloneGraphicsComponent.h"
#include "Graphics_Engine/Components/Mesh.h"
#include "Graphics_Engine/Components/TexturedMesh.h"
#include "Graphics_Engine/GraphicsDevice.h"
#include "Graphics_Engine/PipeLines/InstanceBuffer/InstanceBuffer.h"
#include "Graphics_Engine/ShaderProgram.h"
#include "utilities/Meta/Registration.h"

META_REGISTER_NS(Graphics, Billboard)
{
    DERIVE(Graphics::BaseGraphicsComponent);
    DESCRIPTION("A textured rectangle facing the camera; needs the object's Transform.");
    MEMBER(Material, "How the surface looks; DiffuseTexture is what it shows.");
    MEMBER(UVStart, "The top-left corner of the part of the texture shown.");
    MEMBER(UVEnd, "The bottom-right corner of the part of the texture shown.");
}

namespace Graphics
{
Billboard::Billboard()
{
    m_Topology = static_cast<unsigned>(PrimitiveTopology::PointList);
    m_DrawMode = 1;
    m_ElementCount = 1;
}

Component* Billboard::Clone() const
{
    return CloneGraphicsComponent(*this);
}

Meta::Data* Billboard::GetMeta() const
{
    return Meta::Get<Billboard>();
}

void Billboard::Bind(GraphicsDevice& device)
{
    BaseGraphicsComponent::Bind(device);
}

void Billboard::WriteInstance(const Math::Matrix4& world, ShaderProgram* shader, InstanceBuffer& buffer)
{
    BindDiffuseTexture(shader, Material.DiffuseTexture);
    if (shader)
    {
        const float start[2] = {UVStart.x, UVStart.y};
        const float end[2] = {UVEnd.x, UVEnd.y};
        shader->SetVariable("f2_UVStart", start);
        shader->SetVariable("f2_UVEnd", end);
    }
    buffer.WriteMatrix(world);
    WriteMaterialRows(Material, buffer);
    buffer.CloseInstance();
}
}
