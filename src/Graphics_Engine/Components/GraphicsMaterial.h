// Graphics::GraphicsMaterial: how a mesh's surface looks, held by value in
// every mesh. Scripts make and read it as `GraphicsMaterial`; in data it is the
// `Material` block of a mesh, whose texture slot line is `MaterialID`:
//
//   Mesh
//   {
//     Material
//     {
//       DiffuseTexture "stone.png"
//       Diffuse { 255 128 0 255 }
//       MaterialID 1
//     }
//   }
//
// Its values reach the shaders through the last three rows of each instance
// (see Mesh::WriteInstance): diffuse colour; specular colour with the specular
// power; ambient, emissive, glow and the texture slot.
#pragma once

#include "engine/Math/Color.h"

#include <string>

namespace Graphics
{
class GraphicsMaterial
{
public:
    // The name of the texture a textured mesh draws with, as the texture manager knows it.
    std::string DiffuseTexture;
    // How much of the ambient light the surface takes.
    float Ambient = 0.2f;
    // Light the surface gives off by itself.
    float Emissive = 0.0f;
    // The sharpness of the specular highlight.
    float SpecularPower = 10.0f;
    // The texture slot (material number) the lighting reads for the surface.
    unsigned MaterialID = 0;
    // The surface's colour.
    Math::Color Diffuse{0.5f, 0.5f, 0.5f, 1.0f};
    // The highlight's colour; its alpha is not used.
    Math::Color Specular{1.0f, 1.0f, 1.0f, 0.0f};
    // True when the surface takes part in the glow effect.
    bool Glow = false;

    // True when every value equals the other's (colours within their tolerance).
    bool operator==(const GraphicsMaterial& other) const;
};
}
