#include "sound_generator/Effects.h"

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

// `seconds` of mono sound, sample i being sample(t = i / rate, fraction of the length).
template <class SampleAt>
Audio Render(double seconds, SampleAt sample)
{
    Audio audio = MonoSeconds(seconds);
    const std::size_t count = audio.Samples.size();
    for (std::size_t i = 0; i < count; ++i)
        audio.Samples[i] = sample(static_cast<double>(i) * kDt, static_cast<double>(i) / count);
    return audio;
}

// The last steps of every effect: fade both ends, then normalise.
Audio Finish(Audio audio, double fadeIn = 0.003, double fadeOut = 0.02)
{
    FadeEdges(audio, fadeIn, fadeOut);
    NormalisePeak(audio, kEffectPeak);
    return audio;
}
}

Audio MakeShot(int variant)
{
    const double start = variant == 1 ? 1500.0 : 1150.0;
    const double end = variant == 1 ? 260.0 : 200.0;
    Oscillator square(Wave::Square), saw(Wave::Saw);
    Noise noise(variant == 1 ? 101u : 102u);
    StateVariableFilter filter, noiseFilter;
    return Finish(Render(0.24, [&](double t, double) {
        const double f = ExpSweep(start, end, t / 0.16);
        const float tone = 0.6f * square.Next(f) + 0.4f * saw.Next(f * 1.01);
        const float body = filter.Process(tone, ExpSweep(7000.0, 900.0, t / 0.2), 1.2).Low;
        const float hiss = noiseFilter.Process(noise.Next(), 4000.0, 0.8).Band;
        return static_cast<float>(body * Percussive(t, 0.002, 0.06) + 0.5 * hiss * Percussive(t, 0.001, 0.012));
    }));
}

Audio MakeHit(int variant)
{
    Noise noise(variant == 1 ? 201u : 202u);
    Oscillator thump(Wave::Sine);
    StateVariableFilter crack;
    const double centre = variant == 1 ? 1800.0 : 1300.0;
    return Finish(Render(0.2, [&](double t, double) {
        const float n = crack.Process(noise.Next(), ExpSweep(centre, centre * 0.4, t / 0.15), 1.5).Band;
        const float low = thump.Next(ExpSweep(variant == 1 ? 190.0 : 160.0, 55.0, t / 0.12));
        return static_cast<float>(1.4 * n * Percussive(t, 0.001, 0.035) + low * Percussive(t, 0.002, 0.05));
    }));
}

Audio MakePlayerHurt()
{
    Oscillator saw(Wave::Saw), vibrato(Wave::Sine), sub(Wave::Square);
    StateVariableFilter filter;
    Noise noise(301u);
    return Finish(Render(0.38, [&](double t, double) {
        const double f = ExpSweep(330.0, 120.0, t / 0.32) * (1.0 + 0.04 * vibrato.Next(28.0));
        float tone = 0.7f * saw.Next(f) + 0.3f * sub.Next(f * 0.5) + 0.15f * noise.Next();
        tone = std::tanh(2.5f * tone);
        const float out = filter.Process(tone, ExpSweep(3500.0, 600.0, t / 0.35), 2.0).Low;
        return static_cast<float>(out * Percussive(t, 0.004, 0.12));
    }));
}

Audio MakeExplosion()
{
    Noise noise(401u);
    Oscillator boom(Wave::Sine);
    StateVariableFilter roar, crackle;
    return Finish(Render(1.3, [&](double t, double) {
        const float n = noise.Next();
        const float dark = roar.Process(n, ExpSweep(3200.0, 140.0, t / 1.1), 0.9).Low;
        const float bright = crackle.Process(n, 2500.0, 0.7).Band;
        const float low = boom.Next(ExpSweep(95.0, 28.0, t / 0.6));
        const double body = Percussive(t, 0.003, 0.35);
        return static_cast<float>(std::tanh(1.8 * (dark * body + 0.8 * low * Percussive(t, 0.002, 0.25) +
                                                   0.4 * bright * Percussive(t, 0.001, 0.05))));
    }), 0.002, 0.1);
}

