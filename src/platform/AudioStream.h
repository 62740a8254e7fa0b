// Platform::AudioStream: a long clip played from disk. The decoder is read in
// chunks into a small ring of buffers queued on a voice (about two seconds in
// all, so a slow frame doesn't starve it); Update, once a frame, refills the
// buffers already played. A looping stream wraps its decoder without a gap,
// and at the wrap may go on with another clip of the same format (a clip chosen
// by a parameter). When the queue ran dry before a refill, the voice resumes
// instead of ending; a stream that is not looping ends once its last buffer played.
#pragma once

#include "platform/AudioBuffer.h"
#include "platform/AudioDecoder.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace Platform
{
class AudioVoice;

class AudioStream
{
public:
    // Buffers in the ring.
    static constexpr int kBufferCount = 4;
    // Seconds of sound in one buffer.
    static constexpr double kBufferSeconds = 0.5;

    // Opens `path` and queues its first buffers on `voice` (wrapping when `loop`); false with
    // the reason in `error`.
    bool Start(const std::string& path, AudioVoice& voice, bool loop, std::string& error);
    // Refills the played buffers; at the end of the clip wraps when `loop`, going on with
    // `seamPath` when that names another clip of the same format. False once the stream has ended.
    bool Update(AudioVoice& voice, bool loop, const std::string& seamPath, bool paused);
    // Stops the voice, takes the buffers off it and closes the file.
    void Stop(AudioVoice& voice);
    // The clip now being read.
    const std::string& GetPath() const { return m_Path; }

private:
    bool FillAndQueue(AudioBuffer& buffer, AudioVoice& voice, bool loop, const std::string& seamPath);
    void Wrap(const std::string& seamPath);

    AudioDecoder m_Decoder;
    std::array<AudioBuffer, kBufferCount> m_Buffers;
    std::vector<std::int16_t> m_Chunk;
    std::string m_Path;
    bool m_AtEnd = false;
    // Buffers on the voice's queue, played or not (a stopped source counts every buffer as played).
    int m_Queued = 0;
};
}
