// Graphics::s_Light: the GPU record of one light, 112 bytes, the stride of the
// storage buffer sb_lights. It is a wire format between the engine and the
// shaders (Data/Shaders/Lights.glsl declares the same struct in the same
// order), so every field's offset is pinned here. A fresh record (the values
// a new slot starts with, and the sentinel closing every upload) has a dim
// white ambient, a grey diffuse, a white specular, range 100, pointing down,
// spot angles of 10 and 30 degrees with falloff 5, no attenuation but the
// constant 1, and type 0 (off).
#pragma once

#include <cstddef>
#include <cstdint>

namespace Graphics
{
struct s_Light
{
    // Ambient colour, r g b a.
    float Ambient[4];
    // Diffuse colour, r g b a.
    float Diffuse[4];
    // Specular colour, r g b a.
    float Specular[4];
    // World position: the Transform's position and offset plus the light's Offset.
    float Position[3];
    // Radius of effect.
    float Range;
    // Direction of Direction and Spot lights.
    float Direction[3];
    // Keeps SpotPrams on a 16-byte boundary.
    float Padding0;
    // Inner angle, outer angle (radians), falloff exponent.
    float SpotPrams[3];
    // Keeps Attenuation on a 16-byte boundary.
    float Padding1;
    // Constant, linear, quadratic attenuation.
    float Attenuation[3];
    // LightType as an unsigned number; 0 is off.
    std::uint32_t LightType;
};

static_assert(sizeof(s_Light) == 112, "s_Light is the 112-byte stride of sb_lights");
static_assert(offsetof(s_Light, Ambient) == 0);
static_assert(offsetof(s_Light, Diffuse) == 16);
static_assert(offsetof(s_Light, Specular) == 32);
static_assert(offsetof(s_Light, Position) == 48);
static_assert(offsetof(s_Light, Range) == 60);
static_assert(offsetof(s_Light, Direction) == 64);
static_assert(offsetof(s_Light, Padding0) == 76);
static_assert(offsetof(s_Light, SpotPrams) == 80);
static_assert(offsetof(s_Light, Padding1) == 92);
static_assert(offsetof(s_Light, Attenuation) == 96);
static_assert(offsetof(s_Light, LightType) == 108);

// The record a new slot starts with; also the sentinel behind the uploaded records.
constexpr s_Light FreshLightRecord()
{
    return s_Light{{0.1f, 0.1f, 0.1f, 1.0f},
                   {0.8f, 0.8f, 0.8f, 0.0f},
                   {1.0f, 1.0f, 1.0f, 1.0f},
                   {0.0f, 0.0f, 0.0f},
                   100.0f,
                   {0.0f, -1.0f, 0.0f},
                   0.0f,
                   {0.17453f, 0.52360f, 5.0f},
                   0.0f,
                   {1.0f, 0.0f, 0.0f},
                   0u};
}
}
