#include "utilities/lua/luabridge/MethodBinding.h"

#include "utilities/Meta/Method.h"

#include <memory>
#include <vector>

namespace luabridge::detail
{
int CallMethod(lua_State* L)
{
    const auto* method = static_cast<const Meta::Method*>(lua_touserdata(L, lua_upvalueindex(1)));
    const int results = method->LuaCandidate(L);
    return results < 0 ? 0 : results;
}

int CallOverloads(lua_State* L)
{
    const auto* forms =
        static_cast<const std::vector<std::shared_ptr<Meta::Method>>*>(lua_touserdata(L, lua_upvalueindex(1)));
    for (const auto& form : *forms)
    {
        const int results = form->LuaCandidate(L);
        if (results >= 0)
            return results;
    }
    return 0;
}
}
