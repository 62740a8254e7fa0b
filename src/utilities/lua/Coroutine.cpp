#include "utilities/lua/Coroutine.h"

#include "utilities/Meta/Registration.h"

#include <lua.hpp>

#include <cstdio>

Coroutine::Coroutine(lua_State* main, lua_State* caller) : m_Main(main)
{
    lua_xmove(caller, main, 1);
    m_Function = luaL_ref(main, LUA_REGISTRYINDEX);
    lua_State* thread = lua_newthread(main);
    lua_rawgeti(main, LUA_REGISTRYINDEX, m_Function);
    lua_xmove(main, thread, 1);
    m_Thread = luaL_ref(main, LUA_REGISTRYINDEX);
}

Coroutine::Coroutine(const Coroutine& other)
{
    CopyFrom(other);
}

Coroutine& Coroutine::operator=(const Coroutine& other)
{
    if (this != &other)
    {
        Release();
        CopyFrom(other);
    }
    return *this;
}

Coroutine::~Coroutine()
{
    Release();
}

void Coroutine::Release()
{
    if (!m_Main)
        return;
    luaL_unref(m_Main, LUA_REGISTRYINDEX, m_Thread);
    luaL_unref(m_Main, LUA_REGISTRYINDEX, m_Function);
    m_Thread = m_Function = -1;
}

void Coroutine::CopyFrom(const Coroutine& other)
{
    m_Main = other.m_Main;
    loop = other.loop;
    m_Dead = other.m_Dead;
    m_Made = other.m_Made;
    m_Thread = m_Function = -1;
    if (!m_Main)
        return;
    lua_rawgeti(m_Main, LUA_REGISTRYINDEX, other.m_Thread);
    m_Thread = luaL_ref(m_Main, LUA_REGISTRYINDEX);
    lua_rawgeti(m_Main, LUA_REGISTRYINDEX, other.m_Function);
    m_Function = luaL_ref(m_Main, LUA_REGISTRYINDEX);
}

int Coroutine::resume(lua_State* L)
{
    if (m_Dead)
        return kDead;
    lua_State* thread = nullptr;
    if (m_Main)
    {
        // The thread stays alive through m_Thread once popped.
        lua_rawgeti(m_Main, LUA_REGISTRYINDEX, m_Thread);
        thread = lua_tothread(m_Main, -1);
        lua_pop(m_Main, 1);
    }
    if (!thread)
    {
        std::printf("Lua Error: Coroutine does not exist!\n");
        std::fflush(stdout);
        return kFinished;
    }

    // Only a suspended thread can run: fresh (its body alone on the stack) or yielded. Resuming any
    // other is the run-time error lua_resume itself would give, raised here before its stack is
    // touched: a running thread's stack belongs to the code running on it.
    const char* refusal = nullptr;
    const int threadStatus = lua_status(thread);
    lua_Debug frame;
    if (threadStatus == 0 && lua_getstack(thread, 0, &frame) > 0)
        refusal = "cannot resume non-suspended coroutine";
    else if (threadStatus > LUA_YIELD || (threadStatus == 0 && lua_gettop(thread) == 0))
        refusal = "cannot resume dead coroutine";
    if (refusal)
    {
        lua_pushstring(thread, refusal);
        ReportError(L, thread);
        return LUA_ERRRUN;
    }

    // A fresh thread keeps its body alone below the arguments; a yielded one drops what it yielded.
    lua_settop(thread, threadStatus == LUA_YIELD ? 0 : 1);
    const int arguments = lua_gettop(L) > 1 ? lua_gettop(L) - 1 : 0;
    if (!lua_checkstack(thread, arguments + LUA_MINSTACK))
    {
        lua_pushstring(thread, "stack overflow (too many arguments to resume)");
        ReportError(L, thread);
        return LUA_ERRRUN;
    }
    lua_xmove(L, thread, arguments);

    const int status = lua_resume(thread, arguments);
    if (status == 0)
    {
        // The body returned: drop its results and, to loop, put the body back for the next start.
        lua_settop(thread, 0);
        if (loop)
        {
            lua_rawgeti(m_Main, LUA_REGISTRYINDEX, m_Function);
            lua_xmove(m_Main, thread, 1);
        }
    }
    else if (status != LUA_YIELD)
    {
        ReportError(L, thread);
    }
    return status;
}

void Coroutine::ReportError(lua_State* L, lua_State* thread)
{
    const char* message = lua_gettop(thread) > 0 ? lua_tostring(thread, -1) : nullptr;
    luaL_traceback(L, thread, message ? message : "(error object is not a string)", 0);
    std::printf("Lua Error: %s\n", lua_tostring(L, -1));
    std::fflush(stdout);
    lua_pop(L, 1);
    m_Dead = true;
}

META_REGISTER(Coroutine)
{
    DESCRIPTION("A Lua function run step by step: MakeCoroutine(f) makes one, co:resume(...) runs it to its next "
                "yield or its end.");
    MEMBER_FLAGS(loop, false, true, "When the body returns, the next resume starts it over.");
}
