#include "platform/gl/GlReflection.h"

#include <epoxy/gl.h>

#include <array>
#include <string>

namespace Platform::Gl
{
namespace
{
using Graphics::ReflectedType;
using Graphics::ScalarKind;

struct TypeRow
{
    GLenum glType;
    ScalarKind scalar;
    std::uint32_t rows;
    std::uint32_t columns;
    const char* name;
};

constexpr TypeRow kTypes[] = {
    {GL_FLOAT, ScalarKind::Float, 1, 1, "float"},
    {GL_FLOAT_VEC2, ScalarKind::Float, 2, 1, "vec2"},
    {GL_FLOAT_VEC3, ScalarKind::Float, 3, 1, "vec3"},
    {GL_FLOAT_VEC4, ScalarKind::Float, 4, 1, "vec4"},
    {GL_INT, ScalarKind::Int, 1, 1, "int"},
    {GL_INT_VEC2, ScalarKind::Int, 2, 1, "ivec2"},
    {GL_INT_VEC3, ScalarKind::Int, 3, 1, "ivec3"},
    {GL_INT_VEC4, ScalarKind::Int, 4, 1, "ivec4"},
    {GL_UNSIGNED_INT, ScalarKind::UInt, 1, 1, "uint"},
    {GL_UNSIGNED_INT_VEC2, ScalarKind::UInt, 2, 1, "uvec2"},
    {GL_UNSIGNED_INT_VEC3, ScalarKind::UInt, 3, 1, "uvec3"},
    {GL_UNSIGNED_INT_VEC4, ScalarKind::UInt, 4, 1, "uvec4"},
    {GL_BOOL, ScalarKind::Bool, 1, 1, "bool"},
    {GL_BOOL_VEC2, ScalarKind::Bool, 2, 1, "bvec2"},
    {GL_BOOL_VEC3, ScalarKind::Bool, 3, 1, "bvec3"},
    {GL_BOOL_VEC4, ScalarKind::Bool, 4, 1, "bvec4"},
    {GL_DOUBLE, ScalarKind::Double, 1, 1, "double"},
    {GL_DOUBLE_VEC2, ScalarKind::Double, 2, 1, "dvec2"},
    {GL_DOUBLE_VEC3, ScalarKind::Double, 3, 1, "dvec3"},
    {GL_DOUBLE_VEC4, ScalarKind::Double, 4, 1, "dvec4"},
    {GL_FLOAT_MAT2, ScalarKind::Float, 2, 2, "mat2"},
    {GL_FLOAT_MAT3, ScalarKind::Float, 3, 3, "mat3"},
    {GL_FLOAT_MAT4, ScalarKind::Float, 4, 4, "mat4"},
    {GL_FLOAT_MAT2x3, ScalarKind::Float, 3, 2, "mat2x3"},
    {GL_FLOAT_MAT2x4, ScalarKind::Float, 4, 2, "mat2x4"},
    {GL_FLOAT_MAT3x2, ScalarKind::Float, 2, 3, "mat3x2"},
    {GL_FLOAT_MAT3x4, ScalarKind::Float, 4, 3, "mat3x4"},
    {GL_FLOAT_MAT4x2, ScalarKind::Float, 2, 4, "mat4x2"},
    {GL_FLOAT_MAT4x3, ScalarKind::Float, 3, 4, "mat4x3"},
    {GL_SAMPLER_2D, ScalarKind::Opaque, 0, 0, "sampler2D"},
    {GL_SAMPLER_3D, ScalarKind::Opaque, 0, 0, "sampler3D"},
    {GL_SAMPLER_CUBE, ScalarKind::Opaque, 0, 0, "samplerCube"},
    {GL_SAMPLER_2D_SHADOW, ScalarKind::Opaque, 0, 0, "sampler2DShadow"},
    {GL_SAMPLER_2D_ARRAY, ScalarKind::Opaque, 0, 0, "sampler2DArray"},
    {GL_SAMPLER_2D_ARRAY_SHADOW, ScalarKind::Opaque, 0, 0, "sampler2DArrayShadow"},
    {GL_SAMPLER_CUBE_SHADOW, ScalarKind::Opaque, 0, 0, "samplerCubeShadow"},
    {GL_SAMPLER_BUFFER, ScalarKind::Opaque, 0, 0, "samplerBuffer"},
    {GL_INT_SAMPLER_2D, ScalarKind::Opaque, 0, 0, "isampler2D"},
    {GL_UNSIGNED_INT_SAMPLER_2D, ScalarKind::Opaque, 0, 0, "usampler2D"},
    {GL_UNSIGNED_INT_SAMPLER_3D, ScalarKind::Opaque, 0, 0, "usampler3D"},
    {GL_IMAGE_2D, ScalarKind::Opaque, 0, 0, "image2D"},
    {GL_IMAGE_3D, ScalarKind::Opaque, 0, 0, "image3D"},
    {GL_IMAGE_2D_ARRAY, ScalarKind::Opaque, 0, 0, "image2DArray"},
    {GL_IMAGE_BUFFER, ScalarKind::Opaque, 0, 0, "imageBuffer"},
    {GL_INT_IMAGE_2D, ScalarKind::Opaque, 0, 0, "iimage2D"},
    {GL_UNSIGNED_INT_IMAGE_2D, ScalarKind::Opaque, 0, 0, "uimage2D"},
    {GL_UNSIGNED_INT_IMAGE_3D, ScalarKind::Opaque, 0, 0, "uimage3D"},
};

bool IsImageType(GLenum type)
{
    switch (type)
    {
    case GL_IMAGE_1D:
    case GL_IMAGE_2D:
    case GL_IMAGE_3D:
    case GL_IMAGE_2D_RECT:
    case GL_IMAGE_CUBE:
    case GL_IMAGE_BUFFER:
    case GL_IMAGE_1D_ARRAY:
    case GL_IMAGE_2D_ARRAY:
    case GL_IMAGE_CUBE_MAP_ARRAY:
    case GL_IMAGE_2D_MULTISAMPLE:
    case GL_IMAGE_2D_MULTISAMPLE_ARRAY:
    case GL_INT_IMAGE_1D:
    case GL_INT_IMAGE_2D:
    case GL_INT_IMAGE_3D:
    case GL_INT_IMAGE_2D_RECT:
    case GL_INT_IMAGE_CUBE:
    case GL_INT_IMAGE_BUFFER:
    case GL_INT_IMAGE_1D_ARRAY:
    case GL_INT_IMAGE_2D_ARRAY:
    case GL_UNSIGNED_INT_IMAGE_1D:
    case GL_UNSIGNED_INT_IMAGE_2D:
    case GL_UNSIGNED_INT_IMAGE_3D:
    case GL_UNSIGNED_INT_IMAGE_2D_RECT:
    case GL_UNSIGNED_INT_IMAGE_CUBE:
    case GL_UNSIGNED_INT_IMAGE_BUFFER:
    case GL_UNSIGNED_INT_IMAGE_1D_ARRAY:
    case GL_UNSIGNED_INT_IMAGE_2D_ARRAY:
        return true;
    default:
        return false;
    }
}

std::string ResourceName(GLuint program, GLenum interface, GLuint index)
{
    GLint length = 0;
    const GLenum property = GL_NAME_LENGTH;
    glGetProgramResourceiv(program, interface, index, 1, &property, 1, nullptr, &length);
    if (length <= 1)
        return {};
    std::string name(static_cast<std::size_t>(length), '\0');
    glGetProgramResourceName(program, interface, index, length, nullptr, name.data());
    name.resize(static_cast<std::size_t>(length - 1));
    return name;
}

template <std::size_t N>
std::array<GLint, N> Properties(GLuint program, GLenum interface, GLuint index, const std::array<GLenum, N>& props)
{
    std::array<GLint, N> values{};
    glGetProgramResourceiv(program, interface, index, static_cast<GLsizei>(N), props.data(),
                           static_cast<GLsizei>(N), nullptr, values.data());
    return values;
}

GLuint ActiveResources(GLuint program, GLenum interface)
{
    GLint count = 0;
    glGetProgramInterfaceiv(program, interface, GL_ACTIVE_RESOURCES, &count);
    return count > 0 ? static_cast<GLuint>(count) : 0;
}

// Bytes of one element: a matrix spans its stride per column (or row) but the last.
std::uint32_t ElementSize(const ReflectedType& type, std::uint32_t matrixStride, bool rowMajor)
{
    const std::uint32_t scalarBytes = type.scalar == ScalarKind::Double ? 8 : 4;
    if (type.columns > 1)
    {
        const std::uint32_t vectors = rowMajor ? type.rows : type.columns;
        const std::uint32_t length = rowMajor ? type.columns : type.rows;
        return matrixStride * (vectors - 1) + length * scalarBytes;
    }
    return type.rows * scalarBytes;
}

// The members of block `blockIndex` of `blockInterface` (uniform or storage blocks), whose variables
// live in `memberInterface` (uniforms or buffer variables).
std::vector<Graphics::ReflectedBlockMember> BlockMembers(GLuint program, GLenum blockInterface, GLenum memberInterface,
                                                         GLuint blockIndex, GLint memberCount)
{
    std::vector<Graphics::ReflectedBlockMember> members;
    if (memberCount <= 0)
        return members;
    std::vector<GLint> indices(static_cast<std::size_t>(memberCount));
    const GLenum property = GL_ACTIVE_VARIABLES;
    glGetProgramResourceiv(program, blockInterface, blockIndex, 1, &property, memberCount, nullptr, indices.data());
    for (GLint index : indices)
    {
        const auto variable = static_cast<GLuint>(index);
        const auto values = Properties(program, memberInterface, variable,
                                       std::array<GLenum, 6>{GL_TYPE, GL_OFFSET, GL_ARRAY_SIZE, GL_ARRAY_STRIDE,
                                                             GL_MATRIX_STRIDE, GL_IS_ROW_MAJOR});
        Graphics::ReflectedBlockMember member;
        member.name = ResourceName(program, memberInterface, variable);
        member.type = DescribeType(static_cast<GLenum>(values[0]));
        member.offset = static_cast<std::uint32_t>(values[1]);
        member.arraySize = static_cast<std::uint32_t>(values[2] > 0 ? values[2] : 1);
        member.arrayStride = static_cast<std::uint32_t>(values[3]);
        member.matrixStride = static_cast<std::uint32_t>(values[4]);
        member.rowMajor = values[5] != 0;
        member.size = member.arrayStride * (member.arraySize - 1) +
                      ElementSize(member.type, member.matrixStride, member.rowMajor);
        if (memberInterface == GL_BUFFER_VARIABLE)
        {
            const auto topLevel = Properties(program, memberInterface, variable,
                                             std::array<GLenum, 1>{GL_TOP_LEVEL_ARRAY_STRIDE});
            member.topLevelArrayStride = static_cast<std::uint32_t>(topLevel[0]);
        }
        members.push_back(std::move(member));
    }
    return members;
}
}

ReflectedType DescribeType(std::uint32_t glType)
{
    for (const TypeRow& row : kTypes)
    {
        if (row.glType == glType)
            return {row.scalar, row.rows, row.columns, row.name};
    }
    return {ScalarKind::Opaque, 0, 0, "unknown"};
}

Graphics::ProgramReflection ReflectProgram(std::uint32_t program)
{
    Graphics::ProgramReflection reflection;
    if (program == 0 || glIsProgram(program) == GL_FALSE)
        return reflection;

    for (GLuint i = 0, n = ActiveResources(program, GL_UNIFORM_BLOCK); i < n; ++i)
    {
        const auto values = Properties(program, GL_UNIFORM_BLOCK, i,
                                       std::array<GLenum, 3>{GL_BUFFER_BINDING, GL_BUFFER_DATA_SIZE,
                                                             GL_NUM_ACTIVE_VARIABLES});
        Graphics::ReflectedBlock block;
        block.name = ResourceName(program, GL_UNIFORM_BLOCK, i);
        block.binding = static_cast<std::uint32_t>(values[0]);
        block.size = static_cast<std::uint32_t>(values[1]);
        block.members = BlockMembers(program, GL_UNIFORM_BLOCK, GL_UNIFORM, i, values[2]);
        reflection.uniformBlocks.push_back(std::move(block));
    }

    for (GLuint i = 0, n = ActiveResources(program, GL_SHADER_STORAGE_BLOCK); i < n; ++i)
    {
        const auto values = Properties(program, GL_SHADER_STORAGE_BLOCK, i,
                                       std::array<GLenum, 3>{GL_BUFFER_BINDING, GL_BUFFER_DATA_SIZE,
                                                             GL_NUM_ACTIVE_VARIABLES});
        Graphics::ReflectedBlock block;
        block.name = ResourceName(program, GL_SHADER_STORAGE_BLOCK, i);
        block.binding = static_cast<std::uint32_t>(values[0]);
        block.size = static_cast<std::uint32_t>(values[1]);
        block.members = BlockMembers(program, GL_SHADER_STORAGE_BLOCK, GL_BUFFER_VARIABLE, i, values[2]);
        reflection.storageBlocks.push_back(std::move(block));
    }

    for (GLuint i = 0, n = ActiveResources(program, GL_UNIFORM); i < n; ++i)
    {
        const auto values = Properties(program, GL_UNIFORM, i,
                                       std::array<GLenum, 4>{GL_BLOCK_INDEX, GL_TYPE, GL_LOCATION, GL_ARRAY_SIZE});
        if (values[0] != -1 || values[2] < 0)
            continue;
        const auto glType = static_cast<GLenum>(values[1]);
        Graphics::ReflectedResource resource;
        resource.name = ResourceName(program, GL_UNIFORM, i);
        resource.type = DescribeType(glType);
        resource.arraySize = static_cast<std::uint32_t>(values[3] > 0 ? values[3] : 1);
        GLint unit = 0;
        glGetUniformiv(program, values[2], &unit);
        resource.binding = static_cast<std::uint32_t>(unit);
        if (IsImageType(glType))
            reflection.images.push_back(std::move(resource));
        else if (resource.type.scalar == ScalarKind::Opaque)
            reflection.samplers.push_back(std::move(resource));
    }

    for (GLuint i = 0, n = ActiveResources(program, GL_PROGRAM_INPUT); i < n; ++i)
    {
        const auto values = Properties(program, GL_PROGRAM_INPUT, i, std::array<GLenum, 2>{GL_TYPE, GL_LOCATION});
        Graphics::ReflectedInput input;
        input.name = ResourceName(program, GL_PROGRAM_INPUT, i);
        input.type = DescribeType(static_cast<GLenum>(values[0]));
        input.location = values[1];
        reflection.inputs.push_back(std::move(input));
    }
    return reflection;
}
}
