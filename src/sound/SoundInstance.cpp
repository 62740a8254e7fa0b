#include "sound/SoundInstance.h"

#include "sound/SoundLimits.h"
#include "sound/SoundSystem.h"
#include "sound/ResultNote.h"
#include "utilities/Meta/Registration.h"

META_REGISTER(SoundInstance)
{
    DESCRIPTION("One running sound of a space: a music track or an effect.");
    HELP("Sets the most instances of the named effect that may play at a time: (name, limit).");
    METHOD(AddMaxSoundLimit);
}

SoundInstance::SoundInstance(Studio::EventDescription* description, const std::string& name, SoundSpace* space)
    : m_Name(name), m_Space(space)
{
    Sound::Note(description->createInstance(&m_Instance));
}

SoundInstance::~SoundInstance()
{
    if (m_Instance)
        Finish();
}

void SoundInstance::AddMaxSoundLimit(const std::string& name, int limit)
{
    SoundLimits::Set(name, limit);
}

void SoundInstance::Start()
{
    if (m_Instance)
        Sound::Note(m_Instance->start());
}

void SoundInstance::Stop()
{
    if (m_Instance)
        Sound::Note(m_Instance->stop(Studio::STOP_IMMEDIATE));
}

void SoundInstance::Finish()
{
    if (!m_Instance)
        return;
    Sound::Note(m_Instance->stop(Studio::STOP_IMMEDIATE));
    Sound::Note(m_Instance->release());
    m_Instance = nullptr;
    if (SoundLimits::Record* record = SoundLimits::Find(m_Name))
        --record->m_Count;
}

void SoundInstance::ApplyVolume()
{
    if (!m_Instance)
        return;
    float volume = 0.0f;
    if (m_IsEffect)
        volume = SoundSystem::GetEffectsMute() ? 0.0f : SoundSystem::GetEffectsVolume();
    else
        volume = SoundSystem::GetMusicMute() ? 0.0f : SoundSystem::GetMusicVolume();
    Sound::Note(m_Instance->setVolume(volume));
}

void SoundInstance::SetPaused(bool paused)
{
    if (m_Instance)
        Sound::Note(m_Instance->setPaused(paused));
}

Studio::PlaybackState SoundInstance::GetPlaybackState() const
{
    Studio::PlaybackState state = Studio::PLAYBACK_STOPPED;
    if (m_Instance)
        Sound::Note(m_Instance->getPlaybackState(&state));
    return state;
}

void SoundInstance::SetParameter(const std::string& parameter, float value)
{
    Studio::ParameterInstance* handle = nullptr;
    if (m_Instance && Sound::Note(m_Instance->getParameter(parameter.c_str(), &handle)) == Studio::OK)
        Sound::Note(handle->setValue(value));
}

float SoundInstance::GetParameter(const std::string& parameter) const
{
    Studio::ParameterInstance* handle = nullptr;
    float value = 0.0f;
    if (m_Instance && Sound::Note(m_Instance->getParameter(parameter.c_str(), &handle)) == Studio::OK)
        Sound::Note(handle->getValue(&value));
    return value;
}

void SoundInstance::SetPosition(float x, float y, float z)
{
    if (!m_Instance)
        return;
    Studio::Attributes3D attributes;
    attributes.position[0] = x;
    attributes.position[1] = y;
    attributes.position[2] = z;
    Sound::Note(m_Instance->set3DAttributes(attributes));
}
