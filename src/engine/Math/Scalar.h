// Constants and small helpers shared by the math types: the tolerance their
// operator== uses, the degree/radian conversion factors, and the component-wise
// NaN checks and normalisation.
#pragma once

#include <cmath>
#include <initializer_list>

namespace Math
{
// Two components compare equal when they differ by at most this much.
inline constexpr float kEqualTolerance = 0.0001f;
// Multiplies radians into degrees.
inline constexpr float kDegreesPerRadian = 57.2957763671875f;
// Multiplies degrees into radians.
inline constexpr float kRadiansPerDegree = 0.017453292f;
// Pi as a float.
inline constexpr float kPi = 3.14159265f;

// True when a and b differ by at most kEqualTolerance (false if either is NaN).
inline bool NearlyEqual(float a, float b)
{
    return std::fabs(a - b) <= kEqualTolerance;
}

// True if any of the components is a NaN.
bool AnyIsNaN(std::initializer_list<float> components);
// Breaks into an attached debugger if any of the components is a NaN.
void BreakOnNaN(std::initializer_list<float> components);
// Divides the components by their length in place; leaves them when the length
// is exactly 0 (unless `zeroGivesNaN`), and makes them NaN when it is infinite.
void NormalizeComponents(std::initializer_list<float*> components, bool zeroGivesNaN = false);
}
