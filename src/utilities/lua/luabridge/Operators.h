// The Lua names of operator methods: a method registered as "operator+" is bound
// as "__add", "operator-()" as "__unm", "operator=" as "assign", and so on; any
// other name is bound as it is spelled.
#pragma once

#include <string>

namespace luabridge
{
// The name under which a method registered as `name` is bound.
const std::string& LuaNameOf(const std::string& name);
}
