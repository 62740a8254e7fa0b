#include "utilities/lua/LuaSystem.h"

#include "utilities/lua/LuaStateHandle.h"

#include "engine/Files.h"
#include "engine/Log.h"
#include "engine/Profiler.h"
#include "utilities/Meta/Registration.h"
#include "utilities/lua/Coroutine.h"
#include "utilities/lua/EventBindLuaObject.h"
#include "utilities/lua/EngineFunctions.h"
#include "utilities/lua/LuaGlobals.h"
#include "engine/GameStateManager.h"
#include "utilities/lua/LuaScript.h"
#include "utilities/lua/ProfilerHook.h"
#include "utilities/lua/ScriptFile.h"
#include "utilities/lua/ScriptValues.h"
#include "utilities/lua/luabridge/LuaBinding.h"
#include "utilities/lua/lanes/Lanes.h"

#include <lua.hpp>

#include <atomic>
#include <cstdio>

extern "C" int luaopen_lfs(lua_State* L);

META_REGISTER(LuaSystem)
{
    DERIVE(System);
}

struct LuaWorkerPool
{
};

namespace
{
// Registry field holding the LuaSystem that owns a state.
constexpr const char* kOwnerKey = "Vorn.LuaSystem";

// The system is made during static initialisation, as the type registrations that queue classes
// for it would make it anyway.
[[maybe_unused]] const LuaSystem& g_MadeAtStart = LuaSystem::Get();

// Lua calls this on an error outside any protected call, then ends the process.
int l_panic(lua_State* L)
{
    const char* message = lua_gettop(L) > 0 ? lua_tostring(L, -1) : nullptr;
    std::printf("Lua Error: %s\n", message ? message : "(error object is not a string)");
    std::fflush(stdout);
    static std::atomic<bool>* site = Engine::Log::Get().NewSite();
    if (site->load())
        Engine::ReportAtSite(*site, "OH GOD LUA DIED.", true, "l_panic", "LuaSystem.cpp", 123);
    return 0;
}
}

LuaSystem& LuaSystem::Get()
{
    static LuaSystem* system = new LuaSystem();
    return *system;
}

LuaSystem& LuaSystem::Of(lua_State* L)
{
    LuaSystem* owner = FindOwner(L);
    return owner ? *owner : Get();
}

LuaSystem* LuaSystem::FindOwner(lua_State* L)
{
    lua_getfield(L, LUA_REGISTRYINDEX, kOwnerKey);
    void* owner = lua_touserdata(L, -1);
    lua_pop(L, 1);
    return static_cast<LuaSystem*>(owner);
}

namespace
{
// Loads the Lua half of the lanes module into `state` when a script first requires it: the file in
// the data directory is compiled and run; what went wrong is left for require to see.
int LoadLanesScript(lua_State* state)
{
    const std::string path = Util::GetDataDirectory() + "LuaScripts/Globals/lanes.lua";
    if (luaL_loadfile(state, path.c_str()) == 0)
        lua_pcall(state, 0, LUA_MULTRET, 0);
    return 0;
}
}

bool LuaSystem::SameUniverse(lua_State* a, lua_State* b)
{
    return a == b || lua_topointer(a, LUA_REGISTRYINDEX) == lua_topointer(b, LUA_REGISTRYINDEX);
}

namespace
{
std::vector<LuaSystem*>& OpenList()
{
    static auto* open = new std::vector<LuaSystem*>();
    return *open;
}
}

const std::vector<LuaSystem*>& LuaSystem::OpenSystems()
{
    return OpenList();
}

LuaSystem::LuaSystem()
{
    // 1. The state.
    m_State = luaL_newstate();
    OpenList().push_back(this);
    LuaStateHandle::Opened(m_State);
    m_Ref = {m_State, -1};
    lua_pushlightuserdata(m_State, this);
    lua_setfield(m_State, LUA_REGISTRYINDEX, kOwnerKey);
    // 2. The standard libraries.
    luaL_openlibs(m_State);
    // 3. The global functions, over the standard print and loadfile.
    lua_pushvalue(m_State, LUA_GLOBALSINDEX);
    luabridge::RegisterGlobalFunctions(m_State);
    RegisterEngineFunctions(m_State);
    RegisterScriptValueFunctions(m_State);
    lua_pop(m_State, 1);
    // 4. Errors outside a protected call.
    lua_atpanic(m_State, l_panic);
    // 5. No automatic collection: Update steps the collector once a frame.
    lua_gc(m_State, LUA_GCSTOP, 0);
    // 6. LuaFileSystem.
    luaopen_lfs(m_State);
    // 7. The lanes module, whose Lua half "LuaScripts/Globals/lanes.lua" is loaded when first required.
    luaopen_lanes_embedded(m_State, LoadLanesScript);
    // 8. Drop what the library openers left on the stack.
    lua_settop(m_State, 0);
}

LuaSystem::~LuaSystem()
{
    Shutdown();
}

void LuaSystem::Shutdown()
{
    if (!m_State)
        return;
    if (m_ClosingScript != -1 && GetScript(m_ClosingScript).PushChunk())
    {
        ReportStatus(lua_pcall(m_State, 0, LUA_MULTRET, 0));
        lua_settop(m_State, 0);
    }
    m_Scripts.clear();
    for (Coroutine* coroutine : m_Coroutines)
        delete coroutine;
    luaL_unref(m_State, LUA_REGISTRYINDEX, m_Ref.ref);
    lua_pushnil(m_State);
    m_Ref.ref = luaL_ref(m_State, LUA_REGISTRYINDEX);
    {
        std::lock_guard<std::mutex> lock(m_EventQueueMutex);
        m_EventQueue.clear();
    }
    LuaStateHandle::Closed(m_State);
    std::erase(OpenList(), this);
    lua_close(m_State);
    m_State = nullptr;
    m_Coroutines.clear();
    m_WorkerPool.reset();
    m_Mutex.reset();
}

