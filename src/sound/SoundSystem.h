// SoundSystem: the engine system that owns the sound event layer (studio/Studio.h),
// loads the game's banks and keeps the table from event name to event description.
//
// At start it opens the layer with 32 voices and loads, from "Banks/" under the
// data directory, "Master Bank.bank", "Master Bank.strings.bank", "Music.bank"
// and "Effects.bank"; the events of the last two are entered in the table under
// their paths without "event:/" ("event:/Effects/Hit" is played as "Effects/Hit").
// Each frame it updates the layer. Scripts don't talk to it: they talk to the
// SoundSpace of a space, which makes its instances here (CreateInstance). A
// saved bank file is loaded again while the game runs (WatchBanks).
//
// It also keeps the global volume settings, saved in the settings file as
// "MusicVolume", "EffectsVolume", "MusicMute" and "EffectsMute"; changing one
// applies it at once to every running sound of every SoundSpace. The start-up
// option --FMOD asks the layer for its live-update connection (accepted; the
// layer has nothing to connect to).
#pragma once

#include "engine/System.h"
#include "sound/studio/Studio.h"

#include <map>
#include <string>
#include <vector>

class SoundInstance;
class SoundSpace;

class SoundSystem : public System
{
public:
    // One entry of the descriptions table.
    struct Description
    {
        // The layer's event description.
        Studio::EventDescription* m_Handle = nullptr;
    };

    // The one SoundSystem; making it adds its settings and the --FMOD option.
    static SoundSystem& Get();

    // Opens the layer and loads the banks.
    void Initialize() override;
    // Updates the layer once a frame.
    void Update(float dt) override;
    Meta::Data* GetMeta() const override;
    // Stops watching the banks, deletes every space's sounds, frees the table and releases the
    // layer; Initialize may run again.
    void Shutdown();

    // Adds the start-up option --FMOD to the option registry (the constructor does).
    static void AddStartupOption();
    // Watches the four bank files: a change reloads the banks (ReloadBanks).
    void WatchBanks();
    // Loads the banks again: every space's sounds end, the layer reopens, and the music tracks
    // that were running start again from the new banks.
    void ReloadBanks();
    // Makes a stopped instance of the named event for `space`, or null when the name is no event.
    SoundInstance* CreateInstance(const std::string& name, SoundSpace* space);
    // Enters a space, so that volume changes reach its sounds.
    void AddSpace(SoundSpace* space);
    // Takes a space out again.
    void RemoveSpace(SoundSpace* space);

    // Sets the music volume, cut to [0, 1], and applies it to every running sound.
    static void SetMusicVolume(float volume);
    // Sets the effects volume, cut to [0, 1], and applies it to every running sound.
    static void SetEffectsVolume(float volume);
    // Mutes or unmutes music, at once.
    static void SetMusicMute(bool mute);
    // Mutes or unmutes effects, at once; while muted no effect starts.
    static void SetEffectsMute(bool mute);
    // The music volume, 0.4 by default.
    static float GetMusicVolume();
    // The effects volume, 0.6 by default.
    static float GetEffectsVolume();
    // True while music is muted.
    static bool GetMusicMute();
    // True while effects are muted.
    static bool GetEffectsMute();

    // The layer's initialisation flags: 0, or Studio::INIT_LIVEUPDATE after --FMOD.
    unsigned m_InitFlags = 0;
    // The layer; null before Initialize and after Shutdown.
    Studio::System* m_Studio = nullptr;
    // The last bank loaded.
    Studio::Bank* m_Bank = nullptr;
    // The strings bank.
    Studio::Bank* m_StringsBank = nullptr;
    // Event descriptions by path without "event:/"; a null entry marks a name known to be no event.
    std::map<std::string, Description*> m_Descriptions;
    // Every SoundSpace, for volume changes.
    std::vector<SoundSpace*> m_Spaces;
    // True while the bank files are watched.
    bool m_Watching = false;

private:
    SoundSystem();
    // The bank files in load order.
    static const char* const kBankFiles[4];
    // Loads one bank under "Banks/" of the data directory; null if it did not load.
    Studio::Bank* LoadBank(const std::string& fileName);
    // Deletes every space's sounds, frees the table and releases the layer.
    void CloseLayer();
    // Enters the bank's events in the table.
    void EnumerateEvents(Studio::Bank* bank);
    // Applies the current volumes to every space's sounds.
    static void ApplyVolumes();
};
