// Instancing.glsl: the instance stream, for vertex stages that draw meshes
// (`#include "Instancing.glsl"`, and `Flag Instanced` in the description).
//
// Every instance is i_InstanceSize rows of four floats in the storage buffer
// b_Instanced, the first instance of a draw starting at row i_InstanceStart;
// the engine sets all three before each draw. Every draw starts at instance 0
// (no base instance), so gl_InstanceID alone counts the instances of a draw.
//
// The rows of a mesh: 0-3 its world matrix, 4-7 the transposed inverse of it
// (for normals), 8 the diffuse colour, 9 the specular colour with the
// specular power in w, 10 ambient, emissive, glow (an unsigned 0 or 1 in the
// float's bits) and the texture slot. A billboard has its world matrix in
// rows 0-3 and the three material rows in 4-6 (InstanceRow(4) and so on).
//
// Matrices come back as the engine holds them, for row vectors:
// `vec4 world = vec4(position, 1.0) * InstanceWorld();`.

// The instance rows of the frame.
layout(std430, binding = 0) readonly buffer b_Instanced
{
    vec4 InstanceRows[];
};

// Where this draw's instances start and how many rows each takes.
layout(std140, binding = 12) uniform InstanceLayout
{
    int i_InstanceStart;
    int i_InstanceSize;
};

// Row `row` of this vertex's instance.
vec4 InstanceRow(int row)
{
    return InstanceRows[i_InstanceStart + gl_InstanceID * i_InstanceSize + row];
}

// The four rows from `first` as a matrix for row vectors (p * M).
mat4 InstanceMatrix(int first)
{
    return transpose(mat4(InstanceRow(first), InstanceRow(first + 1), InstanceRow(first + 2), InstanceRow(first + 3)));
}

// The instance's world matrix.
mat4 InstanceWorld()
{
    return InstanceMatrix(0);
}

// The transposed inverse of the world matrix, which carries normals: `n * mat3(InstanceInverseTranspose())`.
mat4 InstanceInverseTranspose()
{
    return InstanceMatrix(4);
}

// The diffuse colour of a mesh.
vec4 InstanceDiffuse()
{
    return InstanceRow(8);
}

// The specular colour of a mesh in rgb, its specular power in a.
vec4 InstanceSpecular()
{
    return InstanceRow(9);
}

// Ambient, emissive, glow bits and texture slot of a mesh, as written.
vec4 InstanceMaterial()
{
    return InstanceRow(10);
}

// True when the mesh glows.
bool InstanceGlow()
{
    return floatBitsToUint(InstanceRow(10).z) != 0u;
}

// The texture slot of a mesh.
uint InstanceTextureSlot()
{
    return uint(InstanceRow(10).w);
}
