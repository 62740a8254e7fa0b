__ShaderDesc
{
    Type Vertex
    EntryPoint main
    Flag Instanced
}

out gl_PerVertex { vec4 gl_Position; };

layout(location = 0) in vec2 Position;
layout(location = 1) in float Lift;
layout(location = 0) out vec4 v_Ambient;

// Shared with the pixel stage.
layout(std140, binding = 0) uniform Shared
{
    vec4 f4_GlobaAmbient;
    float f_Time;
};

layout(std140, binding = 1) uniform PerObject
{
    mat4 m_World;
    vec2 Offset;
    float Scale;
};

void main()
{
    v_Ambient = f4_GlobaAmbient + vec4(f_Time) * 0.0001;
    vec4 world = vec4(Position * Scale + Offset, Lift * Scale, 1.0) * m_World;
    gl_Position = world;
}
