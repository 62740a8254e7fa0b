// ProgramReflection: what a compiled stage program declares, as plain data.
// Uniform blocks are the constant buffers (each member by name with its byte
// offset and size, as the driver lays them out), sampler uniforms and storage
// blocks are texture slots, images are unordered slots, and program inputs
// give the vertex input format. The device fills this from the program's
// interface; the renderer's reflection turns it into its name tables.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Graphics
{
// The scalar kind of a declared value.
enum class ScalarKind
{
    Float,
    Int,
    UInt,
    Bool,
    Double,
    // Samplers, images and anything else that is no plain number.
    Opaque,
};

// The type of a declared value: scalar kind with rows and columns (a vec3 is 3 x 1,
// a mat4 is 4 x 4), and the name GLSL gives it ("vec3", "mat4", "sampler2D").
struct ReflectedType
{
    ScalarKind scalar = ScalarKind::Opaque;
    std::uint32_t rows = 0;
    std::uint32_t columns = 0;
    std::string name;
};

// One member of a uniform block or a storage block.
struct ReflectedBlockMember
{
    // As GLSL spells it: "m_View", "Light.Color", "Weights[0]".
    std::string name;
    // Byte offset from the start of the block.
    std::uint32_t offset = 0;
    // Bytes it covers, from its offset to the end of its last element.
    std::uint32_t size = 0;
    // Elements; 1 for a plain value.
    std::uint32_t arraySize = 1;
    // Bytes between array elements; 0 for a plain value.
    std::uint32_t arrayStride = 0;
    // Bytes between matrix columns (rows when row-major); 0 for no matrix.
    std::uint32_t matrixStride = 0;
    // Stored row by row.
    bool rowMajor = false;
    ReflectedType type;
    // Bytes between elements of the storage block's outermost array ("Lights[0].Range" in an array of
    // records); 0 in uniform blocks and outside such an array.
    std::uint32_t topLevelArrayStride = 0;
};

// A uniform block or a shader-storage block.
struct ReflectedBlock
{
    // The block's name (not its instance name).
    std::string name;
    // The binding point it reads from.
    std::uint32_t binding = 0;
    // The block's byte size as the driver lays it out.
    std::uint32_t size = 0;
    // Members in the driver's order (a storage block's array of records as its first element's fields).
    std::vector<ReflectedBlockMember> members;
};

// A sampler or image uniform outside any block.
struct ReflectedResource
{
    std::string name;
    // The texture unit (samplers) or image unit (images) it reads from.
    std::uint32_t binding = 0;
    // Elements of an array of them; 1 for one.
    std::uint32_t arraySize = 1;
    ReflectedType type;
};

// One input of the program's first stage.
struct ReflectedInput
{
    std::string name;
    // Its location; -1 for a built-in input.
    std::int32_t location = -1;
    ReflectedType type;
};

// Everything a stage program declares.
struct ProgramReflection
{
    std::vector<ReflectedBlock> uniformBlocks;
    std::vector<ReflectedResource> samplers;
    std::vector<ReflectedBlock> storageBlocks;
    std::vector<ReflectedResource> images;
    std::vector<ReflectedInput> inputs;
};
}
