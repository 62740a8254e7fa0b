// KeeperQueue: the first-in first-out queue of one linda slot, kept as a Lua table in the keeper.
// Values sit at integer indices from the head to the tail; the head and the tail are stored in the
// table too, so that taking from the front moves nothing. Every function works on the queue table
// at `queue` of the keeper K and is called with the keeper mutex held.
#pragma once

#include <lua.hpp>

namespace Lanes
{
// Pushes the queue of the slot whose key is on top of K (popping the key), inside the slots table at
// `slots`; a missing queue is made when `create` is set, otherwise nil is pushed.
void PushQueue(lua_State* K, int slots, bool create);
// How many values the queue holds.
int QueueCount(lua_State* K, int queue);
// Appends the n values on top of K to the queue, in order, popping them.
void QueuePush(lua_State* K, int queue, int n);
// Pushes the value at the front (position 0) or further back, without taking it; nil when there is none.
void QueuePeek(lua_State* K, int queue, int position);
// Takes the value at the front and pushes it; false (nothing pushed) when the queue is empty.
bool QueuePop(lua_State* K, int queue);
// Empties the queue.
void QueueClear(lua_State* K, int queue);
}
