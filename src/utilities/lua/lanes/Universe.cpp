#include "utilities/lua/lanes/Universe.h"

#include "utilities/lua/lanes/Lane.h"
#include "utilities/lua/lanes/Linda.h"

#include <algorithm>
#include <cstdlib>

namespace
{
// Their addresses are the registry keys of the module's entries in every state.
const char kUniverseKey = 0;
const char kLoaderKey = 0;
// Its address keys the keeper's table of linda slots.
const char kLindaSlotsKey = 0;

// A lane still running at exit is asked to cancel and given this long to end.
constexpr double kExitWait = 1.0;

void CancelLanesAtExit()
{
    Universe::Process().CancelAllLanes(kExitWait);
}
}

Universe& Universe::Process()
{
    // Never freed: lanes may still run while static objects are destroyed.
    static Universe* universe = [] {
        auto* made = new Universe();
        std::atexit(CancelLanesAtExit);
        return made;
    }();
    return *universe;
}

Universe::Universe()
{
    m_Keeper = luaL_newstate();
    luaL_openlibs(m_Keeper);
    lua_pushlightuserdata(m_Keeper, const_cast<char*>(&kLindaSlotsKey));
    lua_newtable(m_Keeper);
    lua_rawset(m_Keeper, LUA_REGISTRYINDEX);
}

lua_State* Universe::Keeper()
{
    FreeRetiredLindas();
    return m_Keeper;
}

void Universe::PushLindaSlots(Lanes::Linda* linda)
{
    lua_State* K = m_Keeper;
    lua_pushlightuserdata(K, const_cast<char*>(&kLindaSlotsKey));
    lua_rawget(K, LUA_REGISTRYINDEX);
    lua_pushlightuserdata(K, linda);
    lua_rawget(K, -2);
    if (lua_isnil(K, -1))
    {
        lua_pop(K, 1);
        lua_newtable(K);
        lua_pushlightuserdata(K, linda);
        lua_pushvalue(K, -2);
        lua_rawset(K, -4);
    }
    lua_remove(K, -2);
}

void Universe::AdoptLinda(Lanes::Linda* linda)
{
    std::lock_guard lock(m_LindasMutex);
    m_Lindas.insert(linda);
}

void Universe::RetireLinda(Lanes::Linda* linda)
{
    std::lock_guard lock(m_LindasMutex);
    m_Retired.push_back(linda);
}

void Universe::FreeRetiredLindas()
{
    std::vector<Lanes::Linda*> retired;
    {
        std::lock_guard lock(m_LindasMutex);
        retired.swap(m_Retired);
        for (Lanes::Linda* linda : retired)
            m_Lindas.erase(linda);
    }
    if (retired.empty())
        return;
    lua_State* K = m_Keeper;
    lua_pushlightuserdata(K, const_cast<char*>(&kLindaSlotsKey));
    lua_rawget(K, LUA_REGISTRYINDEX);
    for (Lanes::Linda* linda : retired)
    {
        lua_pushlightuserdata(K, linda);
        lua_pushnil(K);
        lua_rawset(K, -3);
        delete linda;
    }
    lua_pop(K, 1);
}

void Universe::AddLane(const std::shared_ptr<Lanes::Lane>& lane)
{
    std::lock_guard lock(m_LanesMutex);
    m_Lanes.push_back(lane);
}

void Universe::RemoveLane(const Lanes::Lane* lane)
{
    std::lock_guard lock(m_LanesMutex);
    std::erase_if(m_Lanes, [lane](const std::weak_ptr<Lanes::Lane>& entry) {
        auto held = entry.lock();
        return !held || held.get() == lane;
    });
}

void Universe::CancelAllLanes(double seconds)
{
    std::vector<std::shared_ptr<Lanes::Lane>> running;
    {
        std::lock_guard lock(m_LanesMutex);
        for (const auto& entry : m_Lanes)
            if (auto lane = entry.lock())
                running.push_back(std::move(lane));
    }
    for (const auto& lane : running)
        lane->RequestCancel();
    Lanes::Clock::time_point deadline = Lanes::DeadlineIn(seconds);
    for (const auto& lane : running)
        lane->WaitEnded(deadline);
}

namespace Lanes
{
namespace
{
thread_local bool t_HoldsKeeper = false;
}

KeeperLock::KeeperLock(Universe& U) : m_Lock(U.KeeperMutex())
{
    t_HoldsKeeper = true;
}

KeeperLock::~KeeperLock()
{
    t_HoldsKeeper = false;
}

bool KeeperLock::HeldHere()
{
    return t_HoldsKeeper;
}

void InstallUniverse(lua_State* L, Universe* U, lua_CFunction loader)
{
    lua_pushlightuserdata(L, const_cast<char*>(&kUniverseKey));
    lua_pushlightuserdata(L, U);
    lua_rawset(L, LUA_REGISTRYINDEX);
    lua_pushlightuserdata(L, const_cast<char*>(&kLoaderKey));
    if (loader)
        lua_pushcfunction(L, loader);
    else
        lua_pushnil(L);
    lua_rawset(L, LUA_REGISTRYINDEX);
}

lua_CFunction InstalledLoader(lua_State* L)
{
    lua_pushlightuserdata(L, const_cast<char*>(&kLoaderKey));
    lua_rawget(L, LUA_REGISTRYINDEX);
    lua_CFunction loader = lua_tocfunction(L, -1);
    lua_pop(L, 1);
    return loader;
}
}

Universe* get_universe(lua_State* L)
{
    if (!L)
        return nullptr;
    lua_pushlightuserdata(L, const_cast<char*>(&kUniverseKey));
    lua_rawget(L, LUA_REGISTRYINDEX);
    auto* U = static_cast<Universe*>(lua_touserdata(L, -1));
    lua_pop(L, 1);
    return U;
}
