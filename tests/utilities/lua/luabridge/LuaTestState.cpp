#include "utilities/lua/luabridge/LuaTestState.h"

#include "engine/GameObject.h"
#include "utilities/lua/luabridge/LuaBinding.h"

#include <cmath>
#include <exception>

LuaTestState::LuaTestState()
{
    GameObject::RegisterComponentProperties();
    L = luaL_newstate();
    luaL_openlibs(L);
    luabridge::LuaBinding::Get().BindAll(L);
}

LuaTestState::~LuaTestState()
{
    lua_close(L);
}

namespace
{
std::string ErrorText(lua_State* L)
{
    const char* text = lua_tostring(L, -1);
    std::string message = text ? text : "(error without text)";
    lua_pop(L, 1);
    return message.empty() ? "(empty error)" : message;
}
}

std::string LuaTestState::Run(const std::string& code)
{
    if (luaL_loadbuffer(L, code.data(), code.size(), "test") != 0)
        return ErrorText(L);
    if (lua_pcall(L, 0, 0, 0) != 0)
        return ErrorText(L);
    return "";
}

std::string LuaTestState::RunFile(const std::string& name)
{
    const std::string path = std::string(VORN_TEST_DATA_DIR) + "/lua/" + name;
    if (luaL_loadfile(L, path.c_str()) != 0)
        return ErrorText(L);
    if (lua_pcall(L, 0, LUA_MULTRET, 0) != 0)
        return ErrorText(L);
    return "";
}

double LuaTestState::Number(const std::string& expression)
{
    const std::string code = "return " + expression;
    if (luaL_loadbuffer(L, code.data(), code.size(), "test") != 0 || lua_pcall(L, 0, 1, 0) != 0)
    {
        ADD_FAILURE() << ErrorText(L);
        return std::nan("");
    }
    const double value = lua_type(L, -1) == LUA_TNUMBER ? lua_tonumber(L, -1) : std::nan("");
    lua_pop(L, 1);
    return value;
}

std::string LuaTestState::Text(const std::string& expression)
{
    const std::string code = "return " + expression;
    if (luaL_loadbuffer(L, code.data(), code.size(), "test") != 0 || lua_pcall(L, 0, 1, 0) != 0)
        return "error: " + ErrorText(L);
    std::string value;
    if (lua_type(L, -1) == LUA_TSTRING)
        value = lua_tostring(L, -1);
    else
        value = lua_typename(L, lua_type(L, -1));
    lua_pop(L, 1);
    return value;
}

double LuaTestState::FieldNumber(const char* name)
{
    lua_getfield(L, -1, name);
    const double value = lua_type(L, -1) == LUA_TNUMBER ? lua_tonumber(L, -1) : std::nan("");
    lua_pop(L, 1);
    return value;
}

std::string LuaTestState::FieldText(const char* name)
{
    lua_getfield(L, -1, name);
    std::string value = lua_type(L, -1) == LUA_TSTRING ? lua_tostring(L, -1) : lua_typename(L, lua_type(L, -1));
    lua_pop(L, 1);
    return value;
}

bool LuaTestState::FieldBool(const char* name)
{
    lua_getfield(L, -1, name);
    const bool value = lua_toboolean(L, -1) != 0;
    lua_pop(L, 1);
    return value;
}
