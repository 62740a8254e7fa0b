// A block of sampled sound at the generator's one rate (48000 Hz), mono or
// interleaved stereo, and the finishing steps every sound goes through: peak
// normalising and short fades that keep the first and last samples at zero.
#pragma once

#include <cstddef>
#include <vector>

namespace SoundTools
{
// The sample rate of everything the generator makes.
constexpr int kSampleRate = 48000;

struct Audio
{
    // 1 (mono) or 2 (interleaved left, right).
    int Channels = 1;
    // The samples, interleaved when stereo.
    std::vector<float> Samples;

    // Frames (one sample per channel) held.
    std::size_t Frames() const { return Samples.size() / static_cast<std::size_t>(Channels); }
};

// A silent mono block of `seconds`.
Audio MonoSeconds(double seconds);
// The largest absolute sample.
float Peak(const Audio& audio);
// Scales so that the largest absolute sample is `peak` (silence stays silent).
void NormalisePeak(Audio& audio, float peak);
// Raised-cosine fade-in over `inSeconds` and fade-out over `outSeconds`; the
// first and last frames become exactly zero.
void FadeEdges(Audio& audio, double inSeconds, double outSeconds);
// Soft saturation: tanh(drive * x) / tanh(drive), which keeps 1 at 1.
void Saturate(Audio& audio, float drive);
}
