// Script components on live objects: adding by script name, variables from Lua
// and native code, entry points, events, functions, the text form and clones.
#include "utilities/lua/components/ScriptComponentTestSupport.h"

#include "support/ReportCapture.h"
#include "utilities/Serialization/Serializer.h"
#include "utilities/lua/LuaScript.h"

namespace
{
const char* kCounter = R"(
--[[!
float Speed 1.5
int Hits 0
Vector3D Axis { 0 1 0 }
]]
function Initialize() initialized = (initialized or 0) + 1 end
function PostInitialize() posted = (posted or 0) + 1 end
function Destroy() _G.destroyedSpeed = this.Speed end
function Double(x) return x * 2, "doubled" end
RegisterFunction("Double")
)";
}

TEST_F(ScriptComponentTest, AddComponentByScriptNameGivesAComponentOfItsOwnType)
{
    WriteComponent("Counter", kCounter);
    WriteComponent("Other", "-- no variables\n");
    Start();
    GameObject* object = MakeObject();
    Component* counter = object->AddComponent("Counter");
    Component* other = object->AddComponent("Other");
    ASSERT_NE(counter, nullptr);
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(counter->GetName(), "Counter");
    EXPECT_NE(counter->GetType(), other->GetType());
    EXPECT_NE(counter->GetType(), Meta::Get<LuaComponent>()->GetId());
    EXPECT_EQ(object->GetComponent("Counter"), counter);
    EXPECT_EQ(object->GetComponent("Other"), other);
    object->RemoveComponent(counter);
    EXPECT_EQ(object->GetComponent("Counter"), nullptr);
    EXPECT_EQ(object->GetComponent("Other"), other);
}

TEST_F(ScriptComponentTest, VariablesAreReadAndWrittenFromLuaAndFromNativeCode)
{
    WriteComponent("Counter", kCounter);
    Start();
    GameObject* object = MakeObject();
    LuaComponent* counter = static_cast<LuaComponent*>(object->AddComponent("Counter"));
    Run("speed = obj.Counter.Speed; obj.Counter.Speed = 4; obj.Counter.Axis.x = 7");
    EXPECT_DOUBLE_EQ(Number("speed"), 1.5);
    EXPECT_FLOAT_EQ(*counter->GetAny("Speed").Get<float>(), 4.0f);
    EXPECT_FLOAT_EQ(counter->GetAny("Axis").Get<Math::Vector3D>()->x, 7.0f);
    *counter->GetAny("Hits").Get<int>() = 9;
    Run("hits = obj.Counter.Hits; name = obj.Counter.ScriptName");
    EXPECT_DOUBLE_EQ(Number("hits"), 9.0);
    EXPECT_EQ(String("name"), "Counter");
}

TEST_F(ScriptComponentTest, WritingAValueOfTheWrongTypeRaisesALuaErrorAndKeepsTheValue)
{
    WriteComponent("Counter", kCounter);
    Start();
    GameObject* object = MakeObject();
    LuaComponent* counter = static_cast<LuaComponent*>(object->AddComponent("Counter"));
    const int top = lua_gettop(L());
    ASSERT_NE(luaL_dostring(L(), "obj.Counter.Speed = 'fast'"), 0);
    EXPECT_NE(std::string(lua_tostring(L(), -1)).find("Counter.Speed takes a value of type float"), std::string::npos);
    lua_settop(L(), top);
    EXPECT_FLOAT_EQ(*counter->GetAny("Speed").Get<float>(), 1.5f);
}

TEST_F(ScriptComponentTest, ReadingAnUndeclaredNameGivesNilAndWritingItRaisesTheBindingsError)
{
    WriteComponent("Counter", kCounter);
    Start();
    GameObject* object = MakeObject();
    object->AddComponent("Counter");
    Run("missing = obj.Counter.Missing == nil");
    lua_getglobal(L(), "missing");
    EXPECT_TRUE(lua_toboolean(L(), -1));
    lua_pop(L(), 1);
    const int top = lua_gettop(L());
    EXPECT_NE(luaL_dostring(L(), "obj.Counter.Missing = 1"), 0);
    EXPECT_NE(std::string(lua_tostring(L(), -1)).find("Missing"), std::string::npos);
    lua_settop(L(), top);
}

TEST_F(ScriptComponentTest, EntryPointsRunAtInitializeLateStartAndDestruction)
{
    WriteComponent("Counter", kCounter);
    Start();
    GameObject* object = m_Space.CreateObjectUninitialized(MakeArchetype("Counted", {"Transform"}));
    LuaComponent* counter = static_cast<LuaComponent*>(object->AddComponentUninitialized("Counter"));
    object->Initialize();
    EXPECT_DOUBLE_EQ(EnvironmentNumber(counter, "initialized"), 1.0);
    EXPECT_DOUBLE_EQ(EnvironmentNumber(counter, "posted"), 0.0);
    m_Space.Update(0.016f);
    EXPECT_DOUBLE_EQ(EnvironmentNumber(counter, "posted"), 1.0);
    *counter->GetAny("Speed").Get<float>() = 3.0f;
    object->Destroy();
    m_Space.GarbageCollectObjects();
    EXPECT_DOUBLE_EQ(Number("destroyedSpeed"), 3.0);
}

TEST_F(ScriptComponentTest, RegisteredFunctionIsCalledWithTheArgumentsAndGivesItsResults)
{
    WriteComponent("Counter", kCounter);
    Start();
    GameObject* object = MakeObject();
    LuaComponent* counter = static_cast<LuaComponent*>(object->AddComponent("Counter"));
    lua_settop(L(), 0);
    lua_pushnil(L());  // stands where the caller's own first argument would be
    lua_pushnumber(L(), 21);
    ASSERT_EQ(counter->CallFunction(L(), "Double"), 2);
    EXPECT_DOUBLE_EQ(lua_tonumber(L(), -2), 42.0);
    EXPECT_STREQ(lua_tostring(L(), -1), "doubled");
    EXPECT_EQ(counter->CallFunction(L(), "NotRegistered"), 0);
    lua_settop(L(), 0);
}

