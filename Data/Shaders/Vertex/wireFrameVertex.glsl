__ShaderDesc
{
    Type Vertex
    EntryPoint main
}

// A model drawn as a debug wireframe, placed by m_WorldViewPerspective in the colour f4_Color.
// The debug stage does not draw yet.

out gl_PerVertex { vec4 gl_Position; };

layout(location = 0) in vec3 Position;
layout(location = 1) in vec3 Normal;
layout(location = 2) in vec3 Tangent;
layout(location = 3) in vec2 TexCoord;

layout(location = 0) out vec4 v_Colour;
layout(location = 1) out vec3 v_Normal;
layout(location = 2) out vec3 v_Tangent;
layout(location = 3) out vec2 v_TexCoord;

layout(std140, binding = 0) uniform PerDraw
{
    mat4 m_WorldViewPerspective;
    vec4 f4_Color;
};

void main()
{
    v_Colour = f4_Color;
    v_Normal = Normal;
    v_Tangent = Tangent;
    v_TexCoord = TexCoord;
    gl_Position = vec4(Position, 1.0) * m_WorldViewPerspective;
}
