#include "utilities/lua/luabridge/BindingTestClasses.h"

#include "utilities/Meta/Registration.h"

int BindingReadOnly::s_Counter = 0;

int BindingDynamic::GetProperty(lua_State* L, const std::string& name)
{
    auto found = m_Values.find(name);
    if (found == m_Values.end())
        lua_pushnil(L);
    else
        lua_pushnumber(L, found->second);
    return 1;
}

int BindingDynamic::SetProperty(lua_State* L, const std::string& name)
{
    m_Values[name] = lua_tonumber(L, -1);
    return 0;
}

// The hierarchy arrives derived-first: leaf, middle, root.
META_REGISTER(BindingLeaf)
{
    CONSTRUCTOR();
    CONSTRUCTOR(float, float, float);
    DERIVE(BindingMiddle);
    MEMBER(m_Position, "");
    MEMBER(m_LeafValue, "");
    METHOD(SetPosition);
    METHOD(Who);
    METHOD(Self);
    METHOD(Nobody);
    METHOD(LengthOf);
}

META_REGISTER(BindingMiddle)
{
    CONSTRUCTOR();
    DERIVE(BindingRoot);
    MEMBER(m_MiddleValue, "");
}

META_REGISTER(BindingRoot)
{
    CONSTRUCTOR();
    MEMBER(m_RootValue, "");
    METHOD(Who);
    METHOD(Twice);
}

META_REGISTER(BindingOverloads)
{
    CONSTRUCTOR();
    CONSTRUCTOR(float);
    CONSTRUCTOR(std::string);
    MEMBER(m_Value, "");
    MEMBER(m_Name, "");
    OVERLOAD(Pick, 0, std::string (Self::*)(float) const);
    OVERLOAD(Pick, 1, std::string (Self::*)(const std::string&) const);
    OVERLOAD(Pick, 2, std::string (Self::*)(float, float) const);
    OVERLOAD(Pick, 3, std::string (Self::*)(const Math::Vector3D&) const);
}

META_REGISTER(BindingDynamic)
{
    CONSTRUCTOR();
    MEMBER_FLAGS(m_Hidden, false, true, "");
    MEMBER_FLAGS(m_Plain, false, true, "");
    PROPERTY_NEW();
}

META_REGISTER(BindingDynamicChild)
{
    CONSTRUCTOR();
    DERIVE(BindingDynamic);
    MEMBER_FLAGS(m_Own, false, true, "");
}

META_REGISTER(BindingReadOnly)
{
    CONSTRUCTOR();
    PROPERTY_GET(Answer, GetAnswer, "");
    PROPERTY(Health, GetHealth, SetHealth, "");
    PROPERTY_STATIC(Counter, &BindingReadOnly::GetCounter, &BindingReadOnly::SetCounter, "");
    PROPERTY_STATIC(Limit, &BindingReadOnly::GetLimit, nullptr, "");
}

META_REGISTER_ENUM(BindingColour, {{"Red", 1}, {"Green", 2}, {"Blue", 4}});

META_REGISTER(BindingFar)
{
    CONSTRUCTOR();
    MEMBER_FLAGS(m_Far, false, true, "");
}

// Registered before its base, in a later order.
META_REGISTER_ORDER(BindingLate, 1)
{
    CONSTRUCTOR();
    DERIVE(BindingEarly);
    MEMBER_FLAGS(m_Late, false, true, "");
}

META_REGISTER(BindingEarly)
{
    CONSTRUCTOR();
    MEMBER_FLAGS(m_Early, false, true, "");
}
