// Turns what the device reports of a compiled stage (ProgramReflection) into
// the stage's name tables: each uniform block becomes a constant buffer of the
// driver's size with each member at the driver's offset, each sampler uniform
// and storage block a texture slot, each image an unordered slot, and each
// sampler uniform is matched with the first sampler block of its name. An
// array is known by its name without "[0]"; a struct in a block is known by its
// fields ("Light.Range") and, whole, by its own name ("Light"); the members of
// a block with an instance name are known without the block's name in front. The binding point of every entry
// is kept beside it.
#pragma once

#include "Graphics_Engine/ProgramReflection.h"
#include "Graphics_Engine/ShaderDescription.h"
#include "Graphics_Engine/StageBindingPoints.h"
#include "Graphics_Engine/StageReflection.h"

#include <string>

namespace Graphics
{
// The name under which a reflected value is known: GLSL's name without a trailing "[0]".
std::string ReflectedName(const std::string& glslName);

// Fills `stage` and `points` from `reflection`; the sampler uniforms are matched with the samplers of
// `description`, which must outlive `stage`. False when a member lies outside its block (it is skipped).
bool ReflectStage(const ProgramReflection& reflection, const ShaderDescription& description, StageReflection& stage,
                  StageBindingPoints& points);
}
