// Amplitude envelopes evaluated at a time in seconds: attack-decay-sustain-
// release over a held note, and the plain percussive attack-then-exponential-
// decay most effects use.
#pragma once

#include <algorithm>
#include <cmath>

namespace SoundTools
{
struct Adsr
{
    // Seconds from 0 to 1.
    double Attack = 0.005;
    // Seconds from 1 down to the sustain level.
    double Decay = 0.1;
    // Level held while the note is held.
    double Sustain = 0.7;
    // Seconds from the level at release down to 0.
    double Release = 0.1;

    // The level `t` seconds after the note started, for a note held `held` seconds.
    double At(double t, double held) const
    {
        if (t < 0.0)
            return 0.0;
        if (t >= held)
        {
            const double r = (t - held) / std::max(Release, 1e-6);
            return r >= 1.0 ? 0.0 : Holding(held) * (1.0 - r);
        }
        return Holding(t);
    }

    // Seconds the note sounds in all for a note held `held` seconds.
    double Length(double held) const { return held + Release; }

private:
    double Holding(double t) const
    {
        if (t < Attack)
            return t / std::max(Attack, 1e-6);
        const double d = (t - Attack) / std::max(Decay, 1e-6);
        return d >= 1.0 ? Sustain : 1.0 + (Sustain - 1.0) * d;
    }
};

// A linear rise over `attack` seconds, then e^(-t / decay).
inline double Percussive(double t, double attack, double decay)
{
    if (t < 0.0)
        return 0.0;
    if (t < attack)
        return t / attack;
    return std::exp(-(t - attack) / decay);
}
}
