// Band-limited oscillators driven by a phase in cycles. Each call advances the
// phase by frequency / sample rate, so a frequency may change every sample
// (pitch sweeps). Saw and square use PolyBLEP corrections to keep the
// high notes free of aliasing.
#pragma once

#include "sound_generator/Audio.h"

#include <cmath>

namespace SoundTools
{
enum class Wave
{
    Sine,
    Triangle,
    Saw,
    Square,
};

class Oscillator
{
public:
    // An oscillator of `wave` starting at `phase` (in cycles, 0 to 1).
    explicit Oscillator(Wave wave, double phase = 0.0) : m_Wave(wave), m_Phase(phase) {}

    // The next sample at `frequency` Hz, in [-1, 1].
    float Next(double frequency)
    {
        const double step = frequency / kSampleRate;
        const double p = m_Phase;
        m_Phase += step;
        m_Phase -= std::floor(m_Phase);
        switch (m_Wave)
        {
        case Wave::Sine:
            return static_cast<float>(std::sin(6.283185307179586 * p));
        case Wave::Triangle:
            return static_cast<float>(p < 0.5 ? 4.0 * p - 1.0 : 3.0 - 4.0 * p);
        case Wave::Saw:
            return static_cast<float>(2.0 * p - 1.0 - PolyBlep(p, step));
        case Wave::Square:
        {
            double q = p + 0.5;
            q -= std::floor(q);
            return static_cast<float>((p < 0.5 ? 1.0 : -1.0) + PolyBlep(p, step) - PolyBlep(q, step));
        }
        }
        return 0.0f;
    }

private:
    static double PolyBlep(double t, double step)
    {
        if (step <= 0.0)
            return 0.0;
        if (t < step)
        {
            t /= step;
            return t + t - t * t - 1.0;
        }
        if (t > 1.0 - step)
        {
            t = (t - 1.0) / step;
            return t * t + t + t + 1.0;
        }
        return 0.0;
    }

    Wave m_Wave;
    double m_Phase;
};

// The frequency in Hz of MIDI note `note` (69 is A4, 440 Hz).
inline double NoteFrequency(double note)
{
    return 440.0 * std::pow(2.0, (note - 69.0) / 12.0);
}

// `from` at t = 0 to `to` at t = 1 along an exponential curve (for pitch sweeps).
inline double ExpSweep(double from, double to, double t)
{
    return from * std::pow(to / from, t < 0.0 ? 0.0 : (t > 1.0 ? 1.0 : t));
}
}
