#include "utilities/lua/LuaTestSupport.h"

#include "engine/ArchetypeManager.h"
#include "engine/GameObject.h"
#include "engine/Space.h"
#include "engine/TestComponents.h"
#include "utilities/lua/LuaScript.h"
#include "utilities/lua/luabridge/LuaBinding.h"
#include "utilities/lua/luabridge/Stack.h"

namespace
{
// A Lua system with every registered class bound and a space that scripts see as `space`.
class SpaceScriptEventsTest : public LuaTest
{
protected:
    void SetUp() override
    {
        luabridge::LuaBinding::Get().BindAll(L());
        luabridge::Stack<Engine::Space*>::Push(L(), &m_Space);
        lua_setglobal(L(), "space");
    }
    bool Flag(const char* name)
    {
        lua_getglobal(L(), name);
        const bool value = lua_toboolean(L(), -1) != 0;
        lua_pop(L(), 1);
        return value;
    }

    Engine::Space m_Space{Engine::Level};
};
}

TEST_F(SpaceScriptEventsTest, ScriptHandlerSeesTheFieldsOfAScriptEventBroadcastFromLua)
{
    Run(R"(
        handler = {}
        function handler:OnHit(e) damage = e.Damage; name = e.Name end
        space:RegisterEvent(handler, "Hit", "OnHit")
        local e = ScriptEvent("Hit")
        e.Damage = 12
        space:BroadcastEvent("Hit", e)
    )");
    EXPECT_DOUBLE_EQ(Number("damage"), 12.0);
    EXPECT_EQ(String("name"), "Hit");
}

TEST_F(SpaceScriptEventsTest, FunctionNameDefaultsToTheEventNameWithEvent)
{
    Run(R"(
        handler = {}
        function handler:JumpEvent(e) jumped = true end
        space:RegisterEvent(handler, "Jump")
        space:BroadcastEvent("Jump", ScriptEvent())
    )");
    EXPECT_TRUE(Flag("jumped"));
}

TEST_F(SpaceScriptEventsTest, RaisingHandlerIsReportedAndTheNextHandlerStillRuns)
{
    Run(R"(
        bad = {}
        function bad:On(e) error("handler broke") end
        good = {}
        function good:On(e) goodRan = true end
        space:RegisterEvent(bad, "Hit", "On")
        space:RegisterEvent(good, "Hit", "On")
    )");
    StdoutCapture output;
    Run("space:BroadcastEvent('Hit', ScriptEvent('Hit'))");
    EXPECT_NE(output.Text().find("Lua Error: "), std::string::npos);
    EXPECT_NE(output.Text().find("handler broke"), std::string::npos);
    EXPECT_TRUE(Flag("goodRan"));
}

TEST_F(SpaceScriptEventsTest, BroadcastToAnUnknownObjectDoesNothing)
{
    Run(R"(
        handler = {}
        function handler:On(e) reached = true end
        space:RegisterEvent(handler, "Poke", "On")
        space:BroadcastEventToObject("Poke", ScriptEvent("Poke"), 987654)
        ranOn = true
    )");
    EXPECT_TRUE(Flag("ranOn"));
    EXPECT_FALSE(Flag("reached"));
}

TEST_F(SpaceScriptEventsTest, BroadcastToAKnownObjectSkipsListenersThatAreNotItsComponents)
{
    const ArchetypeId type = MakeArchetype("ScriptEventTarget", {"Transform"});
    GameObject* object = m_Space.CreateObject(type);
    ASSERT_NE(object, nullptr);
    lua_pushinteger(L(), object->GetId());
    lua_setglobal(L(), "id");
    Run(R"(
        handler = {}
        function handler:On(e) reached = true end
        space:RegisterEvent(handler, "Poke", "On")
        space:BroadcastEventToObject("Poke", ScriptEvent("Poke"), id)
    )");
    EXPECT_FALSE(Flag("reached"));
}

TEST_F(SpaceScriptEventsTest, WrongRegisterArgumentsRaiseALuaError)
{
    const int top = lua_gettop(L());
    EXPECT_NE(luaL_dostring(L(), "space:RegisterEvent(42, 'Hit')"), 0);
    EXPECT_NE(std::string(lua_tostring(L(), -1)).find("RegisterEvent expects"), std::string::npos);
    lua_settop(L(), top);
    Run("space:BroadcastEvent('Hit', nil)");
}

