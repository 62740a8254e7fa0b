__ShaderDesc
{
    Type Compute
    EntryPoint main
}

layout(local_size_x = 1) in;

layout(std140, binding = 4) uniform Fill
{
    vec4 FillColour;
};

layout(binding = 2, rgba8) uniform writeonly image2D Output;

void main()
{
    imageStore(Output, ivec2(gl_GlobalInvocationID.xy), FillColour);
}
