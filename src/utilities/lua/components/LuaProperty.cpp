#include "utilities/lua/components/LuaProperty.h"

#include "engine/Math/Color.h"
#include "engine/Math/Point2D.h"
#include "engine/Math/Point3D.h"
#include "engine/Math/Point4D.h"
#include "engine/Math/Quaternion.h"
#include "engine/Math/Vector2D.h"
#include "engine/Math/Vector3D.h"
#include "engine/Math/Vector4D.h"

#include <memory>
#include <unordered_map>

namespace
{
using PropertyTable = std::unordered_map<std::string, std::unique_ptr<LuaProperty>, Meta::NameHash, std::equal_to<>>;

// The types a script variable may have: the basic types and the math value types.
void RegisterVariableTypes()
{
    LuaProperty::Register<int>();
    LuaProperty::Register<unsigned>();
    LuaProperty::Register<float>();
    LuaProperty::Register<double>();
    LuaProperty::Register<bool>();
    LuaProperty::Register<std::string>();
    LuaProperty::Register<Math::Vector2D>();
    LuaProperty::Register<Math::Vector3D>();
    LuaProperty::Register<Math::Vector4D>();
    LuaProperty::Register<Math::Point2D>();
    LuaProperty::Register<Math::Point3D>();
    LuaProperty::Register<Math::Point4D>();
    LuaProperty::Register<Math::Quaternion>();
    LuaProperty::Register<Math::Color>();
}

PropertyTable& Table()
{
    static PropertyTable* table = nullptr;
    if (!table)
    {
        table = new PropertyTable();
        RegisterVariableTypes();
    }
    return *table;
}
}

int LuaProperty::ToLua(lua_State* L, Meta::Any& value) const
{
    Push(L, value);
    return luaL_ref(L, LUA_REGISTRYINDEX);
}

bool LuaProperty::CopyFromLua(lua_State* L, Meta::Any& value, int ref) const
{
    lua_rawgeti(L, LUA_REGISTRYINDEX, ref);
    const bool taken = Take(L, -1, value);
    lua_pop(L, 1);
    return taken;
}

const LuaProperty* LuaProperty::Find(std::string_view typeName)
{
    PropertyTable& table = Table();
    const auto found = table.find(typeName);
    return found == table.end() ? nullptr : found->second.get();
}

void LuaProperty::Add(LuaProperty* property)
{
    std::unique_ptr<LuaProperty> owned(property);
    if (!property->m_Type)
        return;
    Table().try_emplace(property->m_Type->GetName(), std::move(owned));
}
