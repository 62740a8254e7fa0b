// Universe: the state the lanes module shares across the whole process. It holds the keeper (a
// private Lua state, guarded by its mutex, that stores what lindas hold), the lindas waiting to be
// freed, and the list of running lanes. There is one, created on first use and never freed: a lane
// still running while the process ends touches only its own state and the universe.
//
// At exit (std::atexit) every running lane is asked to cancel and waited for, up to a second.
#pragma once

#include "utilities/lua/lanes/Lanes.h"

#include <lua.hpp>

#include <memory>
#include <mutex>
#include <unordered_set>
#include <vector>

namespace Lanes
{
class Lane;
class Linda;
}

class Universe
{
public:
    // The process's universe, created on first call.
    static Universe& Process();

    // The mutex that guards the keeper and every linda's contents; waits on lindas use it.
    std::mutex& KeeperMutex() { return m_KeeperMutex; }
    // The keeper state; only with KeeperMutex held. Frees the lindas retired since the last call first.
    lua_State* Keeper();
    // Pushes onto the keeper the table of one linda's slots (key -> queue), made when missing; under the mutex.
    void PushLindaSlots(Lanes::Linda* linda);

    // Notes a new linda, so that the universe knows every linda alive (the Lua states that hold
    // them keep their pointers in memory that leak checkers do not read).
    void AdoptLinda(Lanes::Linda* linda);
    // Called when the last Lua value of a linda is collected: the linda is freed at the next keeper use.
    void RetireLinda(Lanes::Linda* linda);

    // Notes a lane that was started, until it ends.
    void AddLane(const std::shared_ptr<Lanes::Lane>& lane);
    // Forgets a lane that ended.
    void RemoveLane(const Lanes::Lane* lane);
    // Asks every running lane to cancel and waits for them, at most `seconds` in all.
    void CancelAllLanes(double seconds);

private:
    Universe();
    void FreeRetiredLindas();

    std::mutex m_KeeperMutex;
    lua_State* m_Keeper = nullptr;

    std::mutex m_LindasMutex;
    std::unordered_set<Lanes::Linda*> m_Lindas;
    std::vector<Lanes::Linda*> m_Retired;

    std::mutex m_LanesMutex;
    std::vector<std::weak_ptr<Lanes::Lane>> m_Lanes;
};

namespace Lanes
{
// Holds the keeper mutex for a scope and marks the calling thread as its holder, so that a linda
// call made meanwhile on this thread (from a finalizer run by a collection inside a linda call) is
// refused instead of locking the mutex twice.
class KeeperLock
{
public:
    explicit KeeperLock(Universe& U);
    ~KeeperLock();
    KeeperLock(const KeeperLock&) = delete;
    KeeperLock& operator=(const KeeperLock&) = delete;

    // The held lock, for waiting on a linda's condition.
    std::unique_lock<std::mutex>& Lock() { return m_Lock; }
    // True when the calling thread holds the keeper mutex through a KeeperLock.
    static bool HeldHere();

private:
    std::unique_lock<std::mutex> m_Lock;
};

// Records U and the module's loader in L's registry (get_universe reads it back).
void InstallUniverse(lua_State* L, Universe* U, lua_CFunction loader);
// The loader recorded in L, or null.
lua_CFunction InstalledLoader(lua_State* L);
}
