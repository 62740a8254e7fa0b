// Helpers of the sound tools' tests: decoding a sound file through libsndfile
// and measuring it (peak, RMS, the largest step between neighbouring samples).
#pragma once

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace ToolTest
{
struct DecodedSound
{
    // False when libsndfile could not open the file.
    bool Opened = false;
    int Channels = 0;
    int SampleRate = 0;
    // Interleaved samples.
    std::vector<float> Samples;

    std::size_t Frames() const { return Channels ? Samples.size() / static_cast<std::size_t>(Channels) : 0; }
    double Seconds() const { return SampleRate ? static_cast<double>(Frames()) / SampleRate : 0.0; }
    float At(std::size_t frame, int channel) const { return Samples[frame * static_cast<std::size_t>(Channels) + channel]; }
};

inline DecodedSound DecodeSound(const std::string& path)
{
    DecodedSound sound;
    SF_INFO info{};
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
    if (!file)
        return sound;
    sound.Opened = true;
    sound.Channels = info.channels;
    sound.SampleRate = info.samplerate;
    std::vector<float> block(4096 * static_cast<std::size_t>(std::max(1, info.channels)));
    sf_count_t read = 0;
    while ((read = sf_readf_float(file, block.data(), 4096)) > 0)
        sound.Samples.insert(sound.Samples.end(), block.begin(), block.begin() + read * info.channels);
    sf_close(file);
    return sound;
}

inline float PeakOf(const DecodedSound& sound)
{
    float peak = 0.0f;
    for (float s : sound.Samples)
        peak = std::max(peak, std::fabs(s));
    return peak;
}

inline double RmsOf(const DecodedSound& sound)
{
    double sum = 0.0;
    for (float s : sound.Samples)
        sum += static_cast<double>(s) * s;
    return sound.Samples.empty() ? 0.0 : std::sqrt(sum / static_cast<double>(sound.Samples.size()));
}

// The largest jump between neighbouring samples of `channel` inside the sound.
inline float LargestStep(const DecodedSound& sound, int channel)
{
    float largest = 0.0f;
    for (std::size_t f = 1; f < sound.Frames(); ++f)
        largest = std::max(largest, std::fabs(sound.At(f, channel) - sound.At(f - 1, channel)));
    return largest;
}
}
