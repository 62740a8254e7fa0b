#include "utilities/lua/LuaStateHandle.h"

#include "utilities/lua/LuaSystem.h"

#include <mutex>
#include <unordered_map>

namespace
{
// Open states of LuaSystems with their serials, guarded by one lock.
struct OpenStates
{
    std::mutex mutex;
    std::unordered_map<lua_State*, std::uint64_t> serials;
    std::uint64_t next = 1;
};

OpenStates& Open()
{
    static OpenStates* states = new OpenStates();
    return *states;
}
}

LuaStateHandle LuaStateHandle::Of(lua_State* L)
{
    if (!L)
        return {};
    if (LuaSystem* owner = LuaSystem::FindOwner(L); owner && owner->m_State)
    {
        OpenStates& open = Open();
        std::lock_guard<std::mutex> lock(open.mutex);
        auto found = open.serials.find(owner->m_State);
        return {owner->m_State, found == open.serials.end() ? 0 : found->second};
    }
    return {L, 0};
}

std::uint64_t LuaStateHandle::Opened(lua_State* L)
{
    OpenStates& open = Open();
    std::lock_guard<std::mutex> lock(open.mutex);
    const std::uint64_t serial = open.next++;
    open.serials[L] = serial;
    return serial;
}

void LuaStateHandle::Closed(lua_State* L)
{
    OpenStates& open = Open();
    std::lock_guard<std::mutex> lock(open.mutex);
    open.serials.erase(L);
}

bool LuaStateHandle::IsOpen() const
{
    if (!state)
        return false;
    if (serial == 0)
        return true;
    OpenStates& open = Open();
    std::lock_guard<std::mutex> lock(open.mutex);
    auto found = open.serials.find(state);
    return found != open.serials.end() && found->second == serial;
}
