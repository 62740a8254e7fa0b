// The light-userdata keys of the binding. Each bound class keeps three tables in
// the Lua registry (its class table, the metatable of mutable instances; its
// const table, the metatable of const instances; its static table, the global
// that scripts name) under the addresses of the bytes of one static ClassKeys
// per class, plus a fourth, the metatable of value members handed out by
// reference. Inside every class table a few well-known keys, unique for the
// whole program, lead to the getter table, the setter table, the parent table,
// the dynamic-property hook and the class's registry record.
#pragma once

namespace luabridge::detail
{
// The registry keys of one class: the addresses of these bytes.
struct ClassKeys
{
    // Key of the class table.
    char m_Class = 0;
    // Key of the const table.
    char m_Const = 0;
    // Key of the static table.
    char m_Static = 0;
    // Key of the metatable of value members returned by reference.
    char m_Reference = 0;
};

// The keys of class T.
template <class T>
ClassKeys& KeysOf()
{
    static ClassKeys keys;
    return keys;
}

// The registry key of T's class table.
template <class T>
const void* ClassKey()
{
    return &KeysOf<T>().m_Class;
}

// The const-table key that belongs to a class-table key.
inline const void* ConstKeyOf(const void* classKey)
{
    return static_cast<const char*>(classKey) + 1;
}
// The static-table key that belongs to a class-table key.
inline const void* StaticKeyOf(const void* classKey)
{
    return static_cast<const char*>(classKey) + 2;
}
// The key of the value-member metatable that belongs to a class-table key.
inline const void* ReferenceKeyOf(const void* classKey)
{
    return static_cast<const char*>(classKey) + 3;
}

// Key of the getter table inside a class, const or static table.
inline const void* PropGetKey()
{
    static const char key = 0;
    return &key;
}
// Key of the setter table inside a class or static table.
inline const void* PropSetKey()
{
    static const char key = 0;
    return &key;
}
// Key of the parent link: the base class's table of the same kind.
inline const void* ParentKey()
{
    static const char key = 0;
    return &key;
}
// Key of the dynamic-property hook inside a getter or setter table.
inline const void* DynamicKey()
{
    static const char key = 0;
    return &key;
}
// Key of the class's registry record (a light userdata of its Meta::Data) inside its tables.
inline const void* TypeKey()
{
    static const char key = 0;
    return &key;
}
}
