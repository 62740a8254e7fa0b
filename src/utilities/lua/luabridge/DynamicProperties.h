// The dynamic-property hooks of a class: a class that offers
//   int GetProperty(lua_State* L, const std::string& name)  (pushes the value, returns 1)
//   int SetProperty(lua_State* L, const std::string& name)  (the value on top of L)
// and registers PROPERTY_NEW() gets them as the getter and setter under
// DynamicKey, so that scripts can read and write names the class makes up at
// run time. The getter hook is asked before the class's getters.
#pragma once

#include "utilities/lua/luabridge/detail/ClassScope.h"
#include "utilities/lua/luabridge/detail/Userdata.h"

#include <lua.hpp>

#include <string>

namespace luabridge
{
// A class with dynamic-property hooks.
template <class T>
concept HasDynamicProperties = requires(T* object, lua_State* L, const std::string& name) {
    object->GetProperty(L, name);
    object->SetProperty(L, name);
};

namespace detail
{
// Getter hook: (object, key) -> value or nil.
template <class T>
int GetDynamic(lua_State* L)
{
    Userdata* userdata = UserdataAt(L, 1);
    if (!userdata || !userdata->p || lua_type(L, 2) != LUA_TSTRING)
        return 0;
    const std::string name = lua_tostring(L, 2);
    lua_settop(L, 2);
    const int results = static_cast<T*>(userdata->p)->GetProperty(L, name);
    return results < 0 ? 0 : results;
}

// Setter hook: (object, key, value).
template <class T>
int SetDynamic(lua_State* L)
{
    Userdata* userdata = UserdataAt(L, 1);
    if (!userdata || !userdata->p || lua_type(L, 2) != LUA_TSTRING)
        return 0;
    const std::string name = lua_tostring(L, 2);
    lua_settop(L, 3);
    const int results = static_cast<T*>(userdata->p)->SetProperty(L, name);
    return results < 0 ? 0 : results;
}
}

// Installs T's hooks in the class being bound.
template <class T>
void BindDynamicProperties(ClassScope& scope)
{
    lua_pushcfunction(scope.L, &detail::GetDynamic<T>);
    lua_pushcfunction(scope.L, &detail::SetDynamic<T>);
    scope.SetDynamic();
}
}
