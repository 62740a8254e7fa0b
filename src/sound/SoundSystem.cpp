#include "sound/SoundSystem.h"

#include "engine/Settings.h"
#include "utilities/Meta/Registration.h"

#include <algorithm>

META_REGISTER(SoundSystem)
{
    DERIVE(System);
}

namespace
{
struct Volumes
{
    float music = 0.4f;
    float effects = 0.6f;
    bool musicMute = false;
    bool effectsMute = false;
};

Volumes& Global()
{
    static Volumes volumes;
    return volumes;
}
}

SoundSystem& SoundSystem::Get()
{
    static SoundSystem* system = new SoundSystem();
    return *system;
}

SoundSystem::SoundSystem()
{
    Settings::Add<float>("MusicVolume", &GetMusicVolume, &SetMusicVolume);
    Settings::Add<float>("EffectsVolume", &GetEffectsVolume, &SetEffectsVolume);
    Settings::Add<bool>("MusicMute", &GetMusicMute, &SetMusicMute);
    Settings::Add<bool>("EffectsMute", &GetEffectsMute, &SetEffectsMute);
}

Meta::Data* SoundSystem::GetMeta() const
{
    return Meta::Get<SoundSystem>();
}

void SoundSystem::SetMusicVolume(float volume) { Global().music = std::clamp(volume, 0.0f, 1.0f); }
void SoundSystem::SetEffectsVolume(float volume) { Global().effects = std::clamp(volume, 0.0f, 1.0f); }
void SoundSystem::SetMusicMute(bool mute) { Global().musicMute = mute; }
void SoundSystem::SetEffectsMute(bool mute) { Global().effectsMute = mute; }
float SoundSystem::GetMusicVolume() { return Global().music; }
float SoundSystem::GetEffectsVolume() { return Global().effects; }
bool SoundSystem::GetMusicMute() { return Global().musicMute; }
bool SoundSystem::GetEffectsMute() { return Global().effectsMute; }
