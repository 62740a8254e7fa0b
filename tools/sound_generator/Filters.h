// Filters whose cutoff may change every sample: a state-variable filter (low,
// band and high pass at once, after Andrew Simper's trapezoidal form, stable at
// any cutoff below half the sample rate) and a one-pole low pass for gentle
// smoothing.
#pragma once

#include "sound_generator/Audio.h"

#include <algorithm>
#include <cmath>

namespace SoundTools
{
struct FilterOutputs
{
    float Low = 0.0f;
    float Band = 0.0f;
    float High = 0.0f;
};

class StateVariableFilter
{
public:
    // Filters `input` with cutoff `cutoff` Hz and resonance `q` (0.5 is gentle,
    // 5 is sharp); gives the three outputs.
    FilterOutputs Process(float input, double cutoff, double q)
    {
        cutoff = std::clamp(cutoff, 10.0, 0.45 * kSampleRate);
        const double g = std::tan(3.14159265358979 * cutoff / kSampleRate);
        const double k = 1.0 / std::max(q, 0.1);
        const double a1 = 1.0 / (1.0 + g * (g + k));
        const double a2 = g * a1;
        const double a3 = g * a2;
        const double v3 = input - m_Ic2;
        const double v1 = a1 * m_Ic1 + a2 * v3;
        const double v2 = m_Ic2 + a2 * m_Ic1 + a3 * v3;
        m_Ic1 = 2.0 * v1 - m_Ic1;
        m_Ic2 = 2.0 * v2 - m_Ic2;
        FilterOutputs out;
        out.Low = static_cast<float>(v2);
        out.Band = static_cast<float>(v1);
        out.High = static_cast<float>(input - k * v1 - v2);
        return out;
    }

private:
    double m_Ic1 = 0.0;
    double m_Ic2 = 0.0;
};

class OnePoleLowPass
{
public:
    // The next output for `input` at cutoff `cutoff` Hz.
    float Process(float input, double cutoff)
    {
        const double a = 1.0 - std::exp(-6.283185307179586 * cutoff / kSampleRate);
        m_State += a * (input - m_State);
        return static_cast<float>(m_State);
    }

private:
    double m_State = 0.0;
};
}
