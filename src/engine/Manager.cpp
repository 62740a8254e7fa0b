#include "engine/Manager.h"

#include "engine/Event.h"
#include "engine/FrameRateController.h"
#include "engine/GameStateManager.h"
#include "engine/PerformanceData.h"
#include "engine/Profiler.h"
#include "engine/Settings.h"
#include "engine/Space.h"
#include "engine/SpaceManager.h"
#include "engine/System.h"
#include "engine/Files.h"
#include "utilities/Meta/Registration.h"
#include "utilities/lua/EventBindLuaObject.h"
#include "utilities/lua/LuaScript.h"
#include "utilities/lua/ScriptEvent.h"
#include "utilities/lua/LuaSystem.h"

META_REGISTER_NS(Engine, Manager)
{
    DESCRIPTION("Runs the engine systems frame by frame and holds the global event table.");
    HELP("The one manager.");
    METHOD(Get);
    METHOD(EndGame);
    HELP("Binds a function of the calling script, (name [, functionName]), or of a script object, (object, name [, functionName]), to an event of the global table.");
    type.AddMethod(Meta::ScriptVisible(new Meta::MethodD_crosscall<int, Self>("RegisterEvent", &Self::RegisterEvent)));
    HELP("Sends a script event by name on the global table, then on every space that isn't paused.");
    METHOD_AS("BroadcastEvent", &Self::ScriptBroadcastEvent);
}

namespace Engine
{
Manager& Manager::Get()
{
    static Manager* manager = new Manager();
    return *manager;
}

void Manager::AddSystem(System* system)
{
    m_Systems.push_back(system);
}

void Manager::Initialize()
{
    Settings& settings = Settings::Get();
    settings.Load();
    for (System* system : m_Systems)
        system->Initialize();
    // Saving at once writes the defaults on a first run and drops names no system knows.
    settings.Save();
}

void Manager::RunFrame()
{
    const float dt = FrameRateController::Get().ClampDt();
    // Lanes write into the main Lua state only between frames.
    const auto luaLock = LuaSystem::Get().LockMainState();
    if (m_DebugScript)
    {
        const int debugUpdate = m_DebugScript->FindFunction("DebugUpdate");
        if (debugUpdate != -1)
            LuaSystem::Get().CallRef(debugUpdate);
    }
    PerformanceData& timers = PerformanceData::Get();
    for (System* system : m_Systems)
    {
        PROFILE_SCOPE(system, system->GetMeta()->GetName().c_str());
        timers.Start(system->GetMeta()->GetName());
        system->Update(dt);
        timers.Stop();
    }
    ++m_FrameCount;
    if (m_FrameLimit != 0 && m_FrameCount >= m_FrameLimit)
        GameStateManager::Get().SetNext(GameStateManager::Quit);
}

void Manager::Run()
{
    // The debug script: DebugUpdate is looked up again whenever the file is edited.
    LuaScript debugScript(Util::GetDataDirectory() + kDebugScript);
    debugScript.m_OnReload = [&debugScript] { debugScript.CacheFunction("DebugUpdate"); };
    debugScript.Run();
    debugScript.CacheFunction("DebugUpdate");
    m_DebugScript = &debugScript;
    struct DebugScriptScope
    {
        Manager& manager;
        ~DebugScriptScope() { manager.m_DebugScript = nullptr; }
    } debugScriptScope{*this};

    GameStateManager& states = GameStateManager::Get();
    while (m_Running && states.GetCurrentStateId() != GameStateManager::Quit)
    {
        states.EnterState();
        while (m_Running && states.GetCurrentStateId() == states.GetNextStateId())
            RunFrame();
        states.LeaveState();
        for (unsigned i = 0; i < kSpaceCount; ++i)
            SpaceManager::Get().GetSpace(i)->GarbageCollectObjects();
        states.Advance();
    }
    m_Running = false;
}

void Manager::BroadcastEvent(Event* event)
{
    BroadcastEvent(event->GetMeta()->GetName(), event);
}

void Manager::BroadcastEvent(std::string_view name, Event* event)
{
    {
        EventManager::DispatchScope dispatch(m_Events);
        m_Events.Dispatch(name, event);
    }
    for (unsigned i = 0; i < kSpaceCount; ++i)
    {
        Space* space = SpaceManager::Get().GetSpace(i);
        if (space->IsPaused())
            continue;
        EventManager::DispatchScope dispatch(space->m_Events);
        space->m_Events.Dispatch(name, event);
    }
}

void Manager::ScriptBroadcastEvent(const std::string& name, ScriptEvent* event)
{
    if (event)
        BroadcastEvent(name, event);
}

int Manager::RegisterEvent(lua_State* L)
{
    return RegisterLuaEventFromScript(m_Events, L);
}
}
