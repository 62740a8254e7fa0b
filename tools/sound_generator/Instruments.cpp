#include "sound_generator/Instruments.h"

#include "sound_generator/Envelopes.h"
#include "sound_generator/Filters.h"
#include "sound_generator/Noise.h"
#include "sound_generator/Oscillators.h"

#include <cmath>

namespace SoundTools
{
namespace
{
constexpr double kDt = 1.0 / kSampleRate;

template <class SampleAt>
std::vector<float> Render(double seconds, SampleAt sample)
{
    std::vector<float> out(static_cast<std::size_t>(seconds * kSampleRate));
    for (std::size_t i = 0; i < out.size(); ++i)
        out[i] = sample(static_cast<double>(i) * kDt);
    // The tail ends at exactly zero whatever the envelope left.
    const std::size_t fade = std::min<std::size_t>(out.size(), 64);
    for (std::size_t i = 0; i < fade; ++i)
        out[out.size() - 1 - i] *= static_cast<float>(i) / fade;
    return out;
}
}

std::vector<float> Kick(double low, double decay)
{
    Oscillator sine(Wave::Sine);
    return Render(decay * 5.0, [&](double t) {
        const double f = low + (150.0 - low) * std::exp(-t / 0.03);
        return static_cast<float>(std::tanh(1.5 * sine.Next(f)) * Percussive(t, 0.001, decay));
    });
}

std::vector<float> Snare(std::uint32_t seed, double decay)
{
    Oscillator tone(Wave::Triangle);
    Noise noise(seed);
    StateVariableFilter filter;
    return Render(decay * 5.0, [&](double t) {
        const float n = filter.Process(noise.Next(), 1800.0, 0.6).High;
        return static_cast<float>(0.5 * tone.Next(ExpSweep(230.0, 170.0, t / 0.05)) * Percussive(t, 0.001, 0.05) +
                                  0.9 * n * Percussive(t, 0.001, decay));
    });
}

std::vector<float> HiHat(std::uint32_t seed, double decay)
{
    Noise noise(seed);
    StateVariableFilter filter;
    return Render(decay * 5.0, [&](double t) {
        return static_cast<float>(filter.Process(noise.Next(), 7500.0, 0.8).High * Percussive(t, 0.0005, decay));
    });
}

std::vector<float> Crash(std::uint32_t seed)
{
    Noise noise(seed);
    StateVariableFilter filter;
    return Render(2.5, [&](double t) {
        return static_cast<float>(filter.Process(noise.Next(), 5000.0, 0.5).High * Percussive(t, 0.002, 0.6));
    });
}

std::vector<float> Bass(double note, double seconds, double brightness)
{
    const Adsr envelope{0.004, 0.12, 0.75, 0.05};
    Oscillator saw(Wave::Saw), sub(Wave::Square);
    StateVariableFilter filter;
    const double f = NoteFrequency(note);
    return Render(envelope.Length(seconds), [&](double t) {
        const float raw = 0.7f * saw.Next(f) + 0.35f * sub.Next(f * 0.5);
        const double cutoff = f * (2.0 + 3.0 * brightness) + (900.0 + 1800.0 * brightness) * std::exp(-t / 0.08);
        return static_cast<float>(filter.Process(raw, cutoff, 1.4).Low * envelope.At(t, seconds));
    });
}

std::vector<float> Pad(double note, double seconds, double detune, double phase, double cutoff)
{
    const Adsr envelope{std::min(0.6, seconds * 0.3), 0.5, 0.8, 0.9};
    Oscillator a(Wave::Saw, phase), b(Wave::Saw, 1.0 - phase);
    StateVariableFilter filter;
    const double ratio = std::pow(2.0, detune / 1200.0);
    const double f = NoteFrequency(note);
    return Render(envelope.Length(seconds), [&](double t) {
        const float raw = 0.5f * (a.Next(f * ratio) + b.Next(f / ratio));
        return static_cast<float>(filter.Process(raw, cutoff, 0.7).Low * envelope.At(t, seconds));
    });
}

std::vector<float> Lead(double note, double seconds, double brightness)
{
    const Adsr envelope{0.008, 0.15, 0.7, 0.12};
    Oscillator square(Wave::Square), triangle(Wave::Triangle), vibrato(Wave::Sine);
    StateVariableFilter filter;
    const double f = NoteFrequency(note);
    return Render(envelope.Length(seconds), [&](double t) {
        const double depth = t < 0.15 ? 0.0 : std::min(1.0, (t - 0.15) / 0.2) * 0.006;
        const double pitch = f * (1.0 + depth * vibrato.Next(5.5));
        const float raw = 0.45f * square.Next(pitch) + 0.55f * triangle.Next(pitch);
        const double cutoff = f * (3.0 + 4.0 * brightness) + 1500.0 * std::exp(-t / 0.1);
        return static_cast<float>(filter.Process(raw, cutoff, 0.9).Low * envelope.At(t, seconds));
    });
}

std::vector<float> SoftLead(double note, double seconds)
{
    const Adsr envelope{0.03, 0.3, 0.6, 0.4};
    Oscillator sine(Wave::Sine), triangle(Wave::Triangle), vibrato(Wave::Sine);
    const double f = NoteFrequency(note);
    return Render(envelope.Length(seconds), [&](double t) {
        const double pitch = f * (1.0 + 0.004 * vibrato.Next(4.5) * std::min(1.0, t / 0.5));
        return static_cast<float>((0.8 * sine.Next(pitch) + 0.2 * triangle.Next(pitch)) * envelope.At(t, seconds));
    });
}

std::vector<float> Pluck(double note, double seconds)
{
    Oscillator saw(Wave::Saw), square(Wave::Square, 0.25);
    StateVariableFilter filter;
    const double f = NoteFrequency(note);
    return Render(seconds + 0.15, [&](double t) {
        const float raw = 0.6f * saw.Next(f) + 0.4f * square.Next(f * 1.003);
        const double cutoff = f * 1.5 + 4000.0 * std::exp(-t / 0.05);
        return static_cast<float>(filter.Process(raw, cutoff, 1.8).Low * Percussive(t, 0.002, 0.09));
    });
}
}
