// Hot reload of a component script on live objects, end to end through the
// file watcher, and script variables in the comparison of objects with their
// archetypes.
#include "utilities/lua/components/ScriptComponentTestSupport.h"

#include "engine/FileWatcher.h"
#include "engine/ObjectDifference.h"
#include "utilities/Meta/Member.h"

#include <fstream>

TEST_F(ScriptComponentTest, EditedScriptReinitializesEveryLiveInstanceAndKeepsTheirVariables)
{
    const std::string path = WriteComponent("Glow", R"(
--[[!
float Brightness 1
]]
function Initialize() _G.log = (_G.log or "") .. "old-init;" end
function PostInitialize() _G.log = (_G.log or "") .. "old-post;" end
)");
    Start();
    GameObject* first = MakeObject("first");
    GameObject* second = MakeObject("second");
    first->AddComponent("Glow");
    second->AddComponent("Glow");
    Run("first.Glow.Brightness = 3; second.Glow.Brightness = 5; log = ''");
    FileWatcher::Get().Update(0.0f);  // the watches of the scripts are taken on

    {
        std::ofstream out(path, std::ios::trunc);
        out << R"(
--[[!
float Brightness 1
]]
function Initialize() _G.log = _G.log .. "new-init " .. this.Brightness .. ";" end
function PostInitialize() _G.log = _G.log .. "new-post " .. this.Brightness .. ";" end
)";
    }
    TouchLater(path);
    PollAndUpdateWatcher();

    EXPECT_EQ(String("log"), "new-init 3;new-post 3;new-init 5;new-post 5;");
    Run("b1 = first.Glow.Brightness; b2 = second.Glow.Brightness");
    EXPECT_DOUBLE_EQ(Number("b1"), 3.0);
    EXPECT_DOUBLE_EQ(Number("b2"), 5.0);
}

TEST_F(ScriptComponentTest, ReloadedScriptHearsItsEventsOnceWithTheNewHandler)
{
    const std::string path = WriteComponent("Ear", R"(
function PingEvent(e) _G.heard = (_G.heard or "") .. "old;" end
function Initialize() owner.Space:RegisterEvent("Ping") end
)");
    Start();
    GameObject* object = MakeObject();
    object->AddComponent("Ear");
    FileWatcher::Get().Update(0.0f);
    {
        std::ofstream out(path, std::ios::trunc);
        out << R"(
function PingEvent(e) _G.heard = (_G.heard or "") .. "new;" end
function Initialize() owner.Space:RegisterEvent("Ping") end
)";
    }
    TouchLater(path);
    PollAndUpdateWatcher();
    Run("obj.Space:BroadcastEvent(ScriptEvent('Ping'))");
    EXPECT_EQ(String("heard"), "new;");
}

TEST_F(ScriptComponentTest, ChangedScriptVariableAppearsOnceInTheDifferencesAndApplyingThemCopiesIt)
{
    WriteComponent("Tinted", R"(
--[[!
float Warmth 0.5
string Label "ember"
]]
)");
    Start();
    GameObject* archetype = new GameObject();
    archetype->m_Name = "TintedArchetype";
    archetype->AddComponentUninitialized("Transform");
    archetype->AddComponentUninitialized("Tinted");
    const ArchetypeId id = Engine::ArchetypeManager::Get().Add(archetype);

    GameObject* edited = m_Space.CreateObject(id);
    GameObject* other = m_Space.CreateObject(id);
    EXPECT_TRUE(Engine::CompareWithArchetype(*edited, *archetype).empty());

    *ScriptOf(edited, "Tinted")->GetAny("Warmth").Get<float>() = 0.9f;
    const std::vector<Engine::ComponentDifference> differences = Engine::CompareWithArchetype(*edited, *archetype);
    ASSERT_EQ(differences.size(), 1u);
    ASSERT_EQ(differences[0].m_Members.size(), 1u);
    EXPECT_EQ(differences[0].m_Members[0]->m_Name, "Warmth");
    EXPECT_EQ(differences[0].m_Type, ScriptOf(edited, "Tinted")->GetType());

    Engine::ApplyDifferences(differences, *edited, *archetype, *other);
    EXPECT_FLOAT_EQ(*ScriptOf(other, "Tinted")->GetAny("Warmth").Get<float>(), 0.9f);
    EXPECT_TRUE(ScriptOf(other, "Tinted")->Compare(ScriptOf(edited, "Tinted")));
}
