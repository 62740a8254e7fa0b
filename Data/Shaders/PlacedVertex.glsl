// PlacedVertex.glsl: the body of the vertex stages that place a model by one matrix,
// m_WorldViewPerspective ("baseLightVertex" for the full-screen quad and light volumes,
// "PostProcessVertex" for the post-effects' passes), handing the texture coordinate, normal and
// tangent on unchanged.

out gl_PerVertex { vec4 gl_Position; };

layout(location = 0) in vec3 Position;
layout(location = 1) in vec3 Normal;
layout(location = 2) in vec3 Tangent;
layout(location = 3) in vec2 TexCoord;

layout(location = 0) out vec2 v_TexCoord;
layout(location = 1) out vec3 v_Normal;
layout(location = 2) out vec3 v_Tangent;

layout(std140, binding = 0) uniform PerDraw
{
    mat4 m_WorldViewPerspective;
};

void main()
{
    v_TexCoord = TexCoord;
    v_Normal = Normal;
    v_Tangent = Tangent;
    gl_Position = vec4(Position, 1.0) * m_WorldViewPerspective;
}
