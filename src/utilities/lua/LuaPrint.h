// Printing Lua values and stacks to standard output, for scripts (`print`,
// `stackDump`) and for a developer in a debugger, who can call these functions
// by name. They live in namespace luabridge and keep these names so that a
// debugger session can find them.
//
// Tables are printed by their keys only: a value that is a table is never
// expanded, so a table that holds itself prints once. Nested output is indented
// by a counter shared by all of these functions; a stack dump leaves it as it
// found it.
#pragma once

struct lua_State;

namespace luabridge
{
// Writes one space per unit of the indent counter.
void PrintIndent();
// The indent counter's value (two units per level of table being printed).
int GetPrintIndent();
// Sets the indent counter, as a developer may from a debugger.
void SetPrintIndent(int units);
// Prints the value at `index`: nil, booleans, numbers ("%f"), strings, tables by their keys,
// functions, light and full userdata by address; other types as an error line.
void Lua_PrintIndex(lua_State* L, int index);
// Prints "Table: ", then each key of the table at `index` on a line of its own, indented, in braces.
void Lua_PrintTable(lua_State* L, int index);
// Prints every value of the stack from the bottom up, numbered, between "--- LUA TOP ---" and "--- END ---".
void Lua_stackDump(lua_State* L);
// Prints the call stack of the state (luaL_traceback) and a line end.
void Lua_stackTrace(lua_State* L);
}
