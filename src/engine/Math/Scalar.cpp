#include "engine/Math/Scalar.h"

#include "platform/Dialog.h"

#include <limits>

namespace Math
{
bool AnyIsNaN(std::initializer_list<float> components)
{
    for (float component : components)
        if (std::isnan(component))
            return true;
    return false;
}

void BreakOnNaN(std::initializer_list<float> components)
{
    if (AnyIsNaN(components))
        Platform::BreakIntoDebugger();
}

void NormalizeComponents(std::initializer_list<float*> components, bool zeroGivesNaN)
{
    float lengthSquare = 0.0f;
    for (const float* component : components)
        lengthSquare += *component * *component;
    if (lengthSquare == 0.0f && !zeroGivesNaN)
        return;
    const float length = std::sqrt(lengthSquare);
    for (float* component : components)
        *component = std::isinf(length) ? std::numeric_limits<float>::quiet_NaN() : *component / length;
}
}
