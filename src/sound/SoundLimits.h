// SoundLimits: the most instances of one effect that may play at a time, per
// event name, for the whole process. A name without a record has no limit.
//
//   SoundInstance::AddMaxSoundLimit("Effects/Shot", 6);   // through the script interface
//   SoundLimits::Record* record = SoundLimits::Find("Effects/Shot");
//   if (record && record->m_Count >= record->m_Limit) ... refuse the effect
//
// The table is keyed by the name and hashed by FNV-1a on its bytes.
#pragma once

#include <cstdint>
#include <string>

namespace SoundLimits
{
// One limited event: its limit and how many of it run now.
struct Record
{
    // The most instances of the event at a time.
    std::int32_t m_Limit = 0;
    // Instances running now.
    std::int32_t m_Count = 0;
};

// Sets the name's limit, making the record if there is none, and its count to 0.
void Set(const std::string& name, std::int32_t limit);
// The name's record, or null when the name has no limit.
Record* Find(const std::string& name);
// Removes every record (tests).
void Clear();
}
