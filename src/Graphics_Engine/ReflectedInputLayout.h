// The vertex input format of a vertex stage from the inputs the device
// reports: the inputs with a location, in location order, each appended by
// the mask rules of InputLayout (a vecN reads as the mask of N components),
// and the same elements as the device's input element descriptions. Built-in
// inputs (gl_VertexID and its kind) are no vertex data and take no place.
#pragma once

#include "Graphics_Engine/DeviceTypes.h"
#include "Graphics_Engine/InputLayout.h"
#include "Graphics_Engine/ProgramReflection.h"

#include <vector>

namespace Graphics
{
// The elements of the vertex input format of `reflection`'s inputs.
std::vector<InputElement> InputLayoutOf(const ProgramReflection& reflection);

// The device's description of `layout`, each element at the location of the input it came from.
std::vector<InputElementDesc> DeviceInputElements(const ProgramReflection& reflection,
                                                  const std::vector<InputElement>& layout);
}
