#include "utilities/lua/luabridge/detail/DirectFloat.h"

#include "utilities/lua/luabridge/detail/Userdata.h"

#include <array>
#include <cstdint>
#include <utility>

namespace luabridge::detail
{
namespace
{
// Offsets 0 to 252 bytes, in steps of a float.
constexpr int kSlots = 64;

// The float at byte `offset` of the object at `index`, or null when the value there is no object.
inline float* FloatAt(lua_State* L, int index, std::ptrdiff_t offset)
{
    if (lua_type(L, index) != LUA_TUSERDATA)
        return nullptr;
    auto* userdata = static_cast<Userdata*>(lua_touserdata(L, index));
    return userdata->p ? reinterpret_cast<float*>(static_cast<char*>(userdata->p) + offset) : nullptr;
}

// The float at byte `offset` of the object at `index`, known to be a bound object; null when it holds none.
inline float* KnownFloatAt(lua_State* L, int index, std::ptrdiff_t offset)
{
    auto* userdata = static_cast<Userdata*>(lua_touserdata(L, index));
    return userdata->p ? reinterpret_cast<float*>(static_cast<char*>(userdata->p) + offset) : nullptr;
}

// The float at byte `offset` of the bound object at `index` (checked to be one), or null.
inline float* CheckedFloatAt(lua_State* L, int index, std::ptrdiff_t offset)
{
    return UserdataAt(L, index) ? FloatAt(L, index, offset) : nullptr;
}

// The metamethods read these fields in place; the functions themselves only run when a script calls them
// directly, so they check their object fully.
template <int K>
int GetFloatAt(lua_State* L)
{
    float* field = CheckedFloatAt(L, 1, K * static_cast<std::ptrdiff_t>(sizeof(float)));
    if (!field)
        return 0;
    lua_pushnumber(L, *field);
    return 1;
}

template <int K>
int SetFloatAt(lua_State* L)
{
    float* field = CheckedFloatAt(L, 1, K * static_cast<std::ptrdiff_t>(sizeof(float)));
    if (!field)
        return 0;
    if (lua_type(L, 2) != LUA_TNUMBER)
        return luaL_error(L, "a number field can't take a value of type %s", luaL_typename(L, 2));
    *field = static_cast<float>(lua_tonumber(L, 2));
    return 0;
}

// One plain function and the offset it serves.
struct Entry
{
    lua_CFunction function;
    std::ptrdiff_t offset;
};

template <std::size_t... K>
std::array<Entry, kSlots> Getters(std::index_sequence<K...>)
{
    return {Entry{&GetFloatAt<static_cast<int>(K)>, static_cast<std::ptrdiff_t>(K * sizeof(float))}...};
}

template <std::size_t... K>
std::array<Entry, kSlots> Setters(std::index_sequence<K...>)
{
    return {Entry{&SetFloatAt<static_cast<int>(K)>, static_cast<std::ptrdiff_t>(K * sizeof(float))}...};
}

// The table by offset, and an open-addressed index by function address, so that telling whether a function is
// one of these takes one probe as a rule.
struct Tables
{
    static constexpr std::size_t kBuckets = 256;
    std::array<Entry, kSlots> byOffset;
    std::array<const Entry*, kBuckets> byFunction{};

    static std::size_t Bucket(lua_CFunction function)
    {
        const auto bits = reinterpret_cast<std::uintptr_t>(function);
        return static_cast<std::size_t>((bits >> 4) ^ (bits >> 12)) % kBuckets;
    }
    explicit Tables(std::array<Entry, kSlots> entries) : byOffset(entries)
    {
        for (const Entry& entry : byOffset)
        {
            std::size_t bucket = Bucket(entry.function);
            while (byFunction[bucket])
                bucket = (bucket + 1) % kBuckets;
            byFunction[bucket] = &entry;
        }
    }
    const Entry* Find(lua_CFunction function) const
    {
        for (std::size_t bucket = Bucket(function);; bucket = (bucket + 1) % kBuckets)
        {
            const Entry* entry = byFunction[bucket];
            if (!entry || entry->function == function)
                return entry;
        }
    }
};

const Tables& GetterTables()
{
    static const Tables tables(Getters(std::make_index_sequence<kSlots>()));
    return tables;
}

const Tables& SetterTables()
{
    static const Tables tables(Setters(std::make_index_sequence<kSlots>()));
    return tables;
}

lua_CFunction ForOffset(const Tables& tables, std::ptrdiff_t offset)
{
    if (offset < 0 || offset % static_cast<std::ptrdiff_t>(sizeof(float)) != 0 ||
        offset / static_cast<std::ptrdiff_t>(sizeof(float)) >= kSlots)
        return nullptr;
    return tables.byOffset[static_cast<std::size_t>(offset / static_cast<std::ptrdiff_t>(sizeof(float)))].function;
}
}

lua_CFunction DirectFloatGetter(std::ptrdiff_t offset)
{
    return ForOffset(GetterTables(), offset);
}

lua_CFunction DirectFloatSetter(std::ptrdiff_t offset)
{
    return ForOffset(SetterTables(), offset);
}

bool GetFloatDirect(lua_State* L, lua_CFunction getter, int object, bool knownObject)
{
    const Entry* entry = GetterTables().Find(getter);
    if (!entry)
        return false;
    if (float* field = knownObject ? KnownFloatAt(L, object, entry->offset) : FloatAt(L, object, entry->offset))
        lua_pushnumber(L, *field);
    else
        lua_pushnil(L);
    return true;
}

bool SetFloatDirect(lua_State* L, lua_CFunction setter, int object, int key, int value, bool knownObject)
{
    const Entry* entry = SetterTables().Find(setter);
    if (!entry)
        return false;
    float* field = knownObject ? KnownFloatAt(L, object, entry->offset) : FloatAt(L, object, entry->offset);
    if (!field)
        return true;
    if (lua_type(L, value) != LUA_TNUMBER)
        luaL_error(L, "'%s' can't take a value of type %s", lua_tostring(L, key), luaL_typename(L, value));
    *field = static_cast<float>(lua_tonumber(L, value));
    return true;
}
}