Audio MakeDash()
{
    Noise noise(501u);
    StateVariableFilter filter;
    return Finish(Render(0.32, [&](double, double x) {
        const double centre = x < 0.4 ? ExpSweep(450.0, 3200.0, x / 0.4) : ExpSweep(3200.0, 900.0, (x - 0.4) / 0.6);
        const double level = std::sin(3.14159265358979 * std::pow(x, 0.6));
        return static_cast<float>(filter.Process(noise.Next(), centre, 2.5).Band * level);
    }), 0.004, 0.03);
}

Audio MakeJump()
{
    Oscillator square(Wave::Square);
    StateVariableFilter filter;
    return Finish(Render(0.2, [&](double t, double) {
        const float tone = square.Next(ExpSweep(210.0, 640.0, t / 0.14));
        return static_cast<float>(filter.Process(tone, 2800.0, 0.7).Low * Percussive(t, 0.003, 0.08));
    }));
}

Audio MakeLand()
{
    Oscillator thud(Wave::Sine);
    Noise noise(701u);
    StateVariableFilter filter;
    return Finish(Render(0.18, [&](double t, double) {
        const float low = thud.Next(ExpSweep(130.0, 45.0, t / 0.1));
        const float scuff = filter.Process(noise.Next(), 700.0, 0.8).Low;
        return static_cast<float>(low * Percussive(t, 0.002, 0.045) + 0.8 * scuff * Percussive(t, 0.001, 0.025));
    }));
}

Audio MakePickup()
{
    Oscillator tone(Wave::Triangle), sparkle(Wave::Square);
    return Finish(Render(0.3, [&](double t, double) {
        const double note = t < 0.07 ? 88.0 : 95.0; // E6 then B6
        const double since = t < 0.07 ? t : t - 0.07;
        const double f = NoteFrequency(note);
        return static_cast<float>((tone.Next(f) + 0.25 * sparkle.Next(f * 2.0)) * Percussive(since, 0.002, 0.07));
    }));
}

Audio MakePowerUp()
{
    Oscillator tone(Wave::Square), shimmer(Wave::Sine), vibrato(Wave::Sine);
    StateVariableFilter filter;
    const double notes[] = {72.0, 76.0, 79.0, 84.0, 88.0}; // C5 E5 G5 C6 E6
    return Finish(Render(0.8, [&](double t, double) {
        const int step = std::min(4, static_cast<int>(t / 0.08));
        const double since = t - step * 0.08;
        const double f = NoteFrequency(notes[step]) * (1.0 + 0.01 * vibrato.Next(7.0));
        const float raw = 0.6f * tone.Next(f) + 0.5f * shimmer.Next(f * 2.0);
        const double level = step < 4 ? Percussive(since, 0.002, 0.06) + 0.2 : Percussive(since, 0.002, 0.18);
        return static_cast<float>(filter.Process(raw, 5000.0, 0.7).Low * level);
    }), 0.002, 0.06);
}

Audio MakeFootstep(int variant)
{
    Noise noise(800u + static_cast<unsigned>(variant));
    StateVariableFilter filter;
    Oscillator thud(Wave::Sine);
    const double centre = 900.0 + 250.0 * variant;
    return Finish(Render(0.1, [&](double t, double) {
        const float scuff = filter.Process(noise.Next(), centre, 1.1).Band;
        const float low = thud.Next(ExpSweep(110.0 + 10.0 * variant, 60.0, t / 0.05));
        return static_cast<float>(1.3 * scuff * Percussive(t, 0.001, 0.018) + 0.6 * low * Percussive(t, 0.001, 0.02));
    }), 0.003, 0.015);
}

