// The OpenAL source calls behind Platform::AudioVoice.
#include "platform/AudioVoice.h"

#include <AL/al.h>
#include <AL/alext.h>

#include <cmath>

namespace Platform
{
namespace
{
float Finite(float value, float fallback)
{
    return std::isfinite(value) ? value : fallback;
}
}

AudioVoice::~AudioVoice()
{
    Destroy();
}

bool AudioVoice::Create()
{
    if (m_Made)
        return true;
    alGetError();
    ALuint source = 0;
    alGenSources(1, &source);
    if (alGetError() != AL_NO_ERROR)
        return false;
    m_Source = source;
    m_Made = true;
    // Gains above 1 are allowed: volumes multiply.
    alSourcef(m_Source, AL_MAX_GAIN, 16.0f);
    return true;
}

void AudioVoice::Destroy()
{
    if (!m_Made)
        return;
    Reset();
    ALuint source = m_Source;
    alDeleteSources(1, &source);
    m_Made = false;
    m_Source = 0;
}

void AudioVoice::Reset()
{
    if (!m_Made)
        return;
    alSourceStop(m_Source);
    alSourceRewind(m_Source);
    alSourcei(m_Source, AL_BUFFER, 0);
    alSourcei(m_Source, AL_LOOPING, AL_FALSE);
}

void AudioVoice::SetBuffer(unsigned buffer)
{
    if (m_Made)
        alSourcei(m_Source, AL_BUFFER, static_cast<ALint>(buffer));
}

void AudioVoice::QueueBuffer(unsigned buffer)
{
    if (!m_Made)
        return;
    ALuint id = buffer;
    alSourceQueueBuffers(m_Source, 1, &id);
}

int AudioVoice::UnqueuePlayed(unsigned* buffers, int capacity)
{
    if (!m_Made || capacity <= 0)
        return 0;
    ALint played = 0;
    alGetSourcei(m_Source, AL_BUFFERS_PROCESSED, &played);
    if (played > capacity)
        played = capacity;
    if (played <= 0)
        return 0;
    alSourceUnqueueBuffers(m_Source, played, buffers);
    return played;
}

void AudioVoice::Play()
{
    if (m_Made)
        alSourcePlay(m_Source);
}

void AudioVoice::Pause()
{
    if (m_Made)
        alSourcePause(m_Source);
}

void AudioVoice::Stop()
{
    if (m_Made)
        alSourceStop(m_Source);
}

AudioVoice::State AudioVoice::GetState() const
{
    if (!m_Made)
        return State::Stopped;
    ALint state = AL_STOPPED;
    alGetSourcei(m_Source, AL_SOURCE_STATE, &state);
    if (state == AL_PLAYING)
        return State::Playing;
    if (state == AL_PAUSED)
        return State::Paused;
    return State::Stopped;
}

void AudioVoice::SetGain(float gain)
{
    if (m_Made)
        alSourcef(m_Source, AL_GAIN, Finite(gain < 0.0f ? 0.0f : gain, 0.0f));
}

void AudioVoice::SetPitch(float pitch)
{
    if (m_Made)
        alSourcef(m_Source, AL_PITCH, Finite(pitch < 0.01f ? 0.01f : pitch, 1.0f));
}

void AudioVoice::SetLooping(bool looping)
{
    if (m_Made)
        alSourcei(m_Source, AL_LOOPING, looping ? AL_TRUE : AL_FALSE);
}

void AudioVoice::SetCentred(bool stereo)
{
    if (!m_Made)
        return;
    alSourcei(m_Source, AL_SOURCE_RELATIVE, AL_TRUE);
    alSource3f(m_Source, AL_POSITION, 0.0f, 0.0f, 0.0f);
    alSource3f(m_Source, AL_VELOCITY, 0.0f, 0.0f, 0.0f);
    alSourcef(m_Source, AL_ROLLOFF_FACTOR, 0.0f);
    alSourcei(m_Source, AL_DIRECT_CHANNELS_SOFT, stereo ? AL_TRUE : AL_FALSE);
}

void AudioVoice::SetSpatial(float minDistance, float maxDistance)
{
    if (!m_Made)
        return;
    minDistance = Finite(minDistance, 1.0f);
    maxDistance = Finite(maxDistance, 100.0f);
    if (minDistance < 0.0f)
        minDistance = 0.0f;
    if (maxDistance < minDistance)
        maxDistance = minDistance;
    alSourcei(m_Source, AL_SOURCE_RELATIVE, AL_FALSE);
    alSourcei(m_Source, AL_DIRECT_CHANNELS_SOFT, AL_FALSE);
    alSourcef(m_Source, AL_ROLLOFF_FACTOR, 1.0f);
    alSourcef(m_Source, AL_REFERENCE_DISTANCE, minDistance);
    alSourcef(m_Source, AL_MAX_DISTANCE, maxDistance);
}

void AudioVoice::SetPosition(const float position[3], const float velocity[3])
{
    if (!m_Made)
        return;
    // The engine's world is left-handed (x right, y up, z forward), OpenAL's right-handed: z flips.
    alSource3f(m_Source, AL_POSITION, Finite(position[0], 0), Finite(position[1], 0), -Finite(position[2], 0));
    alSource3f(m_Source, AL_VELOCITY, Finite(velocity[0], 0), Finite(velocity[1], 0), -Finite(velocity[2], 0));
}
}