TEST_F(ScriptComponentTest, ScriptHearsEventsOfItsSpaceAndThoseSentToItsObject)
{
    WriteComponent("Listener", R"(
function PingEvent(e) pings = (pings or 0) + 1 end
function Initialize() owner.Space:RegisterEvent("Ping") end
)");
    Start();
    GameObject* first = MakeObject("first");
    GameObject* second = MakeObject("second");
    auto* a = static_cast<LuaComponent*>(first->AddComponent("Listener"));
    auto* b = static_cast<LuaComponent*>(second->AddComponent("Listener"));
    Run("first.Space:BroadcastEvent(ScriptEvent('Ping'))");
    Run("first.Space:BroadcastEventToObject(ScriptEvent('Ping'), second:GetId())");
    EXPECT_DOUBLE_EQ(EnvironmentNumber(a, "pings"), 1.0);
    EXPECT_DOUBLE_EQ(EnvironmentNumber(b, "pings"), 2.0);
}

TEST_F(ScriptComponentTest, LuaErrorInInitializeIsReportedAndTheObjectLivesOn)
{
    WriteComponent("Broken", R"(
--[[!
float Speed 2
]]
function Initialize() error("broken on purpose") end
)");
    Start();
    GameObject* object = MakeObject();
    StdoutCapture output;
    Component* broken = object->AddComponent("Broken");
    EXPECT_NE(output.Text().find("Lua Error: "), std::string::npos);
    EXPECT_NE(output.Text().find("broken on purpose"), std::string::npos);
    ASSERT_NE(broken, nullptr);
    Run("speed = obj.Broken.Speed");
    EXPECT_DOUBLE_EQ(Number("speed"), 2.0);
}

TEST_F(ScriptComponentTest, TextFormWritesTheDifferencesAndReadsThemBack)
{
    WriteComponent("Counter", kCounter);
    Start();
    GameObject* object = MakeObject();
    auto* counter = static_cast<LuaComponent*>(object->AddComponent("Counter"));
    Util::Serializer unchanged;
    unchanged.OpenText("");
    counter->Write(unchanged, "Counter", nullptr, false, false);
    EXPECT_EQ(unchanged.GetText(), "");

    *counter->GetAny("Speed").Get<float>() = 3.25f;
    counter->GetAny("Axis").Get<Math::Vector3D>()->z = 2.0f;
    Util::Serializer writer;
    writer.OpenText("");
    counter->Write(writer, "Counter", nullptr, false, false);
    EXPECT_EQ(writer.GetText(), "Counter \n{\n  Speed 3.25\n  Axis { 0 1 2 }\n}\n");

    GameObject* copy = MakeObject("copy");
    auto* read = static_cast<LuaComponent*>(copy->AddComponent("Counter"));
    Util::Serializer reader;
    reader.OpenText(writer.GetText().substr(writer.GetText().find('{')));
    ASSERT_TRUE(reader.ReadObject(Meta::Get<LuaComponent>(), read));
    EXPECT_FLOAT_EQ(*read->GetAny("Speed").Get<float>(), 3.25f);
    EXPECT_FLOAT_EQ(read->GetAny("Axis").Get<Math::Vector3D>()->z, 2.0f);
    EXPECT_TRUE(read->Compare(counter));
}

TEST_F(ScriptComponentTest, CompareGoesThroughComparePropertiesWithTheMathTolerance)
{
    WriteComponent("Counter", kCounter);
    Start();
    GameObject* object = MakeObject();
    auto* counter = static_cast<LuaComponent*>(object->AddComponent("Counter"));
    std::unique_ptr<Component> clone(counter->Clone());
    EXPECT_TRUE(counter->Compare(clone.get()));
    static_cast<LuaComponent*>(clone.get())->GetAny("Axis").Get<Math::Vector3D>()->x = 0.00005f;
    EXPECT_TRUE(counter->Compare(clone.get()));
    static_cast<LuaComponent*>(clone.get())->GetAny("Axis").Get<Math::Vector3D>()->x = 0.01f;
    EXPECT_FALSE(counter->Compare(clone.get()));
}

TEST_F(ScriptComponentTest, CloneCopiesTheVariablesWithoutSharingThem)
{
    WriteComponent("Counter", kCounter);
    Start();
    GameObject* object = MakeObject();
    auto* counter = static_cast<LuaComponent*>(object->AddComponent("Counter"));
    *counter->GetAny("Speed").Get<float>() = 8.0f;
    std::unique_ptr<Component> clone(counter->Clone());
    auto* copy = static_cast<LuaComponent*>(clone.get());
    EXPECT_EQ(copy->GetType(), counter->GetType());
    EXPECT_FLOAT_EQ(*copy->GetAny("Speed").Get<float>(), 8.0f);
    *copy->GetAny("Speed").Get<float>() = 1.0f;
    EXPECT_FLOAT_EQ(*counter->GetAny("Speed").Get<float>(), 8.0f);
}

TEST_F(ScriptComponentTest, AskingForAnUndeclaredVariableGivesItsDialog)
{
    WriteComponent("Counter", kCounter);
    Start();
    GameObject* object = MakeObject();
    auto* counter = static_cast<LuaComponent*>(object->AddComponent("Counter"));
    ReportCapture reports;
    counter->GetAny("Nothing");
    EXPECT_TRUE(reports.Holds("Counter does not have a variable named: Nothing"));
}
