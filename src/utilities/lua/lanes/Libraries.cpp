#include "utilities/lua/lanes/Libraries.h"

#include <cstring>

namespace Lanes
{
namespace
{
struct Library
{
    const char* name;
    lua_CFunction open;
};

// In the order luaL_openlibs opens them; base first.
const Library kLibraries[] = {
    {"base", luaopen_base},   {"package", luaopen_package}, {"table", luaopen_table}, {"io", luaopen_io},
    {"os", luaopen_os},       {"string", luaopen_string},   {"math", luaopen_math},   {"debug", luaopen_debug},
    {"bit", luaopen_bit},     {"jit", luaopen_jit},
};

int FindLibrary(const std::string& name)
{
    if (name == "coroutine")
        return 0;
    for (int i = 0; i < static_cast<int>(std::size(kLibraries)); ++i)
        if (name == kLibraries[i].name)
            return i;
    return -1;
}

std::string Trim(const std::string& text)
{
    std::string::size_type begin = text.find_first_not_of(" \t");
    if (begin == std::string::npos)
        return {};
    std::string::size_type end = text.find_last_not_of(" \t");
    return text.substr(begin, end - begin + 1);
}
}

bool ParseLibraries(const char* list, LibrarySet* libraries, std::string* error)
{
    *libraries = {};
    std::string text = Trim(list ? list : "");
    if (text == "*")
    {
        libraries->all = true;
        return true;
    }
    std::string::size_type start = 0;
    while (start <= text.size() && !text.empty())
    {
        std::string::size_type comma = text.find(',', start);
        std::string name = Trim(text.substr(start, comma == std::string::npos ? std::string::npos : comma - start));
        if (!name.empty())
        {
            int index = FindLibrary(name);
            if (index < 0)
            {
                *error = "unknown library '" + name +
                         "' (known: base, string, table, math, io, os, package, debug, bit, jit, or * for all)";
                return false;
            }
            libraries->bits |= 1u << index;
        }
        if (comma == std::string::npos)
            break;
        start = comma + 1;
    }
    return true;
}

void OpenLibraries(lua_State* L, const LibrarySet& libraries)
{
    if (libraries.all)
    {
        luaL_openlibs(L);
        return;
    }
    for (int i = 0; i < static_cast<int>(std::size(kLibraries)); ++i)
    {
        if (!(libraries.bits & (1u << i)))
            continue;
        lua_pushcfunction(L, kLibraries[i].open);
        lua_pushstring(L, kLibraries[i].name);
        lua_call(L, 1, 0);
    }
}

bool HasLibrary(const LibrarySet& libraries, const char* name)
{
    int index = FindLibrary(name);
    return libraries.all || (index >= 0 && (libraries.bits & (1u << index)));
}
}
