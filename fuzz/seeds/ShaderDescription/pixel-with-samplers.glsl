__ShaderDesc { Type Pixel EntryPoint main Flag Forward }
__SamplerDesc sLinear
{
  Filter MIN_MAG_MIP_LINEAR AddressU Wrap AddressV Mirror AddressW Border
  MipLODBias 0.5 MaxAnisotropy 8 ComparisonFunc Less_Equal
  BorderColor[0] 0 BorderColor[1] 0.25 BorderColor[2] 0.5 BorderColor[3] 1
  MinLOD 0 MaxLOD 12
}
layout(binding = 0) uniform sampler2D sLinear;
layout(location = 0) out vec4 color;
void main() { color = texture(sLinear, vec2(0.5)); }
