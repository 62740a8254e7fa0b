#include "utilities/lua/luabridge/LuaTestState.h"

#include "engine/ArchetypeManager.h"
#include "engine/GameObject.h"
#include "engine/Manager.h"
#include "engine/Math/Vector3D.h"
#include "engine/Space.h"
#include "engine/TestComponents.h"
#include "utilities/Meta/Registration.h"
#include "utilities/lua/luabridge/BindingTestClasses.h"

using EngineClassesTest = LuaTestState;

TEST_F(EngineClassesTest, SpaceCreatesObjectsFromScripts)
{
    Engine::Space space(Engine::Level);
    const ArchetypeId type = MakeArchetype("ScriptMade", {"Transform"});
    SetGlobal("space", &space);
    lua_pushinteger(L, type);
    lua_setglobal(L, "archetype");
    EXPECT_EQ(Run("made = space:CreateObject(archetype)"), "");
    EXPECT_EQ(Text("made:GetName()"), "ScriptMade");
    EXPECT_DOUBLE_EQ(Number("space:GetGameObject(made:GetId()).GameObjectId"), Number("made:GetId()"));
    EXPECT_EQ(Text("type(made.Transform.Position)"), "userdata");
    EXPECT_DOUBLE_EQ(Number("Space.HUD"), 1.0);
    EXPECT_EQ(Run("space:SetPause(true)"), "");
    EXPECT_TRUE(space.IsPaused());
    EXPECT_EQ(Text("type(space:GetGameObject(123456))"), "nil");
    lua_settop(L, 0);
}

TEST_F(EngineClassesTest, ManagerEndsTheGameFromScripts)
{
    Engine::Manager& manager = Engine::Manager::Get();
    manager.m_Running = true;
    SetGlobal("manager", &manager);
    EXPECT_EQ(Run("manager:EndGame()"), "");
    EXPECT_FALSE(manager.m_Running);
    manager.m_Running = true;
}

TEST_F(EngineClassesTest, ComponentReturnedAsBaseIsPushedAsItsOwnClass)
{
    GameObject object;
    object.AddComponentUninitialized("Transform");
    SetGlobal("obj", &object);
    EXPECT_EQ(Text("getmetatable(obj:GetComponent('Transform')).__type"), "Transform");
    EXPECT_EQ(Run("obj:SetName('renamed')"), "");
    EXPECT_EQ(object.GetName(), "renamed");
}

TEST_F(EngineClassesTest, ClassInfoPushesCopiesAndKnowsItsLuaKey)
{
    const Meta::Data* vector = Meta::FindData("Vector3D");
    ASSERT_NE(vector, nullptr);
    EXPECT_EQ(vector->m_Info->GetLuaKey(), luabridge::detail::ClassKey<Math::Vector3D>());
    Math::Vector3D value(1, 2, 3);
    vector->m_Info->ToLua(L, &value);
    lua_setglobal(L, "copy");
    value.x = 10;
    EXPECT_DOUBLE_EQ(Number("copy.x"), 1.0);
    const int before = lua_gettop(L);
    Meta::FindData("int")->m_Info->ToLua(L, &before);
    EXPECT_EQ(lua_tointeger(L, -1), before);
    lua_settop(L, 0);
}

TEST_F(EngineClassesTest, PropertyPushesItsValueToLua)
{
    BindingReadOnly object;
    Meta::Get<BindingReadOnly>()->FindProperty("Answer")->PushToLua(L, &object);
    EXPECT_EQ(lua_tointeger(L, -1), 42);
    lua_settop(L, 0);
}

TEST_F(EngineClassesTest, PointerToAClassNotBoundIsALightUserdata)
{
    struct Unbound
    {
        int value = 0;
    };
    Unbound object;
    luabridge::PushPointer(L, &object, luabridge::detail::ClassKey<Unbound>());
    EXPECT_EQ(lua_type(L, -1), LUA_TLIGHTUSERDATA);
    EXPECT_EQ(lua_touserdata(L, -1), &object);
    luabridge::PushPointer(L, nullptr, luabridge::detail::ClassKey<Math::Vector3D>());
    EXPECT_TRUE(lua_isnil(L, -1));
    lua_settop(L, 0);
}

TEST_F(EngineClassesTest, ValueOwnedByLuaIsDestroyedByTheCollector)
{
    EXPECT_EQ(Run("for i = 1, 100 do local o = BindingOverloads('a fairly long name that allocates') end"), "");
    lua_gc(L, LUA_GCCOLLECT, 0);
    // The sanitizer build reports a leak if the strings were not destroyed.
    SUCCEED();
}

TEST_F(EngineClassesTest, TowatchListsTheWatchedValuesOfAnObject)
{
    EXPECT_EQ(Run("leaf = BindingLeaf(1, 2, 3) watched = getmetatable(leaf).__towatch(leaf)"), "");
    EXPECT_DOUBLE_EQ(Number("watched.LeafValue"), 3.0);
    EXPECT_DOUBLE_EQ(Number("watched.Position.z"), 3.0);
}

TEST_F(EngineClassesTest, StackCarriesEveryArgumentKind)
{
    using luabridge::Stack;
    Stack<unsigned>::Push(L, 7u);
    EXPECT_TRUE(Stack<unsigned>::Is(L, -1));
    EXPECT_EQ(Stack<unsigned>::Get(L, -1), 7u);
    Stack<bool>::Push(L, true);
    EXPECT_TRUE(Stack<bool>::Get(L, -1));
    Stack<const std::string&>::Push(L, std::string("text"));
    EXPECT_EQ(Stack<std::string>::Get(L, -1), "text");
    EXPECT_FALSE(Stack<float>::Is(L, -1));
    Stack<BindingColour>::Push(L, BindingColour::Blue);
    EXPECT_EQ(Stack<BindingColour>::Get(L, -1), BindingColour::Blue);
    Stack<Math::Vector3D>::Push(L, Math::Vector3D(1, 2, 3));
    EXPECT_TRUE(Stack<const Math::Vector3D&>::Is(L, -1));
    EXPECT_FALSE(Stack<BindingLeaf*>::Is(L, -1));
    EXPECT_FLOAT_EQ(Stack<Math::Vector3D>::Get(L, -1).z, 3.0f);
    lua_pushnil(L);
    EXPECT_TRUE(Stack<Math::Vector3D*>::Is(L, -1));
    EXPECT_EQ(Stack<Math::Vector3D*>::Get(L, -1), nullptr);
    lua_settop(L, 0);
}
