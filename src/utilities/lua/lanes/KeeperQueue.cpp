#include "utilities/lua/lanes/KeeperQueue.h"

namespace Lanes
{
namespace
{
// The head (index of the first value) and the tail (index after the last) live under these keys.
const char* const kHead = "head";
const char* const kTail = "tail";

int ReadIndex(lua_State* K, int queue, const char* field)
{
    lua_getfield(K, queue, field);
    int value = static_cast<int>(lua_tointeger(K, -1));
    lua_pop(K, 1);
    return value;
}

void WriteIndex(lua_State* K, int queue, const char* field, int value)
{
    lua_pushinteger(K, value);
    lua_setfield(K, queue, field);
}
}

void PushQueue(lua_State* K, int slots, bool create)
{
    lua_pushvalue(K, -1);
    lua_rawget(K, slots);
    if (!lua_isnil(K, -1) || !create)
    {
        lua_remove(K, -2);
        return;
    }
    lua_pop(K, 1);
    lua_newtable(K);
    WriteIndex(K, lua_gettop(K), kHead, 1);
    WriteIndex(K, lua_gettop(K), kTail, 1);
    lua_pushvalue(K, -2);
    lua_pushvalue(K, -2);
    lua_rawset(K, slots);
    lua_remove(K, -2);
}

int QueueCount(lua_State* K, int queue)
{
    return ReadIndex(K, queue, kTail) - ReadIndex(K, queue, kHead);
}

void QueuePush(lua_State* K, int queue, int n)
{
    int tail = ReadIndex(K, queue, kTail);
    int first = lua_gettop(K) - n + 1;
    for (int i = 0; i < n; ++i)
    {
        lua_pushvalue(K, first + i);
        lua_rawseti(K, queue, tail + i);
    }
    WriteIndex(K, queue, kTail, tail + n);
    lua_pop(K, n);
}

void QueuePeek(lua_State* K, int queue, int position)
{
    if (position >= QueueCount(K, queue))
    {
        lua_pushnil(K);
        return;
    }
    lua_rawgeti(K, queue, ReadIndex(K, queue, kHead) + position);
}

bool QueuePop(lua_State* K, int queue)
{
    int head = ReadIndex(K, queue, kHead);
    int tail = ReadIndex(K, queue, kTail);
    if (head >= tail)
        return false;
    lua_rawgeti(K, queue, head);
    lua_pushnil(K);
    lua_rawseti(K, queue, head);
    if (head + 1 == tail)
    {
        // Empty again: start over at 1, so the indices stay small.
        WriteIndex(K, queue, kHead, 1);
        WriteIndex(K, queue, kTail, 1);
    }
    else
    {
        WriteIndex(K, queue, kHead, head + 1);
    }
    return true;
}

void QueueClear(lua_State* K, int queue)
{
    while (QueuePop(K, queue))
        lua_pop(K, 1);
}
}
