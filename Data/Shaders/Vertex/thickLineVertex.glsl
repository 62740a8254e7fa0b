__ShaderDesc
{
    Type Vertex
    EntryPoint main
}

// A thick debug line's vertex (32 bytes: position, colour, width); the geometry stage "lineGeo"
// widens the line. The debug stage does not draw yet.

out gl_PerVertex { vec4 gl_Position; };

layout(location = 0) in vec3 Position;
layout(location = 1) in vec4 Colour;
layout(location = 2) in float Width;

layout(location = 0) out vec4 v_Colour;
layout(location = 1) out float v_Width;

layout(std140, binding = 0) uniform Frame
{
    mat4 m_ViewPerspective;
};

void main()
{
    v_Colour = Colour;
    v_Width = Width;
    gl_Position = vec4(Position, 1.0) * m_ViewPerspective;
}
