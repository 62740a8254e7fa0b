__ShaderDesc
{
    Type Vertex
    EntryPoint main
    Flag Instanced
}

// The deferred pass's vertex stage: a model's vertices placed by the instance rows of the
// object drawn. Rows per instance: 0-3 the world matrix, 4-7 its transposed inverse, 8 the
// diffuse colour, 9 the specular colour with the specular power in w, 10 ambient, emissive,
// glow (0 or 1 as unsigned bits) and the texture slot.

out gl_PerVertex { vec4 gl_Position; };

layout(location = 0) in vec3 Position;
layout(location = 1) in vec3 Normal;
layout(location = 2) in vec3 Tangent;
layout(location = 3) in vec2 TexCoord;

layout(location = 0) out vec3 v_Normal;
layout(location = 1) out vec3 v_Tangent;
layout(location = 2) out vec2 v_TexCoord;
layout(location = 3) flat out vec4 v_Diffuse;
layout(location = 4) flat out vec4 v_Specular;
layout(location = 5) flat out vec4 v_Material;

#include "Instancing.glsl"

layout(std140, binding = 0) uniform Frame
{
    mat4 m_ViewPerspective;
    vec3 f3_CameraPos;
};

void main()
{
    // Row vectors: p * M is the sum of M's rows weighted by p.
    vec4 world = Position.x * InstanceRow(0) + Position.y * InstanceRow(1) + Position.z * InstanceRow(2) +
                 InstanceRow(3);
    v_Normal = (Normal.x * InstanceRow(4) + Normal.y * InstanceRow(5) + Normal.z * InstanceRow(6)).xyz;
    v_Tangent = (Tangent.x * InstanceRow(0) + Tangent.y * InstanceRow(1) + Tangent.z * InstanceRow(2)).xyz;
    v_TexCoord = TexCoord;
    v_Diffuse = InstanceDiffuse();
    v_Specular = InstanceSpecular();
    v_Material = InstanceMaterial();
    gl_Position = world * m_ViewPerspective;
}
