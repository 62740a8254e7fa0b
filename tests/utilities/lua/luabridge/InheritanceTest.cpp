#include "utilities/lua/luabridge/LuaTestState.h"

#include "engine/System.h"
#include "utilities/lua/luabridge/BindingTestClasses.h"
#include "utilities/lua/luabridge/LuaBinding.h"
#include "utilities/lua/luabridge/detail/Keys.h"

#include <algorithm>

using InheritanceTest = LuaTestState;

namespace
{
// Position of `type` among the registrations of order 0.
long ArrivalOf(const Meta::Data* type)
{
    const auto& records = luabridge::LuaBinding::Get().m_Pending[0];
    auto found = std::find_if(records.begin(), records.end(), [type](const auto& r) { return r.data == type; });
    return found == records.end() ? -1 : static_cast<long>(found - records.begin());
}

// Pushes registry[key].
void PushRegistry(lua_State* L, const void* key)
{
    lua_pushlightuserdata(L, const_cast<void*>(key));
    lua_rawget(L, LUA_REGISTRYINDEX);
}
}

TEST_F(InheritanceTest, ThreeDeepHierarchyRegisteredDerivedFirstBindsBaseFirst)
{
    const long leaf = ArrivalOf(Meta::Get<BindingLeaf>());
    const long middle = ArrivalOf(Meta::Get<BindingMiddle>());
    const long root = ArrivalOf(Meta::Get<BindingRoot>());
    ASSERT_GE(leaf, 0);
    EXPECT_LT(leaf, middle);
    EXPECT_LT(middle, root);

    // A class bound before its base would have found no parent table to link to.
    PushRegistry(L, luabridge::detail::ClassKey<BindingLeaf>());
    lua_getfield(L, -1, "__parent");
    PushRegistry(L, luabridge::detail::ClassKey<BindingMiddle>());
    EXPECT_TRUE(lua_istable(L, -1));
    EXPECT_TRUE(lua_rawequal(L, -1, -2));
    lua_getfield(L, -1, "__parent");
    PushRegistry(L, luabridge::detail::ClassKey<BindingRoot>());
    EXPECT_TRUE(lua_istable(L, -1));
    EXPECT_TRUE(lua_rawequal(L, -1, -2));
    lua_settop(L, 0);
}

TEST_F(InheritanceTest, MembersAndMethodsOfEveryLevelAreReachedFromTheLeaf)
{
    ASSERT_EQ(RunFile("inheritance.lua"), "");
    EXPECT_DOUBLE_EQ(FieldNumber("root"), 9.0);
    EXPECT_DOUBLE_EQ(FieldNumber("middle"), 8.0);
    EXPECT_DOUBLE_EQ(FieldNumber("leaf"), 3.0);
    EXPECT_EQ(FieldText("leafWho"), "leaf");
    EXPECT_EQ(FieldText("rootWho"), "root");
    EXPECT_EQ(FieldText("middleWho"), "root");
    EXPECT_DOUBLE_EQ(FieldNumber("twice"), 42.0);
    EXPECT_DOUBLE_EQ(FieldNumber("positionY"), 2.0);
    EXPECT_DOUBLE_EQ(FieldNumber("chained"), 3.0);
}

TEST_F(InheritanceTest, DerivedClassWhoseBaseNeverComesStaysWaitingAndUnbound)
{
    struct Orphan
    {
    };
    struct NeverRegistered
    {
    };
    luabridge::LuaBinding& binding = luabridge::LuaBinding::Get();
    Meta::Data* orphan = Meta::Get<Orphan>();
    orphan->m_Name = "BindingOrphan";
    orphan->m_Parent = Meta::Get<NeverRegistered>();
    binding.BeginClass(std::make_shared<luabridge::Class<Orphan>>());
    binding.SetBinder(std::make_shared<luabridge::DerivedClass<Orphan, NeverRegistered>>());
    binding.RegisterClass(orphan, 0);

    lua_State* other = luaL_newstate();
    binding.BindAll(other);
    const auto entry = binding.m_ClassesByParent.find(Meta::Get<NeverRegistered>());
    ASSERT_NE(entry, binding.m_ClassesByParent.end());
    EXPECT_FALSE(entry->second.bound);
    ASSERT_EQ(entry->second.waiting.size(), 1u);
    EXPECT_EQ(entry->second.waiting[0].data, orphan);
    lua_getglobal(other, "BindingOrphan");
    EXPECT_TRUE(lua_isnil(other, -1));
    lua_getglobal(other, "Vector3D");
    EXPECT_TRUE(lua_istable(other, -1));
    lua_close(other);

    auto& pending = binding.m_Pending[0];
    pending.erase(std::remove_if(pending.begin(), pending.end(), [orphan](const auto& r) { return r.data == orphan; }),
                  pending.end());
}

TEST_F(InheritanceTest, SystemIsBoundBeforeEveryOtherClass)
{
    // Every system class found its parent: the System tables existed when they were bound.
    PushRegistry(L, luabridge::detail::ClassKey<System>());
    ASSERT_TRUE(lua_istable(L, -1));
    EXPECT_EQ(Text("getmetatable(FrameRateController).__type"), "FrameRateController");
    lua_settop(L, 0);
}

TEST_F(InheritanceTest, ClassOfAHigherOrderWaitsForEveryLowerOrder)
{
    const auto& later = luabridge::LuaBinding::Get().m_Pending[1];
    EXPECT_TRUE(std::any_of(later.begin(), later.end(),
                            [](const auto& record) { return record.data == Meta::Get<BindingLate>(); }));
    EXPECT_EQ(ArrivalOf(Meta::Get<BindingLate>()), -1);
    EXPECT_DOUBLE_EQ(Number("BindingLate().Early + BindingLate().Late"), 3.0);
}
