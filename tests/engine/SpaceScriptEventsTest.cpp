#include "utilities/lua/LuaTestSupport.h"

#include "engine/ArchetypeManager.h"
#include "engine/GameObject.h"
#include "engine/Space.h"
#include "engine/TestComponents.h"
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
    EXPECT_NE(luaL_dostring(L(), "space:RegisterEvent('notAnObject', 'Hit')"), 0);
    EXPECT_NE(std::string(lua_tostring(L(), -1)).find("RegisterEvent expects"), std::string::npos);
    lua_settop(L(), top);
    Run("space:BroadcastEvent('Hit', nil)");
}
