__ShaderDesc
{
    Type Pixel
    EntryPoint main
}

// The deferred pass's pixel stage for textured meshes: as BasePixel, with the diffuse colour
// multiplied by the mesh's diffuse texture (t_DiffuseTexture, bound by TexturedMesh), which
// repeats across the model's texture coordinates.

__SamplerDesc t_DiffuseTexture
{
    Filter MIN_MAG_MIP_LINEAR
    AddressU Wrap
    AddressV Wrap
}

#include "GBuffer.glsl"

layout(binding = 0) uniform sampler2D t_DiffuseTexture;

void main()
{
    WriteGBuffer(texture(t_DiffuseTexture, v_TexCoord) * v_Diffuse);
}
