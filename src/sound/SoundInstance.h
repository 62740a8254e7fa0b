// SoundInstance: one running sound of a SoundSpace, a music track or an effect,
// wrapping one instance of the sound event layer (sound/studio/Studio.h).
//
// A SoundSpace makes instances through SoundSystem::CreateInstance, keeps them
// in its music or effects map and deletes them. Deleting an instance that still
// holds its handle stops and releases it and gives back its place under the
// event's effect limit (SoundLimits.h); Finish does the same ahead of deletion.
//
// The class is in the registry for its one script function:
//   SoundInstance.AddMaxSoundLimit("Effects/Shot", 6)
#pragma once

#include "sound/studio/Studio.h"
#include "utilities/Meta/Data.h"

#include <cstdint>
#include <string>

class SoundSpace;

class SoundInstance
{
public:
    // Makes a stopped instance of `description`, played under `name`, for `space`.
    SoundInstance(Studio::EventDescription* description, const std::string& name, SoundSpace* space);
    // Stops and releases the handle if it is still held, and lowers the name's running count.
    ~SoundInstance();
    SoundInstance(const SoundInstance&) = delete;
    SoundInstance& operator=(const SoundInstance&) = delete;

    // Sets or makes the effect limit of `name`: at most `limit` at a time, none running now.
    static void AddMaxSoundLimit(const std::string& name, int limit);

    // Starts the sound (from its beginning).
    void Start();
    // Stops the sound at once.
    void Stop();
    // Stops and releases the handle and lowers the name's running count; the handle is null after.
    void Finish();
    // Sets the volume from the global settings: 0 when muted, else the music or effects volume.
    void ApplyVolume();
    // Pauses or resumes the sound.
    void SetPaused(bool paused);
    // What the sound is doing; stopped once the handle is gone.
    Studio::PlaybackState GetPlaybackState() const;
    // Sets a parameter of the event by name; nothing when the event has none of that name.
    void SetParameter(const std::string& parameter, float value);
    // A parameter's value, or 0 when the event has none of that name.
    float GetParameter(const std::string& parameter) const;
    // Places the sound in the world (3D events only).
    void SetPosition(float x, float y, float z);

    // The layer's instance; null after release.
    Studio::EventInstance* m_Instance = nullptr;
    // The id within its space.
    std::uint32_t m_Id = 0;
    // The name it was played under, the key of the descriptions map.
    std::string m_Name;
    // 1 for an effect, 0 for music.
    unsigned char m_IsEffect = 1;
    // 1 when the effect ends with its object.
    unsigned char m_FollowsObject = 0;
    // The object an effect follows.
    std::uint32_t m_ObjectId = 0;
    // The space that owns the instance.
    SoundSpace* m_Space = nullptr;
};
