#include "utilities/Meta/Property.h"

#include "utilities/lua/luabridge/detail/ClassScope.h"
#include "utilities/lua/luabridge/detail/Userdata.h"

namespace Meta
{
namespace
{
// The property of upvalue 1.
const Property& PropertyOf(lua_State* L)
{
    return *static_cast<const Property*>(lua_touserdata(L, lua_upvalueindex(1)));
}

// The object of a getter or setter call (argument 1).
void* ObjectOf(lua_State* L)
{
    luabridge::Userdata* userdata = luabridge::detail::UserdataAt(L, 1);
    return userdata ? userdata->p : nullptr;
}

int GetInstanceProperty(lua_State* L)
{
    void* object = ObjectOf(L);
    if (!object)
        return 0;
    PropertyOf(L).PushToLua(L, object);
    return 1;
}

// Raises the error of a value of the wrong type for a property.
int RaiseWrongType(lua_State* L, const Property& property, int index)
{
    return luaL_error(L, "'%s' can't take a value of type %s", property.m_Name.c_str(), luaL_typename(L, index));
}

int SetInstanceProperty(lua_State* L)
{
    void* object = ObjectOf(L);
    const Property& property = PropertyOf(L);
    if (object && !property.SetFromLua(L, object, 2))
        return RaiseWrongType(L, property, 2);
    return 0;
}

int GetStaticProperty(lua_State* L)
{
    PropertyOf(L).PushToLua(L, nullptr);
    return 1;
}

// A static setter is called with the value alone.
int SetStaticProperty(lua_State* L)
{
    const Property& property = PropertyOf(L);
    if (!property.SetFromLua(L, nullptr, 1))
        return RaiseWrongType(L, property, 1);
    return 0;
}
}

std::string Property::ReadonlyMessage() const
{
    return "This property is readonly! \nProperty: " + m_Name + "\nClass: " + (m_Class ? m_Class->GetName() : "");
}

void Property::PushToLua(lua_State* L, const void* object) const
{
    const Any value = Get(object);
    if (value.IsEmpty() || !value.m_Type || !value.m_Type->m_Info)
        lua_pushnil(L);
    else if (value.Owns())
        value.m_Type->m_Info->ToLua(L, value.m_Value);
    else
        luabridge::PushPointer(L, value.m_Value, value.m_Type->m_Info->GetLuaKey());
}

void Property::RegisterLua(luabridge::ClassScope& scope) const
{
    lua_pushlightuserdata(scope.L, const_cast<Property*>(this));
    lua_pushcclosure(scope.L, &GetInstanceProperty, 1);
    scope.AddGetter(m_Name);
    if (CanSet())
    {
        lua_pushlightuserdata(scope.L, const_cast<Property*>(this));
        lua_pushcclosure(scope.L, &SetInstanceProperty, 1);
        scope.AddSetter(m_Name);
    }
    else
        scope.AddReadOnly(m_Name);
}

void RegisterStaticLua(const Property& property, luabridge::ClassScope& scope)
{
    lua_pushlightuserdata(scope.L, const_cast<Property*>(&property));
    lua_pushcclosure(scope.L, &GetStaticProperty, 1);
    scope.AddStaticGetter(property.m_Name);
    if (property.CanSet())
    {
        lua_pushlightuserdata(scope.L, const_cast<Property*>(&property));
        lua_pushcclosure(scope.L, &SetStaticProperty, 1);
        scope.AddStaticSetter(property.m_Name);
    }
    else
        scope.AddStaticReadOnly(property.m_Name);
}
}
