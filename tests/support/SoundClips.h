// Test clips written through libsndfile: tones and steady levels in WAV, FLAC,
// Ogg Vorbis or Opus, so that sound tests need no files of their own; and the
// measures the tests take of a rendered mix.
#pragma once

#include <sndfile.h>

#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

namespace SoundClips
{
constexpr int kRate = 48000;

// `seconds` of a sine of `amplitude` at `frequency` Hz, on `channels` channels, plus `offset`.
inline std::vector<float> Tone(double seconds, float amplitude, float frequency = 440.0f, int channels = 1,
                               float offset = 0.0f)
{
    const auto frames = static_cast<std::size_t>(seconds * kRate);
    std::vector<float> samples(frames * static_cast<std::size_t>(channels));
    for (std::size_t frame = 0; frame < frames; ++frame)
        for (int channel = 0; channel < channels; ++channel)
            samples[frame * static_cast<std::size_t>(channels) + static_cast<std::size_t>(channel)] =
                offset + amplitude * static_cast<float>(std::sin(2.0 * M_PI * frequency * frame / kRate));
    return samples;
}

// Writes `samples` (interleaved) to `path` in `format` (SF_FORMAT_WAV | SF_FORMAT_PCM_16 and so on).
inline bool Write(const std::string& path, const std::vector<float>& samples, int channels = 1,
                  int format = SF_FORMAT_WAV | SF_FORMAT_PCM_16)
{
    SF_INFO info{};
    info.samplerate = kRate;
    info.channels = channels;
    info.format = format;
    SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
    if (!file)
        return false;
    const sf_count_t frames = static_cast<sf_count_t>(samples.size()) / channels;
    const bool written = sf_writef_float(file, samples.data(), frames) == frames;
    sf_close(file);
    return written;
}

// True when libsndfile can write (and so read) `format`.
inline bool CanWrite(int format, int channels = 1)
{
    SF_INFO info{};
    info.samplerate = kRate;
    info.channels = channels;
    info.format = format;
    return sf_format_check(&info) != 0;
}

// Root mean square of one channel of a stereo mix, from frame `first` on.
inline double Rms(const std::vector<float>& stereo, int channel, std::size_t first = 0)
{
    double sum = 0.0;
    std::size_t count = 0;
    for (std::size_t frame = first; frame * 2 + 1 < stereo.size(); ++frame, ++count)
        sum += static_cast<double>(stereo[frame * 2 + static_cast<std::size_t>(channel)]) *
               stereo[frame * 2 + static_cast<std::size_t>(channel)];
    return count ? std::sqrt(sum / static_cast<double>(count)) : 0.0;
}

// The longest run of frames whose left sample is below `level` in size, from frame `first` to `last`.
inline std::size_t LongestQuietRun(const std::vector<float>& stereo, float level, std::size_t first, std::size_t last)
{
    std::size_t longest = 0;
    std::size_t run = 0;
    for (std::size_t frame = first; frame < last && frame * 2 < stereo.size(); ++frame)
    {
        run = std::fabs(stereo[frame * 2]) < level ? run + 1 : 0;
        if (run > longest)
            longest = run;
    }
    return longest;
}
}
