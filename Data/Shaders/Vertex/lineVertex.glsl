__ShaderDesc
{
    Type Vertex
    EntryPoint main
}

// A debug line's vertex (28 bytes: position, colour) in the world. The debug stage does not draw yet.

out gl_PerVertex { vec4 gl_Position; };

layout(location = 0) in vec3 Position;
layout(location = 1) in vec4 Colour;

layout(location = 0) out vec4 v_Colour;

layout(std140, binding = 0) uniform Frame
{
    mat4 m_ViewPerspective;
};

void main()
{
    v_Colour = Colour;
    gl_Position = vec4(Position, 1.0) * m_ViewPerspective;
}
