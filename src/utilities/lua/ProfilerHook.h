// ProfilerHook: times script functions for the profiler. Under --profile the
// Lua system installs a call-and-return hook on its state; each Lua or C
// function that a script calls is entered in the profiler's script table,
// keyed by its file, the line it is defined on and its name, and shows in
// "ProfileResults.csv" as "Lua: <file> Line: <line>".
//
// LuaJIT reports a tail call as a call with no return of the function it
// replaced, and an error unwinds frames with no return at all. So each open
// script entry remembers the thread and the stack level it was called at, and
// an event at a level closes every entry of that thread at the same level or
// deeper first. A coroutine's entries close when the resume that ran them
// returns. Compiled code calls no hooks, so installing the hook turns LuaJIT's
// compiler off for the state.
//
//   if (Profiler::Get().IsEnabled())
//       InstallProfilerHook(L);
#pragma once

struct lua_State;

// Times every function call of `L` (and of threads made from it afterwards) in the profiler.
void InstallProfilerHook(lua_State* L);
// Stops timing the calls of `L`; entries still open are closed.
void RemoveProfilerHook(lua_State* L);
