// SoundSystem: the sound banks and the mixer. Not built yet: its update does
// nothing. It already keeps the global volume settings, which the settings file
// saves: "MusicVolume", "EffectsVolume", "MusicMute" and "EffectsMute".
#pragma once

#include "engine/System.h"

class SoundSystem : public System
{
public:
    // The one SoundSystem; making it adds its settings.
    static SoundSystem& Get();

    void Update(float dt) override {}
    Meta::Data* GetMeta() const override;

    // Sets the music volume, cut to [0, 1].
    static void SetMusicVolume(float volume);
    // Sets the effects volume, cut to [0, 1].
    static void SetEffectsVolume(float volume);
    // Mutes or unmutes music.
    static void SetMusicMute(bool mute);
    // Mutes or unmutes effects.
    static void SetEffectsMute(bool mute);
    // The music volume, 0.4 by default.
    static float GetMusicVolume();
    // The effects volume, 0.6 by default.
    static float GetEffectsVolume();
    // True while music is muted.
    static bool GetMusicMute();
    // True while effects are muted.
    static bool GetEffectsMute();

private:
    SoundSystem();
};
