// Constants and small helpers on single floats shared by the math types: the
// tolerance their operator== uses and the degree/radian conversion factors.
#pragma once

#include <cmath>

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
}
