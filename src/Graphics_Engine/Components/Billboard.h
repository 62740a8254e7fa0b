// Billboard: a textured rectangle that faces the camera, such as a sprite in
// the world. It has no model: it draws one point (vertices only, point list)
// that the program's geometry stage turns into the rectangle, and is drawn one
// by one (model key 0), since each billboard sets its own part of its texture.
// It writes seven instance rows: its world matrix, then the three material
// rows of a mesh (diffuse; specular with the power; ambient, emissive, glow
// bits, texture slot); and puts its material's DiffuseTexture into
// `t_DiffuseTexture` and the texture rectangle it shows into `f2_UVStart` and
// `f2_UVEnd` (texture coordinates, top-left origin).
#pragma once

#include "Graphics_Engine/Components/BaseGraphicsComponent.h"
#include "Graphics_Engine/Components/GraphicsMaterial.h"
#include "engine/Math/Vector2D.h"

namespace Graphics
{
class Billboard : public BaseGraphicsComponent
{
public:
    // Rows one billboard instance takes in the instance stream.
    static constexpr unsigned kInstanceRows = 7;

    Billboard();
    Component* Clone() const override;
    Meta::Data* GetMeta() const override;
    // Sets the point-list topology; there are no buffers to bind.
    void Bind(GraphicsDevice& device) override;
    // Writes the seven rows and binds the texture and its rectangle to the program.
    void WriteInstance(const Math::Matrix4& world, ShaderProgram* shader, InstanceBuffer& buffer) override;

    // How the surface looks; DiffuseTexture is what it shows.
    GraphicsMaterial Material;
    // The top-left corner of the part of the texture shown.
    Math::Vector2D UVStart{0.0f, 0.0f};
    // The bottom-right corner of the part of the texture shown.
    Math::Vector2D UVEnd{1.0f, 1.0f};
};
}
