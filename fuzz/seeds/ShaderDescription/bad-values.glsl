__ShaderDesc { Type Nothing EntryPoint
}
__SamplerDesc s { Filter ANISOTROPIC AddressU Sideways ComparisonFunc Often MaxLOD }
__SamplerDesc s { Filter COMPARISON_ANISOTROPIC MaxAnisotropy 99999999999 }
Filter MINIMUM_ANISOTROPIC __SamplerDesc
