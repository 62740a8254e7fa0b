// A Lua state of its own for a binding test: the standard libraries and every
// registered class bound. Run() runs a chunk under pcall and gives the error
// text ("" when it ran); RunFile() does the same for a file of tests/data/lua/.
// Number() and Text() evaluate an expression.
#pragma once

#include "utilities/lua/luabridge/Stack.h"

#include <lua.hpp>

#include <gtest/gtest.h>

#include <string>

class LuaTestState : public testing::Test
{
protected:
    LuaTestState();
    ~LuaTestState() override;

    // Runs `code`; "" when it ran, else the error message.
    std::string Run(const std::string& code);
    // Runs tests/data/lua/<name>; "" when it ran, else the error message. Its results stay on the stack.
    std::string RunFile(const std::string& name);
    // The number `expression` gives (NaN on error).
    double Number(const std::string& expression);
    // The string `expression` gives, or "error: ..." / "nil" / "<type>".
    std::string Text(const std::string& expression);
    // Field `name` of the table on top of the stack, as a number (NaN when it is none).
    double FieldNumber(const char* name);
    // Field `name` of the table on top of the stack, as a string, or the name of its type.
    std::string FieldText(const char* name);
    // Field `name` of the table on top of the stack, as a boolean.
    bool FieldBool(const char* name);
    // Sets global `name` to a reference to `object` of class T.
    template <class T>
    void SetGlobal(const char* name, T* object)
    {
        luabridge::Stack<T*>::Push(L, object);
        lua_setglobal(L, name);
    }

    lua_State* L = nullptr;
};
