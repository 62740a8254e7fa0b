// SoundSpace: a space's interface to the sound system, the one scripts use.
//
// It owns the running sounds of its space, of two kinds: music tracks, found by
// name, which start again whenever they end (so every track loops), and
// effects, found by an id that PlayEffect gives, which are deleted once they
// end. Ids start at 1 and grow for the space's whole life, shared by both kinds.
//
//   local sound = SpaceManager.Get():GetSpace(Space.Level).Sound
//   sound:PlayMusic("Music/Play", false)
//   local id = sound:PlayEffect("Effects/Hit")
//   sound:PlayEffect("Effects/Fuse", crawler.Id)   -- cut when the object is gone
//
// The space's "Pause" event pauses and resumes every sound. When the window
// loses focus, the next update pauses everything; when it comes back, sound
// resumes, except in the state "GameplayState", where the game resumes it
// through its own pause. Volumes and mutes are global (SoundSystem.h).
#pragma once

#include "engine/System.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>

class Event;
class SoundInstance;

class SoundSpace : public System
{
public:
    SoundSpace() = default;
    // Deletes every sound and leaves the sound system's list of spaces.
    ~SoundSpace() override;
    SoundSpace(const SoundSpace&) = delete;
    SoundSpace& operator=(const SoundSpace&) = delete;

    // Listens to its space's "Pause" and the global "WindowFocus", and joins the sound system.
    void Initialize() override;
    // Pauses after a focus loss, restarts ended music, ends finished effects and deletes them.
    void Update(float dt) override;
    Meta::Data* GetMeta() const override;

    // Starts the named music track; a track of that name already running is only restarted
    // (when `restart`), never doubled.
    void PlayMusic(const std::string& name, bool restart);
    // Starts the named effect; its id, or 0 when muted, silent, over its limit or no event.
    std::uint32_t PlayEffect(const std::string& name);
    // As PlayEffect, but the effect is cut once the object of `objectId` is gone.
    std::uint32_t PlayEffectOnObject(const std::string& name, std::uint32_t objectId);
    // Queues the effect for deletion at the end of the next update.
    void StopEffect(std::uint32_t id);
    // Deletes every effect at once.
    void RemoveAllSoundEffectInstances();
    // Stops and deletes the music track of that name.
    void RemoveLoopingTrack(const std::string& name);
    // Stops and deletes every music track.
    void RemoveAllLoopingTracks();
    // Flips the music's pause.
    void ToggleLoopTrackPause();
    // Sets the effects volume of every space, cut to [0, 1].
    static void SetEffectsVolume(float volume);
    // Sets the music volume of every space, cut to [0, 1].
    static void SetMusicVolume(float volume);
    // Mutes or unmutes effects everywhere.
    static void SetEffectsMute(bool mute);
    // Mutes or unmutes music everywhere.
    static void SetMusicMute(bool mute);
    // The effects volume.
    static float GetEffectsVolume();
    // The music volume.
    static float GetMusicVolume();
    // True while effects are muted.
    static bool GetEffectsMute();
    // True while music is muted.
    static bool GetMusicMute();
    // Pauses or resumes every effect.
    void PauseEffects(bool paused);
    // Pauses or resumes every music track, then every effect.
    void SetPauseAllInstances(bool paused);
    // Sets a parameter of the first music track of that name.
    void SetMusicInstanceParameter(const std::string& track, const std::string& parameter, float value);
    // A parameter of the first music track of that name, or 0 when there is none.
    float GetMusicInstanceParameter(const std::string& track, const std::string& parameter) const;
    // Sets a parameter of an effect; nothing for an unknown id.
    void SetEffectParameter(std::uint32_t id, const std::string& parameter, float value);
    // A parameter of an effect, or 0 for an unknown id.
    float GetEffectParameter(std::uint32_t id, const std::string& parameter) const;

    // Applies the global volumes to every sound of the space.
    void ApplyVolumes();
    // Deletes every sound of the space (the sound system's shutdown).
    void DeleteAllInstances();
    // Handler of the space's "Pause".
    void OnPause(Event* event);
    // Handler of "WindowFocus".
    void OnWindowFocus(Event* event);

    // The last id given; the next is one more.
    std::uint32_t m_NextId = 0;
    // True while the music is paused by the game.
    bool m_Paused = false;
    // False while the window has lost focus.
    bool m_Focused = true;
    // True once the update has paused everything after a focus loss.
    bool m_FocusPauseDone = false;
    // Running effects by id; owned.
    std::map<std::uint32_t, SoundInstance*> m_Effects;
    // Running music tracks by id; owned.
    std::map<std::uint32_t, SoundInstance*> m_Music;
    // Effects to delete at the end of the update.
    std::set<SoundInstance*> m_Finished;

private:
    // The first music track of that name, or null.
    SoundInstance* FindMusic(const std::string& name) const;
    // The effect of that id, or null.
    SoundInstance* FindEffect(std::uint32_t id) const;
    // Checks the effect settings and the limit; the new instance, or null.
    SoundInstance* MakeEffect(const std::string& name);
    // Pauses or resumes every music track.
    void PauseMusic(bool paused);
    // Cuts followed effects whose object is gone and moves their sound with the object.
    void FollowObject(SoundInstance* effect);
    // True once Initialize connected the handlers.
    bool m_Connected = false;
};