Audio MakeMenuClick()
{
    Oscillator tone(Wave::Sine), edge(Wave::Square);
    return Finish(Render(0.06, [&](double t, double) {
        return static_cast<float>((tone.Next(1250.0) + 0.3 * edge.Next(2500.0)) * Percussive(t, 0.0008, 0.012));
    }), 0.003, 0.01);
}

Audio MakeMenuMove()
{
    Oscillator tone(Wave::Triangle);
    return Finish(Render(0.07, [&](double t, double) {
        return static_cast<float>(tone.Next(ExpSweep(720.0, 680.0, t / 0.05)) * Percussive(t, 0.001, 0.018));
    }), 0.004, 0.012);
}

Audio MakeExitOpen()
{
    const double notes[] = {62.0, 69.0, 74.0, 78.0, 81.0, 86.0}; // D4 A4 D5 F#5 A5 D6
    Oscillator voices[6] = {Oscillator(Wave::Triangle), Oscillator(Wave::Sine, 0.3), Oscillator(Wave::Triangle, 0.6),
                            Oscillator(Wave::Sine, 0.1), Oscillator(Wave::Sine, 0.8), Oscillator(Wave::Sine, 0.5)};
    Oscillator tremolo(Wave::Sine);
    Noise noise(1301u);
    StateVariableFilter air;
    return Finish(Render(1.6, [&](double t, double x) {
        double sum = 0.0;
        for (int v = 0; v < 6; ++v)
        {
            const double enter = 0.12 * v;
            if (t < enter)
            {
                voices[v].Next(0.0);
                continue;
            }
            const double rise = std::min(1.0, (t - enter) / 0.08);
            sum += voices[v].Next(NoteFrequency(notes[v]) * (1.0 + 0.02 * (1.0 - x))) * rise * std::exp(-(t - enter) / 0.9);
        }
        const double wobble = 1.0 + 0.25 * tremolo.Next(6.0);
        const float shimmer = air.Process(noise.Next(), ExpSweep(1500.0, 7000.0, x), 1.5).Band;
        return static_cast<float>(sum * wobble / 3.0 + 0.3 * shimmer * std::sin(3.14159265358979 * x));
    }), 0.005, 0.2);
}

Audio MakeBossSlam()
{
    Oscillator boom(Wave::Sine), body(Wave::Triangle);
    Noise noise(1401u);
    StateVariableFilter rubble, impact;
    return Finish(Render(1.1, [&](double t, double) {
        const double f = ExpSweep(70.0, 26.0, t / 0.7);
        const float low = boom.Next(f) + 0.4f * body.Next(f * 2.0);
        const float n = noise.Next();
        const float crack = impact.Process(n, ExpSweep(2500.0, 300.0, t / 0.2), 1.0).Low;
        const float stones = rubble.Process(n, 1600.0, 3.0).Band;
        const double grains = t > 0.08 ? std::pow(std::fabs(std::sin(t * 61.0) * std::sin(t * 23.0)), 6.0) : 0.0;
        return static_cast<float>(std::tanh(2.2 * (low * Percussive(t, 0.003, 0.32) + crack * Percussive(t, 0.001, 0.08))) +
                                  0.5 * stones * grains * Percussive(t, 0.05, 0.3));
    }), 0.002, 0.12);
}

Audio MakeDeath()
{
    Oscillator saw(Wave::Saw), detuned(Wave::Saw, 0.5), vibrato(Wave::Sine);
    StateVariableFilter filter;
    return Finish(Render(1.2, [&](double t, double x) {
        const double f = ExpSweep(440.0, 55.0, t / 1.0) * (1.0 + 0.015 * vibrato.Next(5.0 + 3.0 * x));
        const float tone = 0.5f * saw.Next(f) + 0.5f * detuned.Next(f * 1.012);
        const float dark = filter.Process(tone, ExpSweep(4000.0, 200.0, x), 3.0).Low;
        return static_cast<float>(dark * Percussive(t, 0.01, 0.45));
    }), 0.01, 0.15);
}
}