TEST_F(SpaceScriptEventsTest, NameOnlyFormBindsTheCallingScriptsOwnFunction)
{
    LuaScript script(m_Temp.Write("Listener.lua", R"(
        function HitEvent(e) hits = (hits or 0) + e.Damage end
        space:RegisterEvent("Hit")
    )"), {}, &m_Lua);
    script.Run();
    Run("local e = ScriptEvent('Hit'); e.Damage = 3; space:BroadcastEvent('Hit', e)");
    // The handler's global lands in the script's private environment, not in _G.
    EXPECT_DOUBLE_EQ(Number("hits"), 0.0);
    lua_rawgeti(L(), LUA_REGISTRYINDEX, script.FindFunction("HitEvent"));
    ASSERT_TRUE(lua_isfunction(L(), -1));
    lua_getfenv(L(), -1);
    lua_getfield(L(), -1, "hits");
    EXPECT_DOUBLE_EQ(lua_tonumber(L(), -1), 3.0);
    lua_pop(L(), 3);
}

TEST_F(SpaceScriptEventsTest, TwoScriptsOnOneFileEachHearInTheirOwnEnvironment)
{
    const std::string path = m_Temp.Write("Counter.lua", R"(
        count = 0
        function Register(functionName) space:RegisterEvent("Tick", functionName) end
        function TickEvent(e) count = count + 1 end
        function OnTick(e) count = count + 10 end
    )");
    LuaScript first(path, {}, &m_Lua);
    LuaScript second(path, {}, &m_Lua);
    first.Run();
    const int registerFirst = first.CacheFunction("Register");
    second.Run();
    const int registerSecond = second.CacheFunction("Register");
    // The first script registers after the second ran: it must still bind its own function.
    lua_rawgeti(L(), LUA_REGISTRYINDEX, registerFirst);
    ASSERT_EQ(lua_pcall(L(), 0, 0, 0), 0) << lua_tostring(L(), -1);
    lua_rawgeti(L(), LUA_REGISTRYINDEX, registerSecond);
    lua_pushstring(L(), "OnTick");
    ASSERT_EQ(lua_pcall(L(), 1, 0, 0), 0) << lua_tostring(L(), -1);
    Run("space:BroadcastEvent(ScriptEvent('Tick'))");

    auto countOf = [this](int functionRef) {
        lua_rawgeti(L(), LUA_REGISTRYINDEX, functionRef);
        lua_getfenv(L(), -1);
        lua_getfield(L(), -1, "count");
        const double count = lua_tonumber(L(), -1);
        lua_pop(L(), 3);
        return count;
    };
    EXPECT_DOUBLE_EQ(countOf(registerFirst), 1.0);
    EXPECT_DOUBLE_EQ(countOf(registerSecond), 10.0);
}

TEST_F(SpaceScriptEventsTest, BindOfADestroyedScriptDoesNothing)
{
    {
        LuaScript script(m_Temp.Write("Gone.lua", R"(
            function OnHit(e) reached = true end
            space:RegisterEvent("Hit", "OnHit")
        )"), {}, &m_Lua);
        script.Run();
    }
    Run("space:BroadcastEvent(ScriptEvent('Hit')); ranOn = true");
    EXPECT_TRUE(Flag("ranOn"));
    EXPECT_FALSE(Flag("reached"));
}

TEST_F(SpaceScriptEventsTest, NameOnlyFormOutsideAScriptRaisesALuaError)
{
    const int top = lua_gettop(L());
    EXPECT_NE(luaL_dostring(L(), "space:RegisterEvent('Hit')"), 0);
    EXPECT_NE(std::string(lua_tostring(L(), -1)).find("must be called from a script's own function"),
              std::string::npos);
    lua_settop(L(), top);
}

TEST_F(SpaceScriptEventsTest, BroadcastOfAnEventAloneUsesTheEventsOwnName)
{
    Run(R"(
        handler = {}
        function handler:BlastEvent(e) heard = e.Name end
        function handler:OtherEvent(e) wrong = true end
        space:RegisterEvent(handler, "Blast")
        space:RegisterEvent(handler, "Other")
        space:BroadcastEvent(ScriptEvent("Blast"))
    )");
    EXPECT_EQ(String("heard"), "Blast");
    EXPECT_FALSE(Flag("wrong"));
}

TEST_F(SpaceScriptEventsTest, BroadcastToAnObjectByTheEventsOwnNameReachesItsScriptListener)
{
    const ArchetypeId type = MakeArchetype("OwnNameTarget", {"Transform"});
    GameObject* object = m_Space.CreateObject(type);
    ASSERT_NE(object, nullptr);
    // A script owned by the object's Transform: its binds are filed under that component.
    LuaScript script(m_Temp.Write("Owned.lua", R"(
        function PokeEvent(e) poked = e.Name end
        space:RegisterEvent("Poke")
    )"), {}, &m_Lua);
    script.m_Listener = object->GetComponent("Transform");
    ASSERT_NE(script.m_Listener, nullptr);
    script.Run();
    lua_pushinteger(L(), object->GetId());
    lua_setglobal(L(), "id");
    Run("space:BroadcastEventToObject(ScriptEvent('Poke'), id); space:BroadcastEventToObject(ScriptEvent('Poke'), id + 1)");
    lua_rawgeti(L(), LUA_REGISTRYINDEX, script.FindFunction("PokeEvent"));
    lua_getfenv(L(), -1);
    lua_getfield(L(), -1, "poked");
    EXPECT_STREQ(lua_tostring(L(), -1), "Poke");
    lua_pop(L(), 3);
    m_Space.m_Events.UnregisterAll(script.m_Listener);
}

TEST_F(SpaceScriptEventsTest, HandlerDefinedAfterTheRegistrationIsNotCalled)
{
    LuaScript script(m_Temp.Write("Late.lua", R"(
        space:RegisterEvent("Hit")
        function HitEvent(e) reached = true end
    )"), {}, &m_Lua);
    script.Run();
    Run("space:BroadcastEvent(ScriptEvent('Hit'))");
    EXPECT_EQ(script.FindFunction("HitEvent"), -1);
}
