#include "sound_generator/Audio.h"

#include <algorithm>
#include <cmath>

namespace SoundTools
{
Audio MonoSeconds(double seconds)
{
    Audio audio;
    audio.Samples.assign(static_cast<std::size_t>(std::lround(seconds * kSampleRate)), 0.0f);
    return audio;
}

float Peak(const Audio& audio)
{
    float peak = 0.0f;
    for (float s : audio.Samples)
        peak = std::max(peak, std::fabs(s));
    return peak;
}

void NormalisePeak(Audio& audio, float peak)
{
    const float current = Peak(audio);
    if (current <= 0.0f)
        return;
    const float gain = peak / current;
    for (float& s : audio.Samples)
        s *= gain;
}

void FadeEdges(Audio& audio, double inSeconds, double outSeconds)
{
    const std::size_t frames = audio.Frames();
    if (frames == 0)
        return;
    const auto fade = [&](std::size_t count, bool atStart) {
        count = std::max<std::size_t>(1, std::min(count, frames));
        for (std::size_t i = 0; i < count; ++i)
        {
            // 0 at the outer edge, rising to 1 `count` frames inside.
            const double gain = 0.5 - 0.5 * std::cos(3.14159265358979 * static_cast<double>(i) / count);
            const std::size_t frame = atStart ? i : frames - 1 - i;
            for (int c = 0; c < audio.Channels; ++c)
                audio.Samples[frame * audio.Channels + c] *= static_cast<float>(gain);
        }
    };
    fade(static_cast<std::size_t>(inSeconds * kSampleRate), true);
    fade(static_cast<std::size_t>(outSeconds * kSampleRate), false);
}

void Saturate(Audio& audio, float drive)
{
    const float scale = 1.0f / std::tanh(drive);
    for (float& s : audio.Samples)
        s = std::tanh(drive * s) * scale;
}
}
