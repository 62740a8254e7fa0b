#include "utilities/lua/luabridge/Binders.h"

#include "utilities/Meta/ClassInfo.h"
#include "utilities/Meta/EnumMeta.h"
#include "utilities/Meta/Member.h"
#include "utilities/Meta/Method.h"
#include "utilities/Meta/Property.h"
#include "utilities/lua/luabridge/detail/ClassScope.h"
#include "utilities/lua/luabridge/detail/Metamethods.h"

#include <functional>
#include <string>

namespace luabridge::detail
{
namespace
{
// t[key] = value on top, for a light-userdata key; pops the value.
void RawSetKey(lua_State* L, int table, const void* key)
{
    lua_pushlightuserdata(L, const_cast<void*>(key));
    lua_insert(L, -2);
    lua_rawset(L, table);
}

// Pushes registry[key].
void RegistryGet(lua_State* L, const void* key)
{
    lua_pushlightuserdata(L, const_cast<void*>(key));
    lua_rawget(L, LUA_REGISTRYINDEX);
}

// registry[key] = value at `index`.
void RegistrySet(lua_State* L, const void* key, int index)
{
    lua_pushlightuserdata(L, const_cast<void*>(key));
    lua_pushvalue(L, index);
    lua_rawset(L, LUA_REGISTRYINDEX);
}

// Makes the metatable of instances: __type, the metamethods and the identifying record.
void NewInstanceTable(lua_State* L, const std::string& type, Meta::Data& data)
{
    lua_newtable(L);
    lua_pushlstring(L, type.data(), type.size());
    lua_setfield(L, -2, "__type");
    lua_pushcfunction(L, &InstanceIndex);
    lua_setfield(L, -2, "__index");
    lua_pushcfunction(L, &InstanceNewIndex);
    lua_setfield(L, -2, "__newindex");
    lua_pushcfunction(L, &CollectUserdata);
    lua_setfield(L, -2, "__gc");
    lua_pushlightuserdata(L, &data);
    RawSetKey(L, lua_gettop(L) - 1, TypeKey());
}

// Links the table at `table` to `parent` (when it is a table) as its parent.
void LinkParent(lua_State* L, int table, int parent)
{
    if (!lua_istable(L, parent))
        return;
    lua_pushvalue(L, parent);
    lua_setfield(L, table, "__parent");
    lua_pushvalue(L, parent);
    RawSetKey(L, table, ParentKey());
}

// Pushes const table, class table, static metatable and static table of `data`, made when missing.
void OpenTables(Namespace& scope, Meta::Data& data, const void* classKey, const void* parentKey)
{
    lua_State* L = scope.L;
    const std::string& name = data.m_Name;
    RegistryGet(L, classKey);
    if (lua_istable(L, -1))
    {
        lua_pop(L, 1);
        RegistryGet(L, ConstKeyOf(classKey));
        RegistryGet(L, classKey);
        RegistryGet(L, StaticKeyOf(classKey));
        lua_getmetatable(L, -1);
        lua_insert(L, -2);
        scope.Pushed(4);
    }
    else
    {
        lua_pop(L, 1);
        NewInstanceTable(L, "const " + name, data);
        const int constTable = lua_gettop(L);
        lua_newtable(L);
        RawSetKey(L, constTable, PropGetKey());

        NewInstanceTable(L, name, data);
        const int classTable = lua_gettop(L);
        lua_pushlightuserdata(L, const_cast<void*>(PropGetKey()));
        lua_rawget(L, constTable);
        RawSetKey(L, classTable, PropGetKey());
        lua_newtable(L);
        RawSetKey(L, classTable, PropSetKey());
        lua_pushvalue(L, constTable);
        lua_setfield(L, classTable, "__const");
        lua_pushvalue(L, classTable);
        lua_setfield(L, constTable, "__class");

        lua_newtable(L);
        const int staticMeta = lua_gettop(L);
        lua_pushlstring(L, name.data(), name.size());
        lua_setfield(L, staticMeta, "__type");
        lua_pushcfunction(L, &StaticIndex);
        lua_setfield(L, staticMeta, "__index");
        lua_pushcfunction(L, &StaticNewIndex);
        lua_setfield(L, staticMeta, "__newindex");
        lua_newtable(L);
        RawSetKey(L, staticMeta, PropGetKey());
        lua_newtable(L);
        RawSetKey(L, staticMeta, PropSetKey());
        lua_pushvalue(L, classTable);
        lua_setfield(L, staticMeta, "__class");

        lua_newtable(L);
        const int staticTable = lua_gettop(L);
        lua_pushvalue(L, staticMeta);
        lua_setmetatable(L, staticTable);
        scope.Pushed(4);

        if (parentKey)
        {
            RegistryGet(L, parentKey);
            LinkParent(L, classTable, lua_gettop(L));
            lua_pop(L, 1);
            RegistryGet(L, ConstKeyOf(parentKey));
            LinkParent(L, constTable, lua_gettop(L));
            lua_pop(L, 1);
            RegistryGet(L, StaticKeyOf(parentKey));
            if (lua_istable(L, -1) && lua_getmetatable(L, -1))
            {
                LinkParent(L, staticMeta, lua_gettop(L));
                lua_pop(L, 1);
            }
            lua_pop(L, 1);
        }
        RegistrySet(L, classKey, classTable);
        RegistrySet(L, ConstKeyOf(classKey), constTable);
        RegistrySet(L, StaticKeyOf(classKey), staticTable);
    }
    lua_pushlstring(L, name.data(), name.size());
    lua_pushvalue(L, -2);
    lua_rawset(L, scope.Table());
}

// The watch closure: a table of the watched names of the object at argument 1 and their values.
int Watch(lua_State* L)
{
    auto* watch = static_cast<std::function<int(lua_State*)>*>(lua_touserdata(L, lua_upvalueindex(1)));
    return watch && *watch ? (*watch)(L) : 0;
}

int CollectWatch(lua_State* L)
{
    using Function = std::function<int(lua_State*)>;
    if (lua_type(L, 1) != LUA_TUSERDATA)
        return 0;
    auto* watch = static_cast<Function*>(lua_touserdata(L, 1));
    watch->~Function();
    // An empty function stays, so that a second __gc destroys nothing.
    new (watch) Function();
    return 0;
}

// Sets __towatch in the class and const tables: a closure over a userdata holding the watch function.
void SetWatch(ClassScope& scope, std::vector<std::string> names)
{
    lua_State* L = scope.L;
    using Function = std::function<int(lua_State*)>;
    void* memory = lua_newuserdata(L, sizeof(Function));
    new (memory) Function([names = std::move(names)](lua_State* state) {
        lua_createtable(state, 0, static_cast<int>(names.size()));
        for (const std::string& name : names)
        {
            lua_pushlstring(state, name.data(), name.size());
            lua_pushvalue(state, -1);
            lua_gettable(state, 1);
            lua_rawset(state, -3);
        }
        return 1;
    });
    lua_createtable(L, 0, 1);
    lua_pushcfunction(L, &CollectWatch);
    lua_setfield(L, -2, "__gc");
    lua_setmetatable(L, -2);
    lua_pushcclosure(L, &Watch, 1);
    lua_pushvalue(L, -1);
    lua_setfield(L, scope.m_Const, "__towatch");
    lua_setfield(L, scope.m_Class, "__towatch");
}
}

int Dispatch(lua_State* L, const Candidates& candidates)
{
    for (lua_CFunction candidate : candidates)
    {
        const int results = candidate(L);
        if (results >= 0)
            return results;
    }
    return -1;
}

int CallConstructors(lua_State* L)
{
    const auto* candidates = static_cast<const Candidates*>(lua_touserdata(L, lua_upvalueindex(1)));
    const int results = Dispatch(L, *candidates);
    return results < 0 ? 0 : results;
}

void SetCallDispatcher(lua_State* L, Candidates* candidates)
{
    lua_pushlightuserdata(L, candidates);
    lua_pushcclosure(L, &CallConstructors, 1);
    lua_setfield(L, -2, "__call");
}

void BindClass(Namespace& scope, Meta::Data& data, const void* classKey, const void* parentKey,
               const std::vector<std::shared_ptr<ConstructorBinder>>& constructors, Candidates& candidates)
{
    lua_State* L = scope.L;
    OpenTables(scope, data, classKey, parentKey);
    const int top = lua_gettop(L);
    ClassScope tables(L, data, top - 2, top - 3, top - 1);

    std::vector<std::string> watched;
    for (const auto& [name, property] : data.m_Properties.Items())
        if (property->m_Script)
        {
            property->RegisterLua(tables);
            if (property->m_Name != Meta::kNewPropertyName)
                watched.push_back(property->m_Name);
        }
    for (const auto& [name, member] : data.m_Members.Items())
        if (member->m_Script)
        {
            member->RegisterLua(tables);
            watched.push_back(member->m_Name);
        }
    for (const auto& [name, method] : data.m_Methods.Items())
        if (method->m_Script)
            method->RegisterLua(tables);
    for (const auto& [name, forms] : data.m_Overloads.Items())
    {
        if (forms->empty())
            continue;
        bool allConst = true;
        for (const auto& form : *forms)
            allConst = allConst && form->m_Const;
        lua_pushlightuserdata(L, forms.get());
        lua_pushcclosure(L, &CallOverloads, 1);
        if (forms->front()->IsStatic())
            tables.AddStaticFunction(name);
        else
            tables.AddMethod(name, allConst);
    }

    candidates.clear();
    lua_pushvalue(L, tables.m_Static);
    for (const auto& constructor : constructors)
        constructor->Bind(L);
    lua_pop(L, 1);

    SetWatch(tables, std::move(watched));
    SetInstanceLookups(L, tables.m_Class);
    SetInstanceLookups(L, tables.m_Const);
}
}

