// The OpenAL buffer calls behind Platform::AudioBuffer.
#include "platform/AudioBuffer.h"

#include "platform/AudioDecoder.h"

#include <AL/al.h>

#include <limits>
#include <vector>

namespace Platform
{
AudioBuffer::~AudioBuffer()
{
    Destroy();
}

bool AudioBuffer::Create()
{
    if (m_Made)
        return true;
    alGetError();
    ALuint buffer = 0;
    alGenBuffers(1, &buffer);
    if (alGetError() != AL_NO_ERROR)
        return false;
    m_Buffer = buffer;
    m_Made = true;
    return true;
}

void AudioBuffer::Destroy()
{
    if (!m_Made)
        return;
    ALuint buffer = m_Buffer;
    alDeleteBuffers(1, &buffer);
    m_Made = false;
    m_Buffer = 0;
}

bool AudioBuffer::Fill(const std::int16_t* samples, std::int64_t frames, int channels, int sampleRate)
{
    const std::int64_t bytes = frames * channels * static_cast<std::int64_t>(sizeof(std::int16_t));
    if (!Create() || frames <= 0 || bytes > std::numeric_limits<ALsizei>::max())
        return false;
    alGetError();
    alBufferData(m_Buffer, channels == 2 ? AL_FORMAT_STEREO16 : AL_FORMAT_MONO16, samples,
                 static_cast<ALsizei>(bytes), sampleRate);
    if (alGetError() != AL_NO_ERROR)
        return false;
    m_Channels = channels;
    m_SampleRate = sampleRate;
    m_Frames = frames;
    return true;
}

bool AudioBuffer::Decode(const std::string& path, std::string& error)
{
    AudioDecoder decoder;
    if (!decoder.Open(path, error))
        return false;
    // A whole clip is held in memory: ten minutes of stereo is the most taken.
    constexpr std::int64_t kMostSeconds = 600;
    if (decoder.GetFrames() > kMostSeconds * decoder.GetSampleRate())
    {
        error = "the clip is too long to load whole; mark its event Stream";
        return false;
    }
    std::vector<std::int16_t> samples(static_cast<std::size_t>(decoder.GetFrames() * decoder.GetChannels()));
    const std::int64_t read = decoder.Read(samples.data(), decoder.GetFrames());
    if (read <= 0)
    {
        error = "the file holds no readable sound";
        return false;
    }
    if (!Fill(samples.data(), read, decoder.GetChannels(), decoder.GetSampleRate()))
    {
        error = "the mixer refused the sound";
        return false;
    }
    return true;
}
}
