// Reading and writing a float variable of a script component from native code
// (LuaComponent::GetProperty / SetProperty, the hooks behind `component.Level`)
// beside a plain lua_getfield / lua_setfield of a field of a Lua table, in one
// run. Each iteration does kLoop operations; the ratio line compares them.
#include "engine/Files.h"
#include "engine/GameObject.h"
#include "utilities/lua/LuaSystem.h"
#include "utilities/lua/components/LuaComponent.h"

#include <benchmark/benchmark.h>
#include <lua.hpp>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

namespace
{
constexpr int kLoop = 1000;

// A Lua system whose data folder holds one component script with a float variable, and an object
// with that component.
class ScriptVariableScene
{
public:
    ScriptVariableScene()
    {
        m_Folder = std::filesystem::temp_directory_path() / "vorn_bench_script_variable";
        std::filesystem::create_directories(m_Folder / "LuaScripts/Components");
        std::ofstream(m_Folder / "LuaScripts/Components/Gauge.lua") << "--[[!\nfloat Level 0\n]]\n";
        std::filesystem::create_directories(m_Folder / "LuaScripts/Globals");
        std::ofstream(m_Folder / "LuaScripts/Globals/Global.lua") << "-- nothing global\n";
        std::ofstream(m_Folder / "LuaScripts/Globals/Closing.lua") << "-- nothing to close\n";
        m_OldData = Util::GetDataDirectory();
        Util::SetDataDirectory(m_Folder.string() + "/");
        m_Lua = std::make_unique<LuaSystem>();
        m_Lua->Initialize();
        m_Gauge = static_cast<LuaComponent*>(m_Object.AddComponentUninitialized("Gauge"));
        lua_newtable(L());
        lua_pushnumber(L(), 0);
        lua_setfield(L(), -2, "Level");
        m_Table = lua_gettop(L());
    }
    ~ScriptVariableScene()
    {
        m_Lua.reset();
        Util::SetDataDirectory(m_OldData);
        std::filesystem::remove_all(m_Folder);
    }
    lua_State* L() const { return m_Lua->m_State; }

    std::filesystem::path m_Folder;
    std::string m_OldData;
    std::unique_ptr<LuaSystem> m_Lua;
    GameObject m_Object;
    LuaComponent* m_Gauge = nullptr;
    int m_Table = 0;
};

void ScriptVariableGet(benchmark::State& state)
{
    ScriptVariableScene scene;
    lua_State* L = scene.L();
    const std::string name = "Level";
    double sum = 0;
    for (auto _ : state)
        for (int i = 0; i < kLoop; ++i)
        {
            scene.m_Gauge->GetProperty(L, name);
            sum += lua_tonumber(L, -1);
            lua_pop(L, 1);
        }
    benchmark::DoNotOptimize(sum);
}
BENCHMARK(ScriptVariableGet);

void ScriptVariableGet_Reference(benchmark::State& state)
{
    ScriptVariableScene scene;
    lua_State* L = scene.L();
    double sum = 0;
    for (auto _ : state)
        for (int i = 0; i < kLoop; ++i)
        {
            lua_getfield(L, scene.m_Table, "Level");
            sum += lua_tonumber(L, -1);
            lua_pop(L, 1);
        }
    benchmark::DoNotOptimize(sum);
}
BENCHMARK(ScriptVariableGet_Reference);

void ScriptVariableSet(benchmark::State& state)
{
    ScriptVariableScene scene;
    lua_State* L = scene.L();
    const std::string name = "Level";
    for (auto _ : state)
        for (int i = 0; i < kLoop; ++i)
        {
            lua_pushnumber(L, i);
            scene.m_Gauge->SetProperty(L, name);
            lua_pop(L, 1);
        }
}
BENCHMARK(ScriptVariableSet);

void ScriptVariableSet_Reference(benchmark::State& state)
{
    ScriptVariableScene scene;
    lua_State* L = scene.L();
    for (auto _ : state)
        for (int i = 0; i < kLoop; ++i)
        {
            lua_pushnumber(L, i);
            lua_setfield(L, scene.m_Table, "Level");
        }
}
BENCHMARK(ScriptVariableSet_Reference);
}
