// Platform::AudioStream: chunked reading of a clip into the buffers of a voice.
#include "platform/AudioStream.h"

#include "platform/AudioVoice.h"

namespace Platform
{
bool AudioStream::Start(const std::string& path, AudioVoice& voice, bool loop, std::string& error)
{
    Stop(voice);
    if (!m_Decoder.Open(path, error))
        return false;
    m_Path = path;
    m_AtEnd = false;
    for (AudioBuffer& buffer : m_Buffers)
        if (!FillAndQueue(buffer, voice, loop, path))
            break;
    return true;
}

void AudioStream::Wrap(const std::string& seamPath)
{
    if (seamPath != m_Path && !seamPath.empty())
    {
        AudioDecoder next;
        std::string error;
        if (next.Open(seamPath, error) && next.GetChannels() == m_Decoder.GetChannels() &&
            next.GetSampleRate() == m_Decoder.GetSampleRate())
        {
            m_Decoder.Close();
            m_Decoder.Open(seamPath, error);
            m_Path = seamPath;
            return;
        }
    }
    if (!m_Decoder.Rewind())
        m_AtEnd = true;
}

bool AudioStream::FillAndQueue(AudioBuffer& buffer, AudioVoice& voice, bool loop, const std::string& seamPath)
{
    if (m_AtEnd || !m_Decoder.IsOpen())
        return false;
    const int channels = m_Decoder.GetChannels();
    const auto chunkFrames = static_cast<std::int64_t>(m_Decoder.GetSampleRate() * kBufferSeconds);
    m_Chunk.resize(static_cast<std::size_t>(chunkFrames * channels));
    std::int64_t filled = 0;
    // A loop wraps inside the chunk, so the seam has no gap; two empty reads in a row end it.
    int emptyReads = 0;
    while (filled < chunkFrames && emptyReads < 2)
    {
        const std::int64_t read = m_Decoder.Read(m_Chunk.data() + filled * channels, chunkFrames - filled);
        filled += read;
        if (filled >= chunkFrames)
            break;
        emptyReads = read > 0 ? 0 : emptyReads + 1;
        if (!loop)
        {
            m_AtEnd = true;
            break;
        }
        Wrap(seamPath);
        if (m_AtEnd || m_Decoder.GetChannels() != channels)
            break;
    }
    if (filled <= 0 || !buffer.Fill(m_Chunk.data(), filled, channels, m_Decoder.GetSampleRate()))
    {
        m_AtEnd = true;
        return false;
    }
    voice.QueueBuffer(buffer.GetId());
    ++m_Queued;
    return true;
}

bool AudioStream::Update(AudioVoice& voice, bool loop, const std::string& seamPath, bool paused)
{
    unsigned played[kBufferCount];
    const int count = voice.UnqueuePlayed(played, kBufferCount);
    m_Queued -= count;
    for (int index = 0; index < count; ++index)
        for (AudioBuffer& buffer : m_Buffers)
            if (buffer.GetId() == played[index])
                FillAndQueue(buffer, voice, loop, seamPath);
    if (voice.GetState() == AudioVoice::State::Stopped)
    {
        if (m_Queued <= 0)
            return false;
        // The queue ran dry before this refill: carry on rather than end.
        if (!paused)
            voice.Play();
    }
    return true;
}

void AudioStream::Stop(AudioVoice& voice)
{
    voice.Reset();
    m_Decoder.Close();
    m_Path.clear();
    m_AtEnd = false;
    m_Queued = 0;
}
}
