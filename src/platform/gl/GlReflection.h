// GlReflection: reads a linked program's interface (uniform blocks and their
// members, sampler and image uniforms, shader-storage blocks, program inputs)
// with the program interface queries and gives it as plain ProgramReflection
// data. Needs the program's context to be current.
#pragma once

#include "Graphics_Engine/ProgramReflection.h"

#include <cstdint>

namespace Platform::Gl
{
// The interface of a linked program.
Graphics::ProgramReflection ReflectProgram(std::uint32_t program);
// The plain description of a GL type enum (GL_FLOAT_VEC3, GL_SAMPLER_2D, ...).
Graphics::ReflectedType DescribeType(std::uint32_t glType);
}
