// The text of a bank file: a list of "Event" blocks in the engine's data
// format, each read into a Studio::EventData through the registry.
//
//   Event
//   {
//     Path "event:/Hit"
//     Clips { "Sounds/Effects/Hit1.ogg", "Sounds/Effects/Hit2.ogg" }
//     Order Random
//     Volume 0.9
//     Parameters { { Name "Intensity" Maximum 1 Drives Volume From 0.3 To 1 } }
//   }
//
// Every member may be left out; the defaults are those below. A bad file gives
// the reader's usual messages and the events read before the fault.
#pragma once

#include <string>
#include <vector>

namespace Util
{
class Serializer;
}

namespace Studio
{
// How an event picks its clip at each start.
enum class ClipOrder
{
    // At random, never the same clip twice running when there are several.
    Random,
    // One after the other, back to the first after the last.
    Sequential,
};

// What a parameter changes.
enum class ParameterTarget
{
    // The loudness, a factor from From (at Minimum) to To (at Maximum).
    Volume,
    // The playback speed, a factor from From to To.
    Pitch,
    // Which clip plays: the value rounded down, cut to the clip list.
    Clip,
};

// One named parameter of an event, as the bank gives it.
struct ParameterData
{
    // The name the game asks for.
    std::string m_Name;
    // Lowest value.
    float m_Minimum = 0.0f;
    // Highest value.
    float m_Maximum = 1.0f;
    // Value of a new instance.
    float m_Default = 0.0f;
    // What the value changes.
    ParameterTarget m_Drives = ParameterTarget::Volume;
    // Factor at Minimum (Volume and Pitch).
    float m_From = 1.0f;
    // Factor at Maximum (Volume and Pitch).
    float m_To = 1.0f;
};

// One event, as the bank gives it.
struct EventData
{
    // Full path, "event:/Hit".
    std::string m_Path;
    // Clip files, relative to the data directory.
    std::vector<std::string> m_Clips;
    // How the clip is picked.
    ClipOrder m_Order = ClipOrder::Random;
    // Loudness factor.
    float m_Volume = 1.0f;
    // Largest random change of the volume at each start, up or down.
    float m_VolumeVariation = 0.0f;
    // Playback speed factor.
    float m_Pitch = 1.0f;
    // Largest random change of the pitch at each start, up or down.
    float m_PitchVariation = 0.0f;
    // Whether the clip repeats until stopped.
    bool m_Loop = false;
    // Whether the clip is read from disk while it plays instead of loaded whole.
    bool m_Stream = false;
    // Whether a mono clip is placed in the world.
    bool m_Spatial = false;
    // Distance up to which a spatial event is heard full.
    float m_MinDistance = 1.0f;
    // Distance past which a spatial event fades no further.
    float m_MaxDistance = 100.0f;
    // The named parameters.
    std::vector<ParameterData> m_Parameters;
};

// Reads every "Event" block of a bank's text into `events` (appending); gives false when the
// reader stopped at a fault.
bool ReadBankEvents(Util::Serializer& reader, std::vector<EventData>& events);
// Writes `events` as bank text, as ReadBankEvents reads it.
void WriteBankEvents(Util::Serializer& writer, const std::vector<EventData>& events);
}
