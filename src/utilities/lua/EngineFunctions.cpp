#include "utilities/lua/EngineFunctions.h"

#include "engine/PerformanceData.h"
#include "engine/Settings.h"

#include <lua.hpp>

namespace
{
int l_SaveSettings(lua_State*)
{
    Settings::Get().Save();
    return 0;
}

int l_PerformanceDataDump(lua_State*)
{
    PerformanceData::Get().Dump();
    return 0;
}

const luaL_Reg kEngineFunctions[] = {
    {"SaveSettings", l_SaveSettings},
    {"PerformanceDataDump", l_PerformanceDataDump},
    {nullptr, nullptr},
};
}

void RegisterEngineFunctions(lua_State* L)
{
    luaL_register(L, nullptr, kEngineFunctions);
}
