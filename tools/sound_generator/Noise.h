// White noise from a fixed seed: the same seed gives the same samples on every
// machine (no standard-library distributions, whose output may differ).
#pragma once

#include <cstdint>

namespace SoundTools
{
class Noise
{
public:
    // A sequence started from `seed` (0 is replaced by a fixed non-zero seed).
    explicit Noise(std::uint32_t seed) : m_State(seed ? seed : 0x9E3779B9u) {}

    // The next value, uniform in [-1, 1).
    float Next()
    {
        m_State ^= m_State << 13;
        m_State ^= m_State >> 17;
        m_State ^= m_State << 5;
        return static_cast<float>(m_State) * (2.0f / 4294967296.0f) - 1.0f;
    }

    // The next value, uniform in [0, 1).
    float NextUnit() { return 0.5f * (Next() + 1.0f); }

private:
    std::uint32_t m_State;
};
}
