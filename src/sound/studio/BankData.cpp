// Registration and reading of the bank file's events.
#include "sound/studio/BankData.h"

#include "engine/Log.h"
#include "utilities/Meta/Registration.h"
#include "utilities/Serialization/Serializer.h"

#include <limits>

namespace
{
const Meta::Registrar kClipOrderRegistration([] {
    Meta::RegisterEnum<Studio::ClipOrder>("SoundClipOrder", "",
                                          {{"Random", static_cast<int>(Studio::ClipOrder::Random)},
                                           {"Sequential", static_cast<int>(Studio::ClipOrder::Sequential)}});
});
const Meta::Registrar kTargetRegistration([] {
    Meta::RegisterEnum<Studio::ParameterTarget>("SoundParameterTarget", "",
                                                {{"Volume", static_cast<int>(Studio::ParameterTarget::Volume)},
                                                 {"Pitch", static_cast<int>(Studio::ParameterTarget::Pitch)},
                                                 {"Clip", static_cast<int>(Studio::ParameterTarget::Clip)}});
});
}

META_REGISTER_NS(Studio, ParameterData)
{
    DESCRIPTION("A named parameter of a sound event: its range and what it drives.");
    MEMBER_FLAGS(m_Name, true, false, "The name the game asks for");
    MEMBER_FLAGS(m_Minimum, true, false, "Lowest value");
    MEMBER_FLAGS(m_Maximum, true, false, "Highest value");
    MEMBER_FLAGS(m_Default, true, false, "Value of a new instance");
    MEMBER_FLAGS(m_Drives, true, false, "Volume, Pitch or Clip");
    MEMBER_FLAGS(m_From, true, false, "Factor at Minimum");
    MEMBER_FLAGS(m_To, true, false, "Factor at Maximum");
}

META_REGISTER_NS(Studio, EventData)
{
    DESCRIPTION("A sound event of a bank file: its clips and how they play.");
    MEMBER_FLAGS(m_Path, true, false, "Full path, event:/Name");
    MEMBER_FLAGS(m_Clips, true, false, "Clip files, relative to the data directory");
    MEMBER_FLAGS(m_Order, true, false, "Random or Sequential");
    MEMBER_FLAGS(m_Volume, true, false, "Loudness factor");
    MEMBER_FLAGS(m_VolumeVariation, true, false, "Largest random change of the volume at a start");
    MEMBER_FLAGS(m_Pitch, true, false, "Playback speed factor");
    MEMBER_FLAGS(m_PitchVariation, true, false, "Largest random change of the pitch at a start");
    MEMBER_FLAGS(m_Loop, true, false, "Repeats until stopped");
    MEMBER_FLAGS(m_Stream, true, false, "Read from disk while playing");
    MEMBER_FLAGS(m_Spatial, true, false, "A mono clip is placed in the world");
    MEMBER_FLAGS(m_MinDistance, true, false, "Heard full up to this distance");
    MEMBER_FLAGS(m_MaxDistance, true, false, "Fades no further past this distance");
    MEMBER_FLAGS(m_Parameters, true, false, "The named parameters");
}

namespace Studio
{
namespace
{
constexpr const char* kEventName = "Event";
}

bool ReadBankEvents(Util::Serializer& reader, std::vector<EventData>& events)
{
    std::string token;
    while (reader.m_Stream >> token)
    {
        if (token.rfind("//", 0) == 0)
        {
            reader.m_Stream.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
            continue;
        }
        if (token != kEventName)
        {
            ERROR_REPORT("A bank holds only Event blocks; skipped: " + token + "\nFile:  " + reader.m_FileName);
            reader.SkipValue();
            if (reader.Failed() && !reader.m_Stream.eof())
                return false;
            continue;
        }
        EventData event;
        if (!reader.ReadObject(Meta::Get<EventData>(), &event))
            return !reader.Failed() || reader.m_Stream.eof();
        if (reader.Failed() && !reader.m_Stream.eof())
            return false;
        events.push_back(std::move(event));
    }
    return true;
}

void WriteBankEvents(Util::Serializer& writer, const std::vector<EventData>& events)
{
    for (const EventData& event : events)
    {
        writer.m_Stream << kEventName;
        writer.WriteObjectBlock(Meta::Get<EventData>(), &event);
        writer.m_Stream << '\n';
    }
}
}
