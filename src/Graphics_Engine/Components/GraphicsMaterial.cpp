#include "Graphics_Engine/Components/GraphicsMaterial.h"

#include "utilities/Meta/Registration.h"

META_REGISTER_NS(Graphics, GraphicsMaterial)
{
    CONSTRUCTOR();
    DESCRIPTION("How a mesh's surface looks: texture, colours, lighting terms and glow.");
    MEMBER(DiffuseTexture, "The name of the texture a textured mesh draws with.");
    MEMBER(Ambient, "How much of the ambient light the surface takes.");
    MEMBER(Emissive, "Light the surface gives off by itself.");
    MEMBER(SpecularPower, "The sharpness of the specular highlight.");
    MEMBER(MaterialID, "The texture slot (material number) the lighting reads for the surface.");
    MEMBER(Diffuse, "The surface's colour.");
    MEMBER(Specular, "The highlight's colour.");
    MEMBER(Glow, "True when the surface takes part in the glow effect.");
}

namespace Graphics
{
bool GraphicsMaterial::operator==(const GraphicsMaterial& other) const
{
    return DiffuseTexture == other.DiffuseTexture && Ambient == other.Ambient && Emissive == other.Emissive &&
           SpecularPower == other.SpecularPower && MaterialID == other.MaterialID && Diffuse == other.Diffuse &&
           Specular == other.Specular && Glow == other.Glow;
}
}
