// Libraries: the standard libraries a lane asks for, written as in Lua Lanes: "*" for all of them,
// otherwise a comma-separated list of base, string, table, math, io, os, package, debug, bit, jit
// ("coroutine" is accepted too: it comes with base). An empty list opens none.
#pragma once

#include <lua.hpp>

#include <string>

namespace Lanes
{
// The set of libraries a list names, one bit per library.
struct LibrarySet
{
    unsigned bits = 0;
    bool all = false;
};

// Reads a library list; false with the reason in *error for an unknown name.
bool ParseLibraries(const char* list, LibrarySet* libraries, std::string* error);
// Opens the libraries of the set in L, a fresh state; raises a Lua error only when memory runs out.
void OpenLibraries(lua_State* L, const LibrarySet& libraries);
// True when the set holds the library called `name`.
bool HasLibrary(const LibrarySet& libraries, const char* name);
}
