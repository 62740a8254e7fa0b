// The methods of a linda as scripts call them: send, receive, set, get and count. Each takes the
// keeper mutex, copies values between the calling state and the keeper with luaG_inter_move, and
// raises its Lua errors only once the mutex is released. A first argument after the linda that is
// nil or a number (with more arguments after it) is a timeout in seconds.
#include "utilities/lua/lanes/KeeperQueue.h"
#include "utilities/lua/lanes/Lane.h"
#include "utilities/lua/lanes/Lanes.h"
#include "utilities/lua/lanes/Linda.h"
#include "utilities/lua/lanes/Universe.h"

#include <cmath>
#include <mutex>
#include <string>

namespace Lanes
{
namespace
{
// The most values one get may return.
constexpr int kMostGet = 1000;

// Raises an error unless the value at `index` can be a slot key: a string, a number (not NaN) or a boolean.
void CheckKey(lua_State* L, int index, const char* where)
{
    int type = lua_type(L, index);
    if (type == LUA_TSTRING || type == LUA_TBOOLEAN)
        return;
    if (type == LUA_TNUMBER && !std::isnan(lua_tonumber(L, index)))
        return;
    if (type == LUA_TNONE)
        luaL_error(L, "%s: a key is missing", where);
    luaL_error(L, "%s: a key must be a string, a number or a boolean, not a %s", where,
               type == LUA_TNUMBER ? "NaN" : lua_typename(L, type));
}

// Pushes onto the keeper a copy of the key at `index` of L.
void PushKey(lua_State* L, int index, lua_State* K)
{
    switch (lua_type(L, index))
    {
    case LUA_TSTRING:
    {
        size_t length = 0;
        const char* text = lua_tolstring(L, index, &length);
        lua_pushlstring(K, text, length);
        break;
    }
    case LUA_TNUMBER:
        lua_pushnumber(K, lua_tonumber(L, index));
        break;
    default:
        lua_pushboolean(K, lua_toboolean(L, index));
        break;
    }
}

// Checks the linda argument, and refuses a call made while this thread is inside another linda call.
Linda* Enter(lua_State* L, const char* where)
{
    Linda* linda = CheckLinda(L, 1, where);
    if (KeeperLock::HeldHere())
        luaL_error(L, "%s: a linda cannot be used by a finalizer that runs during another linda call", where);
    return linda;
}

// The index of the first key: 3 when argument 2 is a timeout, otherwise 2.
int FirstKey(lua_State* L)
{
    if (lua_gettop(L) >= 3 && (lua_isnil(L, 2) || lua_type(L, 2) == LUA_TNUMBER))
        return 3;
    return 2;
}

// Copies the values from `first` to the top of L, in order, onto the keeper's stack. False with the reason on failure.
bool CopyToKeeper(lua_State* L, int first, lua_State* K, std::string* error)
{
    int top = lua_gettop(L);
    int n = top - first + 1;
    if (n <= 0)
        return true;
    if (!lua_checkstack(L, n))
    {
        *error = "too many values";
        return false;
    }
    for (int i = first; i <= top; ++i)
        lua_pushvalue(L, i);
    if (luaG_inter_move(&Universe::Process(), L, K, n, error) != 0)
    {
        lua_settop(L, top);
        return false;
    }
    return true;
}

// Copies the values behind the key at `key` of L into the linda's slot of that key, under the
// keeper's lock: appended to the queue, or in place of what it held when `replace`. False, with
// the reason in *error, when a value cannot cross.
bool Store(lua_State* L, Linda* linda, int key, bool replace, std::string* error)
{
    Universe& U = Universe::Process();
    KeeperLock lock(U);
    lua_State* K = U.Keeper();
    const int base = lua_gettop(K);
    U.PushLindaSlots(linda);
    PushKey(L, key, K);
    PushQueue(K, base + 1, true);
    const int before = lua_gettop(K);
    const bool stored = CopyToKeeper(L, key + 1, K, error);
    if (stored)
    {
        if (replace)
            QueueClear(K, base + 2);
        QueuePush(K, base + 2, lua_gettop(K) - before);
    }
    lua_settop(K, base);
    return stored;
}

int Send(lua_State* L)
{
    Linda* linda = Enter(L, "linda:send");
    int key = FirstKey(L);
    if (key == 3)
        CheckTimeout(L, 2, "linda:send");
    CheckKey(L, key, "linda:send");
    if (lua_gettop(L) <= key)
        return luaL_error(L, "linda:send: there is no value to send");
    for (int i = key + 1; i <= lua_gettop(L); ++i)
        if (lua_isnil(L, i))
            return luaL_error(L, "linda:send: nil cannot be sent (value %d)", i - key);
    CheckCancel(L);

    std::string error;
    if (!Store(L, linda, key, false, &error))
        return luaL_error(L, "linda:send: %s", error.c_str());
    linda->Changed().notify_all();
    lua_pushboolean(L, 1);
    return 1;
}

int Receive(lua_State* L)
{
    Linda* linda = Enter(L, "linda:receive");
    int first = FirstKey(L);
    std::optional<Clock::time_point> deadline;
    if (first == 3)
        deadline = CheckTimeout(L, 2, "linda:receive");
    int last = lua_gettop(L);
    if (last < first)
        return luaL_error(L, "linda:receive: a key is missing");
    for (int i = first; i <= last; ++i)
        CheckKey(L, i, "linda:receive");
    CheckCancel(L);

    Universe& U = Universe::Process();
    Lane* lane = Lane::Current();
    std::string error;
    int found = 0;
    bool cancelled = false;
    {
        KeeperLock lock(U);
        for (;;)
        {
            lua_State* K = U.Keeper();
            int base = lua_gettop(K);
            U.PushLindaSlots(linda);
            for (int i = first; i <= last && found == 0 && error.empty(); ++i)
            {
                PushKey(L, i, K);
                PushQueue(K, base + 1, false);
                if (!lua_isnil(K, -1) && QueueCount(K, base + 2) > 0)
                {
                    QueuePeek(K, base + 2, 0);
                    if (luaG_inter_move(&U, K, L, 1, &error) == 0)
                    {
                        QueuePop(K, base + 2);
                        found = i;
                    }
                }
                lua_settop(K, base + 1);
            }
            lua_settop(K, base);
            if (found != 0 || !error.empty())
                break;
            if (lane && lane->CancelRequested())
            {
                cancelled = true;
                break;
            }
            if (deadline && Clock::now() >= *deadline)
                break;
            if (lane)
                lane->SetWaitingOn(&linda->Changed());
            if (deadline)
                linda->Changed().wait_until(lock.Lock(), *deadline);
            else
                linda->Changed().wait(lock.Lock());
            if (lane)
                lane->SetWaitingOn(nullptr);
        }
    }
    if (cancelled)
    {
        PushCancelError(L);
        return lua_error(L);
    }
    if (!error.empty())
        return luaL_error(L, "linda:receive: %s", error.c_str());
    if (found == 0)
    {
        lua_pushnil(L);
        return 1;
    }
    lua_pushvalue(L, found);
    lua_insert(L, -2);
    return 2;
}

int Set(lua_State* L)
{
    Linda* linda = Enter(L, "linda:set");
    CheckKey(L, 2, "linda:set");
    if (lua_gettop(L) == 3 && lua_isnil(L, 3))
        lua_settop(L, 2);
    for (int i = 3; i <= lua_gettop(L); ++i)
        if (lua_isnil(L, i))
            return luaL_error(L, "linda:set: nil cannot be stored (value %d)", i - 2);
    CheckCancel(L);

    std::string error;
    if (!Store(L, linda, 2, true, &error))
        return luaL_error(L, "linda:set: %s", error.c_str());
    linda->Changed().notify_all();
    return 0;
}

int Get(lua_State* L)
{
    Linda* linda = Enter(L, "linda:get");
    CheckKey(L, 2, "linda:get");
    int count = 1;
    if (!lua_isnoneornil(L, 3))
    {
        lua_Number asked = luaL_checknumber(L, 3);
        if (!(asked >= 1))
            return luaL_error(L, "linda:get: the count must be at least 1");
        count = asked > kMostGet ? kMostGet : static_cast<int>(asked);
    }
    CheckCancel(L);
    if (!lua_checkstack(L, count + 1))
        return luaL_error(L, "linda:get: too many values");

    Universe& U = Universe::Process();
    std::string error;
    int got = 0;
    {
        KeeperLock lock(U);
        lua_State* K = U.Keeper();
        int base = lua_gettop(K);
        U.PushLindaSlots(linda);
        PushKey(L, 2, K);
        PushQueue(K, base + 1, false);
        if (!lua_isnil(K, -1))
        {
            int available = QueueCount(K, base + 2);
            got = available < count ? available : count;
            if (!lua_checkstack(K, got + 1))
                got = 0;
            for (int i = 0; i < got; ++i)
                QueuePeek(K, base + 2, i);
            if (got > 0 && luaG_inter_move(&U, K, L, got, &error) != 0)
                got = 0;
        }
        lua_settop(K, base);
    }
    if (!error.empty())
        return luaL_error(L, "linda:get: %s", error.c_str());
    if (got == 0)
    {
        lua_pushnil(L);
        return 1;
    }
    return got;
}

int Count(lua_State* L)
{
    Linda* linda = Enter(L, "linda:count");
    CheckKey(L, 2, "linda:count");
    CheckCancel(L);
    Universe& U = Universe::Process();
    int count = 0;
    {
        KeeperLock lock(U);
        lua_State* K = U.Keeper();
        int base = lua_gettop(K);
        U.PushLindaSlots(linda);
        PushKey(L, 2, K);
        PushQueue(K, base + 1, false);
        if (!lua_isnil(K, -1))
            count = QueueCount(K, base + 2);
        lua_settop(K, base);
    }
    lua_pushinteger(L, count);
    return 1;
}

const luaL_Reg kMethods[] = {
    {"send", Send}, {"receive", Receive}, {"set", Set}, {"get", Get}, {"count", Count}, {nullptr, nullptr},
};
}

const luaL_Reg* LindaMethods()
{
    return kMethods;
}
}
