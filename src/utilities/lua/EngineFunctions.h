// Engine functions that scripts call by global name, beside the helpers of
// LuaGlobals.h:
//
//   SaveSettings()          writes "Settings.txt" with every setting's value now
//   PerformanceDataDump()   logs each frame timer's moving average, category "Performance"
#pragma once

struct lua_State;

// Registers the engine functions into the table on top of the stack (leaves it there).
void RegisterEngineFunctions(lua_State* L);
