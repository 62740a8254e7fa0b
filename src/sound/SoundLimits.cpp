#include "sound/SoundLimits.h"

#include "engine/EventManager.h"

#include <unordered_map>

namespace
{
// FNV-1a over the name's bytes: offset basis 0x811c9dc5, prime 16777619.
struct NameHash
{
    std::size_t operator()(const std::string& name) const { return Engine::HashName(name); }
};

std::unordered_map<std::string, SoundLimits::Record, NameHash>& Table()
{
    static std::unordered_map<std::string, SoundLimits::Record, NameHash> table;
    return table;
}
}

namespace SoundLimits
{
void Set(const std::string& name, std::int32_t limit)
{
    Table()[name] = Record{limit, 0};
}

Record* Find(const std::string& name)
{
    auto found = Table().find(name);
    return found == Table().end() ? nullptr : &found->second;
}

void Clear()
{
    Table().clear();
}
}