void LuaSystem::Update(float)
{
    DeliverQueuedEvents();
    lua_gc(m_State, LUA_GCSTEP, kCollectorStep);
}

std::uint64_t LuaSystem::AddLiveScript(LuaScript* script)
{
    const std::uint64_t id = m_NextScriptId++;
    m_LiveScripts[id] = script;
    return id;
}

void LuaSystem::RemoveLiveScript(std::uint64_t id)
{
    m_LiveScripts.erase(id);
}

LuaScript* LuaSystem::FindScript(std::uint64_t id) const
{
    const auto found = m_LiveScripts.find(id);
    return found == m_LiveScripts.end() ? nullptr : found->second;
}

void LuaSystem::QueueEvent(std::shared_ptr<LuaEventHandler> handler, Event* event)
{
    std::lock_guard<std::mutex> lock(m_EventQueueMutex);
    m_EventQueue.push_back({std::move(handler), event});
}

void LuaSystem::DeliverQueuedEvents()
{
    std::vector<QueuedEvent> due;
    {
        std::lock_guard<std::mutex> lock(m_EventQueueMutex);
        due.swap(m_EventQueue);
    }
    for (const QueuedEvent& queued : due)
        queued.handler->Call(queued.event);
}

void LuaSystem::Initialize()
{
    // 1., 4. and 5. Every registered class: "System" first, then the registrations put off until
    // now, order by order, then the callable class tables. Coroutines get their resume.
    luabridge::LuaBinding::Get().BindAll(m_State);
    BindCoroutineResume(m_State);
    // 2. Every script of "LuaScripts/Components/" becomes a component type.
    RegisterScriptComponents();
    // 3. Every script of "LuaScripts/GameStates/" becomes a game state.
    GameStateManager::Get().RegisterGameStates(this);
    // 6. The global script.
    RunGlobalScript();
    // 7. The closing script is loaded now and runs when the system is destroyed.
    m_ClosingScript = LoadScript(Util::GetDataDirectory() + kClosingScript);
    // 8. The lock for other Lua universes; no worker pool.
    m_Mutex = std::make_unique<std::recursive_mutex>();
    m_WorkerPool.reset();
    // Under --profile, script functions are timed too.
    if (Profiler::Get().IsEnabled())
        InstallProfilerHook(m_State);
}

void LuaSystem::GameInitialize()
{
    LuaScript script(Util::GetDataDirectory() + kGameInitializeScript, {}, this);
    script.Run();
    const int initializeGame = script.CacheFunction("InitializeGame");
    if (initializeGame != -1)
        CallRef(initializeGame);
}

Meta::Data* LuaSystem::GetMeta() const
{
    return Meta::Get<LuaSystem>();
}

int LuaSystem::LoadScript(const std::string& path)
{
    const std::string normalized = Util::NormalizePath(path);
    for (std::size_t i = 0; i < m_Scripts.size(); ++i)
        if (m_Scripts[i]->path == normalized)
            return static_cast<int>(i);
    auto file = std::make_unique<ScriptFile>(*this, normalized);
    m_Scripts.push_back(std::move(file));
    return static_cast<int>(m_Scripts.size() - 1);
}

void LuaSystem::ReportStatus(int status)
{
    if (status == 0)
        return;
    if (status == LUA_YIELD)
    {
        luaL_traceback(m_State, m_State, nullptr, 0);
        std::printf("Lua Error: Function Yielded.\n %s\n", lua_tostring(m_State, -1));
        lua_pop(m_State, 1);
    }
    else
    {
        const int top = lua_gettop(m_State);
        const char* message = top > 0 ? lua_tostring(m_State, top) : nullptr;
        if (message)
            std::printf("Lua Error: %s\n", message);
        else if (top > 0)
            std::printf("Lua Error: (error object is a %s value)\n", luaL_typename(m_State, top));
        else
            std::printf("Lua Error: (no error message)\n");
    }
    std::fflush(stdout);
}

void LuaSystem::CallRef(int ref, double argument)
{
    const int top = lua_gettop(m_State);
    lua_rawgeti(m_State, LUA_REGISTRYINDEX, ref);
    lua_pushnumber(m_State, argument);
    ReportStatus(lua_pcall(m_State, 1, 0, 0));
    lua_settop(m_State, top);
}

void LuaSystem::CallRef(int ref)
{
    const int top = lua_gettop(m_State);
    lua_rawgeti(m_State, LUA_REGISTRYINDEX, ref);
    ReportStatus(lua_pcall(m_State, 0, LUA_MULTRET, 0));
    lua_settop(m_State, top);
}

void LuaSystem::RunGlobalScript()
{
    ScriptFile& global = GetScript(LoadScript(Util::GetDataDirectory() + kGlobalScript));
    const int top = lua_gettop(m_State);
    if (global.PushChunk())
        ReportStatus(lua_pcall(m_State, 0, LUA_MULTRET, 0));
    lua_settop(m_State, top);
}
