// LuaSystem: the one Lua state of the program (LuaJIT, with the Lua 5.1
// interface) and what keeps scripts alive across file changes: the list of
// loaded script files, the global helper functions, error reporting and the
// order in which the boot scripts run.
//
// The system is made on first use, during static initialisation (type
// registrations already need it), so its constructor only makes the state: it
// touches no data directory, log or platform call. Initialize runs
// "LuaScripts/Globals/Global.lua" from the data directory and notes
// "Closing.lua", which runs when the system is destroyed; GameInitialize runs
// "LuaScripts/GameInitialize.lua" and its InitializeGame.
//
// The automatic garbage collector is off for the life of the state: each
// frame's Update takes one bounded collector step instead. Lua errors are
// printed on standard output as "Lua Error: ..." and the program runs on.
#pragma once

#include "engine/System.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

struct lua_State;
class Coroutine;
class Event;
struct LuaEventHandler;
class LuaComponent;
class LuaScript;
class ScriptFile;

// A thread pool for scripts; nothing in the engine makes one, so LuaSystem's pointer stays null.
struct LuaWorkerPool;

// A registry slot of a state: the state and the reference (-1: none).
struct LuaRegistryRef
{
    // The state whose registry holds the slot.
    lua_State* state = nullptr;
    // The slot; -1 when it holds nothing.
    int ref = -1;
};

class LuaSystem : public System
{
public:
    // The one LuaSystem, made on first use.
    static LuaSystem& Get();
    // The LuaSystem whose state `L` is (or is a thread of); the one LuaSystem for any other state.
    static LuaSystem& Of(lua_State* L);
    // True when both states share one registry: the same state or threads of it.
    static bool SameUniverse(lua_State* a, lua_State* b);
    // The LuaSystem whose state `L` is (or is a thread of); null for a state of no LuaSystem.
    static LuaSystem* FindOwner(lua_State* L);

    // Every LuaSystem whose state is open, in the order they were made.
    static const std::vector<LuaSystem*>& OpenSystems();
    // Makes the state with the standard libraries, the global functions and LuaFileSystem, the
    // collector stopped. Public so that tests can make a state of their own.
    LuaSystem();
    // Runs the closing script, frees the script files and coroutines, closes the state.
    ~LuaSystem() override;
    // Runs the closing script and closes the state, as destruction does; the game's system, which
    // is never destroyed, is shut down this way at the end of the run. Nothing Lua may run after.
    void Shutdown();
    LuaSystem(const LuaSystem&) = delete;
    LuaSystem& operator=(const LuaSystem&) = delete;

    // Delivers the queued script events, then takes one step of the collector.
    void Update(float dt) override;
    // Runs "Global.lua", loads "Closing.lua", makes the mutex.
    void Initialize() override;
    // Runs "LuaScripts/GameInitialize.lua" and calls its InitializeGame when it defines one.
    void GameInitialize();
    Meta::Data* GetMeta() const override;

    // The index of the file at `path` in m_Scripts, loading (compiling, watching) it on first use.
    int LoadScript(const std::string& path);
    // The loaded file at `index` (from LoadScript).
    ScriptFile& GetScript(int index) { return *m_Scripts[static_cast<std::size_t>(index)]; }
    // Prints a failed status of a Lua call: a yield as "Lua Error: Function Yielded." with the call
    // stack, any other error as "Lua Error: " and the message, which stays on the stack.
    void ReportStatus(int status);
    // Posts a script handler's delivery of `event`, from any thread, for the next Update.
    void QueueEvent(std::shared_ptr<LuaEventHandler> handler, Event* event);
    // Delivers the queued events in the order they were posted; on the main thread.
    void DeliverQueuedEvents();
    // Registers every script of "LuaScripts/Components/" as a component type with its prototype.
    void RegisterScriptComponents();
    // The prototype of script component type `name`, or null.
    LuaComponent* FindComponentPrototype(const std::string& name) const;
    // A new, uninitialized script component of type `name` cloned from the prototype of the newest
    // open system that has one; null when none has.
    static LuaComponent* MakeScriptComponent(const std::string& name);
    // Files a LuaScript among the living and gives it its id (counting up from 1, never reused).
    std::uint64_t AddLiveScript(LuaScript* script);
    // Takes a destroyed LuaScript off the living.
    void RemoveLiveScript(std::uint64_t id);
    // The living LuaScript of id `id`; null when it was destroyed or never was.
    LuaScript* FindScript(std::uint64_t id) const;
    // Calls the function of registry reference `ref` with no arguments; reports an error. The stack
    // is left as it was.
    void CallRef(int ref);
    // The same with one number argument (a frame time, say).
    void CallRef(int ref, double argument);
    // Runs "LuaScripts/Globals/Global.lua" from the data directory (again).
    void RunGlobalScript();
    // The lock that guards the main state against calls from other Lua universes (lanes); made by
    // Initialize, null before.
    std::recursive_mutex* GetMutex() const { return m_Mutex.get(); }
    // Holds GetMutex while it lives (nothing before Initialize made it). The main thread holds it
    // while it runs Lua, so that a lane's write into the main state never meets a main-thread use.
    std::unique_lock<std::recursive_mutex> LockMainState() const
    {
        return m_Mutex ? std::unique_lock<std::recursive_mutex>(*m_Mutex) : std::unique_lock<std::recursive_mutex>();
    }

    // Path of the global script, from the data directory.
    static constexpr const char* kGlobalScript = "LuaScripts/Globals/Global.lua";
    // Path of the closing script, from the data directory.
    static constexpr const char* kClosingScript = "LuaScripts/Globals/Closing.lua";
    // Path of the game's start script, from the data directory.
    static constexpr const char* kGameInitializeScript = "LuaScripts/GameInitialize.lua";
    // Size of the collector step each frame.
    static constexpr int kCollectorStep = 100;

    // Always null after Initialize; destroyed at shutdown if set.
    std::unique_ptr<LuaWorkerPool> m_WorkerPool;
    // Made at the end of Initialize.
    std::unique_ptr<std::recursive_mutex> m_Mutex;
    // Every file loaded so far; the index is the file's handle everywhere.
    std::vector<std::unique_ptr<ScriptFile>> m_Scripts;
    // Coroutines owned by the system, destroyed with it; entries may be null.
    std::vector<Coroutine*> m_Coroutines;
    // The script component whose script runs at this moment.
    LuaComponent* m_CurrentComponent = nullptr;
    // The main state.
    lua_State* m_State = nullptr;
    // Index of "Closing.lua" in m_Scripts; -1 until Initialize.
    int m_ClosingScript = -1;
    // A registry slot, released before the state closes.
    LuaRegistryRef m_Ref;
    // A script handler's delivery waiting for the main thread.
    struct QueuedEvent
    {
        std::shared_ptr<LuaEventHandler> handler;
        Event* event = nullptr;
    };
    // Guards m_EventQueue; never held during a Lua call.
    std::mutex m_EventQueueMutex;
    // Deliveries posted by EventBindLuaObject::Queue, delivered in Update.
    std::vector<QueuedEvent> m_EventQueue;
    // The LuaScripts alive now, by id.
    std::unordered_map<std::uint64_t, LuaScript*> m_LiveScripts;
    // The id the next LuaScript gets.
    std::uint64_t m_NextScriptId = 1;
    // Prototypes of script components by script name.
    std::unordered_map<std::string, std::shared_ptr<LuaComponent>> m_ComponentPrototypes;
};
