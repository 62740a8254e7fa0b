__ShaderDesc
{
    Type Vertex
    EntryPoint main
}

// The GUI's vertices (Dear ImGui's layout: position, texture coordinate, packed RGBA colour),
// placed by the orthographic matrix of the window's client size. The GUI stage does not draw yet.

out gl_PerVertex { vec4 gl_Position; };

layout(location = 0) in vec2 Position;
layout(location = 1) in vec2 TexCoord;
layout(location = 2) in uint Colour;

layout(location = 0) out vec2 v_TexCoord;
layout(location = 1) out vec4 v_Colour;

layout(std140, binding = 0) uniform Gui
{
    mat4 m_OView;
};

void main()
{
    v_TexCoord = TexCoord;
    v_Colour = unpackUnorm4x8(Colour);
    gl_Position = vec4(Position, 0.0, 1.0) * m_OView;
}
