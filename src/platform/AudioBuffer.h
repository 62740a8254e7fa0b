// Platform::AudioBuffer: one OpenAL buffer of 16-bit mono or stereo sound.
// Decode fills one from a whole file (a clip loaded whole); Fill gives it the
// next chunk of a stream. Needs the output's context to be current.
#pragma once

#include <cstdint>
#include <string>

namespace Platform
{
class AudioBuffer
{
public:
    AudioBuffer() = default;
    // Frees the buffer.
    ~AudioBuffer();
    AudioBuffer(const AudioBuffer&) = delete;
    AudioBuffer& operator=(const AudioBuffer&) = delete;

    // Makes the buffer; false when the mixer can't.
    bool Create();
    // Frees the buffer.
    void Destroy();
    // Gives the buffer `frames` frames of `channels` interleaved samples at `sampleRate`.
    bool Fill(const std::int16_t* samples, std::int64_t frames, int channels, int sampleRate);
    // Decodes the whole file at `path` into the buffer; false with the reason in `error`.
    bool Decode(const std::string& path, std::string& error);
    // The OpenAL name of the buffer, for a voice.
    unsigned GetId() const { return m_Buffer; }
    // Channels of the decoded sound.
    int GetChannels() const { return m_Channels; }
    // Frames a second of the decoded sound.
    int GetSampleRate() const { return m_SampleRate; }
    // Frames of the decoded sound.
    std::int64_t GetFrames() const { return m_Frames; }

private:
    unsigned m_Buffer = 0;
    bool m_Made = false;
    int m_Channels = 0;
    int m_SampleRate = 0;
    std::int64_t m_Frames = 0;
};
}
