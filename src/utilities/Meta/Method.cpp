#include "utilities/Meta/Method.h"

#include "utilities/lua/luabridge/detail/ClassScope.h"

namespace Meta
{
void Method::RegisterLua(luabridge::ClassScope& scope) const
{
    lua_pushlightuserdata(scope.L, const_cast<Method*>(this));
    lua_pushcclosure(scope.L, &luabridge::detail::CallMethod, 1);
    scope.AddMethod(m_Name, m_Const);
}

void RegisterStaticLua(const Method& method, luabridge::ClassScope& scope)
{
    lua_pushlightuserdata(scope.L, const_cast<Method*>(&method));
    lua_pushcclosure(scope.L, &luabridge::detail::CallMethod, 1);
    scope.AddStaticFunction(method.m_Name);
}
}
