// The OpenAL Soft device and context behind Platform::AudioOutput.
#include "platform/AudioOutput.h"

#include <AL/al.h>
#include <AL/alc.h>
#include <AL/alext.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace Platform
{
namespace
{
ALCdevice* AsDevice(void* device)
{
    return static_cast<ALCdevice*>(device);
}
}

AudioOutput::~AudioOutput()
{
    Close();
}

bool AudioOutput::SilenceRequested()
{
    const char* value = std::getenv("VORN_AUDIO_SILENT");
    return value && *value && std::strcmp(value, "0") != 0;
}

AudioOutput::Mode AudioOutput::Open(bool loopback)
{
    Close();
    if (!loopback && !SilenceRequested())
    {
        ALCdevice* device = alcOpenDevice(nullptr);
        ALCcontext* context = device ? alcCreateContext(device, nullptr) : nullptr;
        if (context && alcMakeContextCurrent(context))
        {
            m_Device = device;
            m_Context = context;
            ALCint rate = 0;
            alcGetIntegerv(device, ALC_FREQUENCY, 1, &rate);
            m_SampleRate = rate > 0 ? rate : 44100;
            m_Mode = Mode::Device;
            alDistanceModel(AL_INVERSE_DISTANCE_CLAMPED);
            return m_Mode;
        }
        if (context)
            alcDestroyContext(context);
        if (device)
            alcCloseDevice(device);
    }
    if (OpenLoopback())
        m_Mode = loopback ? Mode::Loopback : Mode::Silent;
    else
        m_Mode = loopback ? Mode::Loopback : Mode::NoMixer;
    return m_Mode;
}

bool AudioOutput::OpenLoopback()
{
    m_SampleRate = kLoopbackRate;
    if (!alcIsExtensionPresent(nullptr, "ALC_SOFT_loopback"))
        return false;
    auto openLoopback = reinterpret_cast<LPALCLOOPBACKOPENDEVICESOFT>(alcGetProcAddress(nullptr, "alcLoopbackOpenDeviceSOFT"));
    auto render = reinterpret_cast<LPALCRENDERSAMPLESSOFT>(alcGetProcAddress(nullptr, "alcRenderSamplesSOFT"));
    if (!openLoopback || !render)
        return false;
    ALCdevice* device = openLoopback(nullptr);
    if (!device)
        return false;
    // Stereo float at a fixed rate, without HRTF or the output limiter, so that levels are exact.
    const ALCint attributes[] = {ALC_FORMAT_CHANNELS_SOFT, ALC_STEREO_SOFT, ALC_FORMAT_TYPE_SOFT, ALC_FLOAT_SOFT,
                                 ALC_FREQUENCY, kLoopbackRate, ALC_HRTF_SOFT, ALC_FALSE,
                                 ALC_OUTPUT_LIMITER_SOFT, ALC_FALSE, 0};
    ALCcontext* context = alcCreateContext(device, attributes);
    if (!context || !alcMakeContextCurrent(context))
    {
        if (context)
            alcDestroyContext(context);
        alcCloseDevice(device);
        return false;
    }
    m_Device = device;
    m_Context = context;
    m_RenderFunction = reinterpret_cast<void*>(render);
    alDistanceModel(AL_INVERSE_DISTANCE_CLAMPED);
    return true;
}

void AudioOutput::Close()
{
    if (m_Context)
    {
        alcMakeContextCurrent(nullptr);
        alcDestroyContext(static_cast<ALCcontext*>(m_Context));
    }
    if (m_Device)
        alcCloseDevice(AsDevice(m_Device));
    m_Context = nullptr;
    m_Device = nullptr;
    m_RenderFunction = nullptr;
    m_Mode = Mode::Closed;
    m_ElapsedLeft = 0.0;
}

bool AudioOutput::Render(float* samples, int frames)
{
    if (!m_RenderFunction || frames <= 0)
        return false;
    reinterpret_cast<LPALCRENDERSAMPLESSOFT>(m_RenderFunction)(AsDevice(m_Device), samples, frames);
    return true;
}

void AudioOutput::RenderElapsed(double seconds)
{
    if (!m_RenderFunction || !(seconds > 0.0))
        return;
    // A long stall (a debugger, a load) is not worth mixing whole: a few seconds are enough to
    // let short sounds end; longer ones carry on from there.
    constexpr double kMostSeconds = 4.0;
    constexpr int kChunkFrames = 4096;
    m_ElapsedLeft += std::min(seconds, kMostSeconds);
    int frames = static_cast<int>(m_ElapsedLeft * m_SampleRate);
    m_ElapsedLeft -= static_cast<double>(frames) / m_SampleRate;
    m_Scratch.resize(static_cast<std::size_t>(kChunkFrames) * 2);
    while (frames > 0)
    {
        const int chunk = std::min(frames, kChunkFrames);
        Render(m_Scratch.data(), chunk);
        frames -= chunk;
    }
}

void AudioOutput::SetListener(const float position[3], const float velocity[3], const float forward[3],
                              const float up[3])
{
    if (!m_Context)
        return;
    // The engine's world is left-handed (x right, y up, z forward), OpenAL's right-handed: z flips.
    const float place[3] = {position[0], position[1], -position[2]};
    const float speed[3] = {velocity[0], velocity[1], -velocity[2]};
    alListenerfv(AL_POSITION, place);
    alListenerfv(AL_VELOCITY, speed);
    const float orientation[6] = {forward[0], forward[1], -forward[2], up[0], up[1], -up[2]};
    alListenerfv(AL_ORIENTATION, orientation);
}
}
