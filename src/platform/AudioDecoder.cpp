// The libsndfile calls behind Platform::AudioDecoder.
#include "platform/AudioDecoder.h"

#include <sndfile.h>

namespace Platform
{
AudioDecoder::~AudioDecoder()
{
    Close();
}

bool AudioDecoder::Open(const std::string& path, std::string& error)
{
    Close();
    SF_INFO info{};
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
    if (!file)
    {
        error = sf_strerror(nullptr);
        return false;
    }
    if (info.channels < 1 || info.channels > 2)
    {
        error = "only mono and stereo sounds are played, this one has " + std::to_string(info.channels) + " channels";
        sf_close(file);
        return false;
    }
    if (info.frames <= 0 || info.samplerate <= 0)
    {
        error = "the file holds no sound";
        sf_close(file);
        return false;
    }
    m_File = file;
    m_Channels = info.channels;
    m_SampleRate = info.samplerate;
    m_Frames = info.frames;
    return true;
}

void AudioDecoder::Close()
{
    if (m_File)
        sf_close(static_cast<SNDFILE*>(m_File));
    m_File = nullptr;
    m_Channels = 0;
    m_SampleRate = 0;
    m_Frames = 0;
}

std::int64_t AudioDecoder::Read(std::int16_t* samples, std::int64_t frames)
{
    if (!m_File || frames <= 0)
        return 0;
    const sf_count_t read = sf_readf_short(static_cast<SNDFILE*>(m_File), samples, frames);
    return read > 0 ? read : 0;
}

bool AudioDecoder::Rewind()
{
    return m_File && sf_seek(static_cast<SNDFILE*>(m_File), 0, SEEK_SET) == 0;
}
}
