// The layer's inside: what the handles of Studio.h point to. SystemImpl owns
// the output, the voices, the decoded clips, the banks with their descriptions
// and every instance; the handle classes forward their calls to it.
//
// An instance either holds a voice (heard) or plays virtually: with every voice
// taken, or with no mixer at all, an instance keeps its own clock and ends when
// its clip would have ended. Handles are never freed before the system: a
// released handle has its data cleared, so that isValid and every later call
// answer instead of touching freed memory.
#pragma once

#include "platform/AudioBuffer.h"
#include "platform/AudioOutput.h"
#include "platform/AudioStream.h"
#include "platform/AudioVoice.h"
#include "sound/studio/BankData.h"
#include "sound/studio/Studio.h"

#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace Studio
{
// One clip file, checked (and for a whole clip decoded) when its bank loads.
struct ClipState
{
    // Full path of the file.
    std::string m_Path;
    // Decoded sound of a clip loaded whole (no mixer: empty).
    Platform::AudioBuffer m_Buffer;
    // Channels of the file.
    int m_Channels = 0;
    // Length in seconds.
    double m_Seconds = 0.0;
};

// One event description: the bank's data and its usable clips.
struct DescriptionState
{
    // The event as the bank gives it.
    EventData m_Data;
    // The clips that loaded, in the bank's order.
    std::vector<ClipState*> m_Clips;
    // Last clip started (Random never repeats it).
    int m_LastClip = -1;
    // The handle.
    EventDescription* m_Handle = nullptr;
    // The system that loaded it.
    SystemImpl* m_System = nullptr;
};

// One bank: its path and its descriptions.
struct BankState
{
    // Path the bank was loaded from.
    std::string m_Path;
    // Its events in file order.
    std::vector<EventDescription*> m_Events;
    // The handle.
    Bank* m_Handle = nullptr;
};

struct InstanceState;

// One parameter of one instance.
struct ParameterState
{
    // The instance it belongs to.
    InstanceState* m_Instance = nullptr;
    // Its description in the bank.
    const ParameterData* m_Data = nullptr;
    // Current value, inside the range.
    float m_Value = 0.0f;
    // The handle.
    ParameterInstance* m_Handle = nullptr;
};

// One instance of an event.
struct InstanceState
{
    // The system.
    SystemImpl* m_System = nullptr;
    // The event.
    DescriptionState* m_Description = nullptr;
    // The handle (null once released).
    EventInstance* m_Handle = nullptr;
    // Parameters, one per parameter of the event.
    std::vector<std::unique_ptr<ParameterState>> m_Parameters;
    // setVolume's factor.
    float m_Volume = 1.0f;
    // The event volume with its variation drawn at start.
    float m_StartVolume = 1.0f;
    // The event pitch with its variation drawn at start.
    float m_StartPitch = 1.0f;
    // Playing (or paused while playing).
    bool m_Playing = false;
    // Paused.
    bool m_Paused = false;
    // Released: freed once stopped.
    bool m_Released = false;
    // The clip playing.
    ClipState* m_Clip = nullptr;
    // The voice, or -1 when playing virtually.
    int m_Voice = -1;
    // The stream of a streamed clip on a voice.
    std::unique_ptr<Platform::AudioStream> m_Stream;
    // Seconds of clip played, for a virtual instance.
    double m_VirtualSeconds = 0.0;
    // Where a spatial instance is.
    Attributes3D m_Attributes;
};

class SystemImpl
{
public:
    SystemImpl();
    ~SystemImpl();

    // System calls.
    Result Initialize(int maxChannels, unsigned studioFlags);
    Result LoadBank(const char* path, Bank** bank);
    Result Update();
    Result GetEvent(const char* path, EventDescription** description);
    Result SetListener(const Attributes3D& attributes);
    Result Render(float* samples, int frames);
    int GetSampleRate() const;
    bool IsSilent() const;

    // Description calls.
    Result CreateInstance(DescriptionState& description, EventInstance** instance);

    // Instance calls.
    Result Start(InstanceState& instance);
    Result Stop(InstanceState& instance);
    Result Release(InstanceState& instance);
    Result SetVolume(InstanceState& instance, float volume);
    Result SetPaused(InstanceState& instance, bool paused);
    PlaybackState GetState(InstanceState& instance);
    Result GetParameter(InstanceState& instance, const char* name, ParameterInstance** parameter);
    Result Set3D(InstanceState& instance, const Attributes3D& attributes);
    Result SetParameterValue(ParameterState& parameter, float value);

private:
    ClipState* LoadClip(const std::string& path, bool stream);
    ClipState* PickClip(InstanceState& instance);
    std::string SeamClipPath(InstanceState& instance);
    void ApplyMix(InstanceState& instance);
    void ApplyPlacement(InstanceState& instance);
    void EndPlayback(InstanceState& instance);
    void PollEnd(InstanceState& instance);
    void AdvanceVirtual(double seconds);
    int TakeVoice();
    void FreeInstance(InstanceState& instance);

    Platform::AudioOutput m_Output;
    bool m_Initialized = false;
    bool m_Loopback = false;
    int m_MaxChannels = 0;
    std::vector<std::unique_ptr<Platform::AudioVoice>> m_Voices;
    std::vector<bool> m_VoiceBusy;
    std::map<std::string, std::unique_ptr<ClipState>> m_Clips;
    std::set<std::string> m_ReportedClips;
    std::vector<std::unique_ptr<BankState>> m_Banks;
    std::vector<std::unique_ptr<DescriptionState>> m_Descriptions;
    std::map<std::string, DescriptionState*> m_EventsByPath;
    std::vector<std::unique_ptr<InstanceState>> m_Instances;
    // Every handle made, freed with the system.
    std::vector<Bank*> m_BankHandles;
    std::vector<EventDescription*> m_DescriptionHandles;
    std::vector<EventInstance*> m_InstanceHandles;
    std::vector<ParameterInstance*> m_ParameterHandles;
    std::mt19937 m_Random{0x5eedu};
    // Wall clock of the last update, for the device and silent outputs.
    double m_LastUpdateSeconds = -1.0;
};
}