namespace luabridge
{
namespace
{
int PushInteger(lua_State* L)
{
    lua_pushvalue(L, lua_upvalueindex(1));
    return 1;
}
}

void EnumLua::Bind(detail::Namespace& scope, Meta::Data& data,
                   const std::vector<std::shared_ptr<ConstructorBinder>>&) const
{
    lua_State* L = scope.L;
    lua_newtable(L);
    const int table = lua_gettop(L);
    lua_newtable(L);
    const int meta = lua_gettop(L);
    scope.Pushed(2);
    const std::string type = data.m_Name + "Enum";
    lua_pushlstring(L, type.data(), type.size());
    lua_setfield(L, meta, "__type");
    lua_pushcfunction(L, &detail::StaticIndex);
    lua_setfield(L, meta, "__index");
    lua_pushcfunction(L, &detail::StaticNewIndex);
    lua_setfield(L, meta, "__newindex");
    lua_newtable(L);
    const int getters = lua_gettop(L);
    lua_newtable(L);
    const int setters = lua_gettop(L);
    if (const auto* values = Meta::EnumMeta::GetValues(data.m_Name))
        for (const auto& [name, value] : *values)
        {
            lua_pushlstring(L, name.data(), name.size());
            lua_pushinteger(L, value);
            lua_pushcclosure(L, &PushInteger, 1);
            lua_rawset(L, getters);
            lua_pushlstring(L, name.data(), name.size());
            detail::PushReadOnlySetter(L, name.c_str());
            lua_rawset(L, setters);
        }
    lua_pushlightuserdata(L, const_cast<void*>(detail::PropSetKey()));
    lua_insert(L, -2);
    lua_rawset(L, meta);
    lua_pushlightuserdata(L, const_cast<void*>(detail::PropGetKey()));
    lua_insert(L, -2);
    lua_rawset(L, meta);
    lua_pushvalue(L, meta);
    lua_setmetatable(L, table);
    if (data.m_Info)
    {
        lua_pushlightuserdata(L, const_cast<void*>(detail::StaticKeyOf(data.m_Info->GetLuaKey())));
        lua_pushvalue(L, table);
        lua_rawset(L, LUA_REGISTRYINDEX);
    }
    lua_pushlstring(L, data.m_Name.data(), data.m_Name.size());
    lua_pushvalue(L, table);
    lua_rawset(L, scope.Table());
}
}

namespace luabridge
{
bool BindLateProperty(lua_State* L, Meta::Data& data, const Meta::Property& property)
{
    if (!data.m_Info)
        return false;
    const void* classKey = data.m_Info->GetLuaKey();
    const int top = lua_gettop(L);
    detail::RegistryGet(L, classKey);
    const bool bound = lua_istable(L, -1);
    lua_settop(L, top);
    if (bound)
    {
        // The same four tables a bind opens: const, class, static metatable, static table.
        detail::RegistryGet(L, detail::ConstKeyOf(classKey));
        detail::RegistryGet(L, classKey);
        detail::RegistryGet(L, detail::StaticKeyOf(classKey));
        lua_getmetatable(L, -1);
        lua_insert(L, -2);
        ClassScope tables(L, data, top + 2, top + 1, top + 3);
        property.RegisterLua(tables);
    }
    lua_settop(L, top);
    return bound;
}
}
