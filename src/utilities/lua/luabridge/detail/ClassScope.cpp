#include "utilities/lua/luabridge/detail/ClassScope.h"

#include "utilities/lua/luabridge/Operators.h"
#include "utilities/lua/luabridge/detail/Keys.h"
#include "utilities/lua/luabridge/detail/Metamethods.h"

namespace luabridge
{
namespace
{
// Pops the function on top into table[key] of the sub-table under `subKey` of `table`.
void SetIn(lua_State* L, int table, const void* subKey, const std::string& name)
{
    lua_pushlightuserdata(L, const_cast<void*>(subKey));
    lua_rawget(L, table);
    lua_pushlstring(L, name.data(), name.size());
    lua_pushvalue(L, -3);
    lua_rawset(L, -3);
    lua_pop(L, 2);
}

// Pops the function on top into table[name].
void SetField(lua_State* L, int table, const std::string& name)
{
    lua_pushlstring(L, name.data(), name.size());
    lua_insert(L, -2);
    lua_rawset(L, table);
}

// Lua passes the operand of a unary minus twice; the method takes it once.
int UnaryOperator(lua_State* L)
{
    lua_settop(L, 1);
    lua_pushvalue(L, lua_upvalueindex(1));
    lua_insert(L, 1);
    lua_call(L, 1, LUA_MULTRET);
    return lua_gettop(L);
}
}

ClassScope::ClassScope(lua_State* state, Meta::Data& data, int classTable, int constTable, int staticTable)
    : L(state), m_Data(data), m_Class(classTable), m_Const(constTable), m_Static(staticTable)
{
}

void ClassScope::AddGetter(const std::string& name)
{
    SetIn(L, m_Class, detail::PropGetKey(), name);
}

void ClassScope::AddSetter(const std::string& name)
{
    SetIn(L, m_Class, detail::PropSetKey(), name);
}

void ClassScope::AddReadOnly(const std::string& name)
{
    detail::PushReadOnlySetter(L, name.c_str());
    AddSetter(name);
}

void ClassScope::AddMethod(const std::string& name, bool isConst)
{
    const std::string& luaName = LuaNameOf(name);
    if (luaName == "__unm")
        lua_pushcclosure(L, &UnaryOperator, 1);
    if (isConst)
    {
        lua_pushvalue(L, -1);
        SetField(L, m_Const, luaName);
    }
    SetField(L, m_Class, luaName);
}

void ClassScope::AddStaticGetter(const std::string& name)
{
    SetIn(L, m_Static, detail::PropGetKey(), name);
}

void ClassScope::AddStaticSetter(const std::string& name)
{
    SetIn(L, m_Static, detail::PropSetKey(), name);
}

void ClassScope::AddStaticReadOnly(const std::string& name)
{
    detail::PushReadOnlySetter(L, name.c_str());
    AddStaticSetter(name);
}

void ClassScope::AddStaticFunction(const std::string& name)
{
    lua_pushvalue(L, -1);
    SetField(L, m_Static, name);
    lua_pushvalue(L, -1);
    SetField(L, m_Const, name);
    SetField(L, m_Class, name);
}

void ClassScope::SetDynamic()
{
    lua_pushlightuserdata(L, const_cast<void*>(detail::PropSetKey()));
    lua_rawget(L, m_Class);
    lua_pushlightuserdata(L, const_cast<void*>(detail::DynamicKey()));
    lua_pushvalue(L, -3);
    lua_rawset(L, -3);
    lua_pop(L, 2);
    lua_pushlightuserdata(L, const_cast<void*>(detail::PropGetKey()));
    lua_rawget(L, m_Class);
    lua_pushlightuserdata(L, const_cast<void*>(detail::DynamicKey()));
    lua_pushvalue(L, -3);
    lua_rawset(L, -3);
    lua_pop(L, 2);
}
}
