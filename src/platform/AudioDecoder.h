// Platform::AudioDecoder: reads a sound file through libsndfile (WAV, FLAC, Ogg
// Vorbis, Opus where the library has it) as 16-bit interleaved frames, from the
// start or from where the last read stopped. Only mono and stereo files are
// taken; anything else is refused with a message, as is a file with no frames.
#pragma once

#include <cstdint>
#include <string>

namespace Platform
{
class AudioDecoder
{
public:
    AudioDecoder() = default;
    // Closes the file.
    ~AudioDecoder();
    AudioDecoder(const AudioDecoder&) = delete;
    AudioDecoder& operator=(const AudioDecoder&) = delete;

    // Opens `path`; false with the reason in `error` when it can't be read as sound.
    bool Open(const std::string& path, std::string& error);
    // Closes the file.
    void Close();
    // True while a file is open.
    bool IsOpen() const { return m_File != nullptr; }
    // Reads up to `frames` frames into `samples` (frames x channels values); gives how many were read.
    std::int64_t Read(std::int16_t* samples, std::int64_t frames);
    // Goes back to the first frame; false when the file can't seek.
    bool Rewind();
    // Channels of a frame: 1 or 2.
    int GetChannels() const { return m_Channels; }
    // Frames a second.
    int GetSampleRate() const { return m_SampleRate; }
    // Frames in the file.
    std::int64_t GetFrames() const { return m_Frames; }

private:
    void* m_File = nullptr;
    int m_Channels = 0;
    int m_SampleRate = 0;
    std::int64_t m_Frames = 0;
};
}
