// The handle classes of Studio.h: each call checks its handle and forwards to SystemImpl.
#include "sound/studio/StudioState.h"

#include <cstring>

namespace Studio
{
namespace
{
BankState* BankOf(const void* data)
{
    return static_cast<BankState*>(const_cast<void*>(data));
}
DescriptionState* DescriptionOf(const void* data)
{
    return static_cast<DescriptionState*>(const_cast<void*>(data));
}
InstanceState* InstanceOf(const void* data)
{
    return static_cast<InstanceState*>(const_cast<void*>(data));
}
ParameterState* ParameterOf(const void* data)
{
    return static_cast<ParameterState*>(const_cast<void*>(data));
}
}

Result Bank::getEventCount(int* count) const
{
    if (!count)
        return ERR_INVALID_PARAM;
    *count = 0;
    if (!m_Data)
        return ERR_INVALID_HANDLE;
    *count = static_cast<int>(BankOf(m_Data)->m_Events.size());
    return OK;
}

Result Bank::getEventList(EventDescription** array, int capacity, int* count) const
{
    if (count)
        *count = 0;
    if (!m_Data)
        return ERR_INVALID_HANDLE;
    if (!array || capacity < 0)
        return ERR_INVALID_PARAM;
    const auto& events = BankOf(m_Data)->m_Events;
    int written = 0;
    for (; written < capacity && written < static_cast<int>(events.size()); ++written)
        array[written] = events[static_cast<std::size_t>(written)];
    if (count)
        *count = written;
    return OK;
}

Result EventDescription::getPath(char* path, int size, int* retrieved) const
{
    if (!m_Data)
        return ERR_INVALID_HANDLE;
    if (size < 0 || (path == nullptr && size > 0))
        return ERR_INVALID_PARAM;
    const std::string& full = DescriptionOf(m_Data)->m_Data.m_Path;
    const int needed = static_cast<int>(full.size()) + 1;
    if (retrieved)
        *retrieved = needed;
    if (!path)
        return OK;
    if (size == 0)
        return ERR_TRUNCATED;
    const int copied = needed <= size ? needed - 1 : size - 1;
    std::memcpy(path, full.data(), static_cast<std::size_t>(copied));
    path[copied] = '\0';
    return needed <= size ? OK : ERR_TRUNCATED;
}

Result EventDescription::createInstance(EventInstance** instance)
{
    if (!m_Data)
        return ERR_INVALID_HANDLE;
    DescriptionState* description = DescriptionOf(m_Data);
    return description->m_System->CreateInstance(*description, instance);
}

Result EventInstance::start()
{
    InstanceState* state = InstanceOf(m_Data);
    return state ? state->m_System->Start(*state) : ERR_INVALID_HANDLE;
}

Result EventInstance::stop(StopMode)
{
    InstanceState* state = InstanceOf(m_Data);
    return state ? state->m_System->Stop(*state) : ERR_INVALID_HANDLE;
}

Result EventInstance::release()
{
    InstanceState* state = InstanceOf(m_Data);
    return state ? state->m_System->Release(*state) : ERR_INVALID_HANDLE;
}

Result EventInstance::setVolume(float volume)
{
    InstanceState* state = InstanceOf(m_Data);
    return state ? state->m_System->SetVolume(*state, volume) : ERR_INVALID_HANDLE;
}

Result EventInstance::getVolume(float* volume) const
{
    if (!volume)
        return ERR_INVALID_PARAM;
    InstanceState* state = InstanceOf(m_Data);
    if (!state)
        return ERR_INVALID_HANDLE;
    *volume = state->m_Volume;
    return OK;
}

Result EventInstance::setPaused(bool paused)
{
    InstanceState* state = InstanceOf(m_Data);
    return state ? state->m_System->SetPaused(*state, paused) : ERR_INVALID_HANDLE;
}

Result EventInstance::getPaused(bool* paused) const
{
    if (!paused)
        return ERR_INVALID_PARAM;
    InstanceState* state = InstanceOf(m_Data);
    if (!state)
        return ERR_INVALID_HANDLE;
    *paused = state->m_Paused;
    return OK;
}

Result EventInstance::getPlaybackState(PlaybackState* playbackState) const
{
    if (!playbackState)
        return ERR_INVALID_PARAM;
    InstanceState* state = InstanceOf(m_Data);
    if (!state)
        return ERR_INVALID_HANDLE;
    *playbackState = state->m_System->GetState(*state);
    return OK;
}

bool EventInstance::isValid() const
{
    return m_Data != nullptr;
}

Result EventInstance::getParameter(const char* name, ParameterInstance** parameter)
{
    InstanceState* state = InstanceOf(m_Data);
    if (!state)
    {
        if (parameter)
            *parameter = nullptr;
        return ERR_INVALID_HANDLE;
    }
    return state->m_System->GetParameter(*state, name, parameter);
}

Result EventInstance::set3DAttributes(const Attributes3D& attributes)
{
    InstanceState* state = InstanceOf(m_Data);
    return state ? state->m_System->Set3D(*state, attributes) : ERR_INVALID_HANDLE;
}

Result ParameterInstance::setValue(float value)
{
    ParameterState* state = ParameterOf(m_Data);
    return state ? state->m_Instance->m_System->SetParameterValue(*state, value) : ERR_INVALID_HANDLE;
}

Result ParameterInstance::getValue(float* value) const
{
    if (!value)
        return ERR_INVALID_PARAM;
    ParameterState* state = ParameterOf(m_Data);
    if (!state)
        return ERR_INVALID_HANDLE;
    *value = state->m_Value;
    return OK;
}
}
