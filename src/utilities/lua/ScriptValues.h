// The global functions that need the class binding, registered with the
// others when the Lua state is made and working once classes are bound:
//
//   MakeCoroutine(f)   a Coroutine running f, stepped with co:resume(...)
//   Value(x)           a plain value of x: a property reference or a value member
//                      handed out by reference becomes a detached copy; an
//                      enumeration its number; anything else stays itself
//   CheckIfPtr(x)      true exactly when x refers to a native object owned elsewhere
#pragma once

struct lua_State;

// Registers MakeCoroutine, Value and CheckIfPtr into the table on top of the stack (leaves it there).
void RegisterScriptValueFunctions(lua_State* L);
// Gives the bound class "Coroutine" of `L` its method `resume`; call once the classes are bound.
void BindCoroutineResume(lua_State* L);
