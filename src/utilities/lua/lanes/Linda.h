// Linda: a message box shared by lanes. Its contents live in the keeper (see Universe); the object
// itself holds a reference count, the condition that wakes its readers and an optional name. Each
// Lua state that holds a linda holds it as one full userdata (the same one each time the linda
// arrives there), and each such userdata counts one reference; the last one collected retires it.
#pragma once

#include <lua.hpp>

#include <atomic>
#include <condition_variable>
#include <string>

namespace Lanes
{
class Linda
{
public:
    explicit Linda(std::string name) : m_Name(std::move(name)) {}
    Linda(const Linda&) = delete;
    Linda& operator=(const Linda&) = delete;

    // Takes one reference.
    void AddRef() { m_Refs.fetch_add(1, std::memory_order_relaxed); }
    // Drops one reference; the last one hands the linda to the universe to be freed.
    void Release();

    // The name given to lanes.linda(name), or empty.
    const std::string& Name() const { return m_Name; }
    // Notified whenever something is written; waited on with the keeper mutex.
    std::condition_variable& Changed() { return m_Changed; }

private:
    std::atomic<int> m_Refs{0};
    std::condition_variable m_Changed;
    std::string m_Name;
};

// Pushes the linda's userdata in L (the one L already has, or a new one that takes a reference).
void PushLinda(lua_State* L, Linda* linda);
// The linda at `index` of L, or null when the value there is not one.
Linda* ToLinda(lua_State* L, int index);
// The linda at `index`; raises a Lua error naming `where` when the value is not one.
Linda* CheckLinda(lua_State* L, int index, const char* where);

// lanes.core.linda([name]): pushes a new linda.
int NewLinda(lua_State* L);
// The linda's methods (send, receive, set, get, count), for the module's list of its own functions.
const luaL_Reg* LindaMethods();
}
