#include "Graphics_Engine/Components/TexturedMesh.h"

#include "Graphics_Engine/Components/CloneGraphicsComponent.h"
#include "Graphics_Engine/Components/MeshResources.h"
#include "Graphics_Engine/Material/Texture/TextureManager.h"
#include "Graphics_Engine/ShaderProgram.h"
#include "utilities/Meta/Registration.h"

META_REGISTER_NS(Graphics, TexturedMesh)
{
    DERIVE(Graphics::Mesh);
    DESCRIPTION("A mesh drawn with its material's diffuse texture.");
}

namespace Graphics
{
Component* TexturedMesh::Clone() const
{
    return CloneGraphicsComponent(*this);
}

Meta::Data* TexturedMesh::GetMeta() const
{
    return Meta::Get<TexturedMesh>();
}

void BindDiffuseTexture(ShaderProgram* shader, const std::string& textureName)
{
    TextureManager* textures = GetMeshTextures();
    if (!shader || !textures)
        return;
    shader->SetTexture("t_DiffuseTexture", textures->GetView(textures->GetTexture(textureName)).id);
}

void TexturedMesh::WriteInstance(const Math::Matrix4& world, ShaderProgram* shader, InstanceBuffer& buffer)
{
    BindDiffuseTexture(shader, Material.DiffuseTexture);
    Mesh::WriteInstance(world, shader, buffer);
}
}
