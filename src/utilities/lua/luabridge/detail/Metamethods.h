// The metamethods shared by every bound class.
//
// Instance __index(object, key [, wantReference]) looks the key up in the
// object's metatable (only C functions may stand there), then asks the class's
// dynamic-property hook, then the getter table, and walks up through the parent
// tables; an unknown key reads as nil. With a third argument true it returns a
// property reference instead: a table that remembers the object and a path of
// keys, read with __copy and written with assign.
//
// Instance __newindex(object, key, value) finds a setter on the way up (a setter
// that answers false passes the write on to the parent), falls back to the
// class's dynamic-property hook, and otherwise raises "no member named '%s'".
//
// The static kind serves the static tables (the globals scripts name), property
// references and value members: with a third argument true it extends a
// reference's path; writes need a setter somewhere up the chain, otherwise
// "no writable variable '%s'".
#pragma once

#include <lua.hpp>

namespace luabridge::detail
{
// __index of class and const tables.
int InstanceIndex(lua_State* L);
// __newindex of class tables.
int InstanceNewIndex(lua_State* L);
// __index of static tables, property references and value members.
int StaticIndex(lua_State* L);
// __newindex of static tables and property references.
int StaticNewIndex(lua_State* L);
// __gc of class and const tables: destroys the Userdata in place.
int CollectUserdata(lua_State* L);
// __copy of a property reference: the value at the end of its path.
int PropertyReferenceCopy(lua_State* L);
// assign(reference, value) of a property reference: writes the value at the end of its path.
int PropertyReferenceAssign(lua_State* L);
// Sets the __index and __newindex of the finished class or const table at `table` to closures that hold its
// own getter and setter tables, which answer the common case (a getter or setter of the class itself) with
// fewer table look-ups; anything else goes the general way.
void SetInstanceLookups(lua_State* L, int table);
// Pushes a closure that raises "'name' is read-only".
void PushReadOnlySetter(lua_State* L, const char* name);
// Pushes a new property reference to key `keyIndex` of the object at `objectIndex`.
void PushPropertyReference(lua_State* L, int objectIndex, int keyIndex);
}
