// TexturedMesh: a Mesh drawn with its material's DiffuseTexture. It writes the
// same eleven instance rows as Mesh and, as it writes them, puts the texture
// (looked up by name in the texture manager the engine hands over; an unknown
// name shows the missing texture) into the program's `t_DiffuseTexture`. The
// texture is applied at the next draw, so meshes drawn as instances of one
// call share the texture of the last of them: give meshes of different
// textures different models, or the cube (drawn one by one). Its pixel stage
// is "TexturedPixel", which multiplies the texture by the diffuse colour.
#pragma once

#include "Graphics_Engine/Components/Mesh.h"

namespace Graphics
{
class TexturedMesh : public Mesh
{
public:
    // A mesh whose pixel stage samples the diffuse texture.
    TexturedMesh() { m_ShaderComponent.Pixel = "TexturedPixel"; }
    Component* Clone() const override;
    Meta::Data* GetMeta() const override;
    // Writes the rows of Mesh and binds the diffuse texture to the program.
    void WriteInstance(const Math::Matrix4& world, ShaderProgram* shader, InstanceBuffer& buffer) override;
};

// Puts the texture of that name (from the texture manager, when there is one) into the program's
// `t_DiffuseTexture`; nothing without a program or a manager.
void BindDiffuseTexture(ShaderProgram* shader, const std::string& textureName);
}
