__ShaderDesc
{
    Type Pixel
    EntryPoint main
}

// The deferred pass's pixel stage: fills the four G-buffer targets with the instance's diffuse
// colour and material (see GBuffer.glsl).

#include "GBuffer.glsl"

void main()
{
    WriteGBuffer(v_Diffuse);
}
