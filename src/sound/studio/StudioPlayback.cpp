// The instance half of SystemImpl: starting, mixing, placing, ending and
// freeing instances, and their parameters.
#include "sound/studio/StudioState.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Studio
{
namespace
{
float Finite(float value, float fallback)
{
    return std::isfinite(value) ? value : fallback;
}

// Where a parameter's value lies in its range, 0 at Minimum and 1 at Maximum.
float RangeFraction(const ParameterState& parameter)
{
    const ParameterData& data = *parameter.m_Data;
    const float span = data.m_Maximum - data.m_Minimum;
    if (!(span > 0.0f) || !std::isfinite(span))
        return 0.0f;
    return std::clamp((parameter.m_Value - data.m_Minimum) / span, 0.0f, 1.0f);
}

// The product of the factors of the parameters driving `target`.
float ParameterFactor(const InstanceState& instance, ParameterTarget target)
{
    float factor = 1.0f;
    for (const auto& parameter : instance.m_Parameters)
        if (parameter->m_Data->m_Drives == target)
        {
            const ParameterData& data = *parameter->m_Data;
            factor *= data.m_From + (data.m_To - data.m_From) * RangeFraction(*parameter);
        }
    return Finite(factor, 1.0f);
}

// The clip a Clip parameter names, or -1 when no parameter drives the clip.
int DrivenClip(const InstanceState& instance, int clipCount)
{
    for (const auto& parameter : instance.m_Parameters)
        if (parameter->m_Data->m_Drives == ParameterTarget::Clip)
        {
            const float value = Finite(std::floor(parameter->m_Value), 0.0f);
            return static_cast<int>(std::clamp(value, 0.0f, static_cast<float>(clipCount - 1)));
        }
    return -1;
}
}

Result SystemImpl::CreateInstance(DescriptionState& description, EventInstance** instance)
{
    if (!instance)
        return ERR_INVALID_PARAM;
    *instance = nullptr;
    auto state = std::make_unique<InstanceState>();
    state->m_System = this;
    state->m_Description = &description;
    for (const ParameterData& data : description.m_Data.m_Parameters)
    {
        auto parameter = std::make_unique<ParameterState>();
        parameter->m_Instance = state.get();
        parameter->m_Data = &data;
        const float high = std::max(data.m_Minimum, data.m_Maximum);
        parameter->m_Value = std::clamp(Finite(data.m_Default, data.m_Minimum), data.m_Minimum, high);
        state->m_Parameters.push_back(std::move(parameter));
    }
    auto* handle = new EventInstance();
    handle->m_Data = state.get();
    state->m_Handle = handle;
    m_InstanceHandles.push_back(handle);
    *instance = handle;
    m_Instances.push_back(std::move(state));
    return OK;
}

ClipState* SystemImpl::PickClip(InstanceState& instance)
{
    DescriptionState& description = *instance.m_Description;
    const int count = static_cast<int>(description.m_Clips.size());
    if (count == 0)
        return nullptr;
    int pick = DrivenClip(instance, count);
    if (pick < 0)
    {
        if (count == 1)
            pick = 0;
        else if (description.m_Data.m_Order == ClipOrder::Sequential)
            pick = (description.m_LastClip + 1) % count;
        else
        {
            // Any clip but the last one: draw among the others.
            pick = std::uniform_int_distribution<int>(0, count - 2)(m_Random);
            if (description.m_LastClip >= 0 && pick >= description.m_LastClip)
                ++pick;
        }
    }
    description.m_LastClip = pick;
    return description.m_Clips[static_cast<std::size_t>(pick)];
}

std::string SystemImpl::SeamClipPath(InstanceState& instance)
{
    const auto& clips = instance.m_Description->m_Clips;
    const int driven = DrivenClip(instance, static_cast<int>(clips.size()));
    if (driven < 0 || !instance.m_Clip)
        return instance.m_Stream ? instance.m_Stream->GetPath() : std::string();
    return clips[static_cast<std::size_t>(driven)]->m_Path;
}

void SystemImpl::ApplyMix(InstanceState& instance)
{
    if (instance.m_Voice < 0)
        return;
    Platform::AudioVoice& voice = *m_Voices[static_cast<std::size_t>(instance.m_Voice)];
    voice.SetGain(instance.m_Volume * instance.m_StartVolume * ParameterFactor(instance, ParameterTarget::Volume));
    voice.SetPitch(instance.m_StartPitch * ParameterFactor(instance, ParameterTarget::Pitch));
}

void SystemImpl::ApplyPlacement(InstanceState& instance)
{
    if (instance.m_Voice < 0 || !instance.m_Clip)
        return;
    Platform::AudioVoice& voice = *m_Voices[static_cast<std::size_t>(instance.m_Voice)];
    const EventData& data = instance.m_Description->m_Data;
    if (data.m_Spatial && instance.m_Clip->m_Channels == 1)
    {
        voice.SetSpatial(data.m_MinDistance, data.m_MaxDistance);
        voice.SetPosition(instance.m_Attributes.position, instance.m_Attributes.velocity);
    }
    else
        voice.SetCentred(instance.m_Clip->m_Channels == 2);
}

Result SystemImpl::Start(InstanceState& instance)
{
    EndPlayback(instance);
    const EventData& data = instance.m_Description->m_Data;
    auto vary = [this](float value, float variation) {
        variation = std::fabs(Finite(variation, 0.0f));
        if (variation == 0.0f)
            return Finite(value, 1.0f);
        return Finite(value, 1.0f) + std::uniform_real_distribution<float>(-variation, variation)(m_Random);
    };
    instance.m_StartVolume = std::max(0.0f, vary(data.m_Volume, data.m_VolumeVariation));
    instance.m_StartPitch = std::max(0.01f, vary(data.m_Pitch, data.m_PitchVariation));
    instance.m_Clip = PickClip(instance);
    instance.m_VirtualSeconds = 0.0;
    instance.m_Playing = instance.m_Clip != nullptr;
    if (!instance.m_Playing)
        return OK;
    instance.m_Voice = TakeVoice();
    if (instance.m_Voice < 0)
        return OK;
    Platform::AudioVoice& voice = *m_Voices[static_cast<std::size_t>(instance.m_Voice)];
    voice.Reset();
    ApplyPlacement(instance);
    ApplyMix(instance);
    if (data.m_Stream)
    {
        instance.m_Stream = std::make_unique<Platform::AudioStream>();
        std::string error;
        if (!instance.m_Stream->Start(instance.m_Clip->m_Path, voice, data.m_Loop, error))
        {
            // The file went away since the bank loaded: play on virtually.
            instance.m_Stream.reset();
            m_VoiceBusy[static_cast<std::size_t>(instance.m_Voice)] = false;
            instance.m_Voice = -1;
            return OK;
        }
    }
    else
    {
        voice.SetBuffer(instance.m_Clip->m_Buffer.GetId());
        voice.SetLooping(data.m_Loop);
    }
    if (instance.m_Paused)
        voice.Pause();
    else
        voice.Play();
    return OK;
}

void SystemImpl::EndPlayback(InstanceState& instance)
{
    if (instance.m_Voice >= 0)
    {
        Platform::AudioVoice& voice = *m_Voices[static_cast<std::size_t>(instance.m_Voice)];
        if (instance.m_Stream)
            instance.m_Stream->Stop(voice);
        voice.Reset();
        m_VoiceBusy[static_cast<std::size_t>(instance.m_Voice)] = false;
    }
    instance.m_Stream.reset();
    instance.m_Voice = -1;
    instance.m_Playing = false;
}

void SystemImpl::PollEnd(InstanceState& instance)
{
    if (!instance.m_Playing || instance.m_Stream)
        return;
    if (instance.m_Voice >= 0)
    {
        if (m_Voices[static_cast<std::size_t>(instance.m_Voice)]->GetState() == Platform::AudioVoice::State::Stopped)
            EndPlayback(instance);
        return;
    }
    if (!instance.m_Clip || instance.m_VirtualSeconds >= instance.m_Clip->m_Seconds)
    {
        if (instance.m_Description->m_Data.m_Loop && instance.m_Clip && instance.m_Clip->m_Seconds > 0.0)
            instance.m_VirtualSeconds = std::fmod(instance.m_VirtualSeconds, instance.m_Clip->m_Seconds);
        else
            EndPlayback(instance);
    }
}

void SystemImpl::AdvanceVirtual(double seconds)
{
    for (auto& instance : m_Instances)
        if (instance->m_Playing && !instance->m_Paused && instance->m_Voice < 0)
            instance->m_VirtualSeconds += seconds * instance->m_StartPitch * ParameterFactor(*instance, ParameterTarget::Pitch);
}

Result SystemImpl::Stop(InstanceState& instance)
{
    EndPlayback(instance);
    return OK;
}

Result SystemImpl::Release(InstanceState& instance)
{
    instance.m_Released = true;
    if (instance.m_Handle)
        instance.m_Handle->m_Data = nullptr;
    instance.m_Handle = nullptr;
    for (auto& parameter : instance.m_Parameters)
        if (parameter->m_Handle)
        {
            parameter->m_Handle->m_Data = nullptr;
            parameter->m_Handle = nullptr;
        }
    return OK;
}

void SystemImpl::FreeInstance(InstanceState& instance)
{
    Release(instance);
    EndPlayback(instance);
}

Result SystemImpl::SetVolume(InstanceState& instance, float volume)
{
    if (!std::isfinite(volume) || volume < 0.0f)
        return ERR_INVALID_PARAM;
    instance.m_Volume = volume;
    ApplyMix(instance);
    return OK;
}

Result SystemImpl::SetPaused(InstanceState& instance, bool paused)
{
    instance.m_Paused = paused;
    if (instance.m_Voice >= 0 && instance.m_Playing)
    {
        Platform::AudioVoice& voice = *m_Voices[static_cast<std::size_t>(instance.m_Voice)];
        if (paused)
            voice.Pause();
        else
            voice.Play();
    }
    return OK;
}

PlaybackState SystemImpl::GetState(InstanceState& instance)
{
    PollEnd(instance);
    return instance.m_Playing ? PLAYBACK_PLAYING : PLAYBACK_STOPPED;
}

Result SystemImpl::GetParameter(InstanceState& instance, const char* name, ParameterInstance** parameter)
{
    if (parameter)
        *parameter = nullptr;
    if (!name || !parameter)
        return ERR_INVALID_PARAM;
    for (auto& state : instance.m_Parameters)
        if (state->m_Data->m_Name == name)
        {
            if (!state->m_Handle)
            {
                state->m_Handle = new ParameterInstance();
                state->m_Handle->m_Data = state.get();
                m_ParameterHandles.push_back(state->m_Handle);
            }
            *parameter = state->m_Handle;
            return OK;
        }
    return ERR_EVENT_NOTFOUND;
}

Result SystemImpl::Set3D(InstanceState& instance, const Attributes3D& attributes)
{
    instance.m_Attributes = attributes;
    ApplyPlacement(instance);
    return OK;
}

Result SystemImpl::SetParameterValue(ParameterState& parameter, float value)
{
    if (std::isnan(value))
        return ERR_INVALID_PARAM;
    const ParameterData& data = *parameter.m_Data;
    parameter.m_Value = std::clamp(value, data.m_Minimum, std::max(data.m_Minimum, data.m_Maximum));
    ApplyMix(*parameter.m_Instance);
    return OK;
}
}
