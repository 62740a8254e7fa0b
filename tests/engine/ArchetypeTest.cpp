// The scripts' view of archetypes: names to ids and back, objects made from an
// id, and a file edited while scripts run.
#include "engine/Archetype.h"

#include "engine/ArchetypeTestSupport.h"

#include <fstream>

namespace
{
class ArchetypeScriptTest : public ArchetypeFilesTest
{
protected:
    // Loads the archetype files and gives scripts the test's space as `space`.
    void LoadAndShareSpace()
    {
        Start();
        Manager().LoadAll();
        FileWatcher::Get().Update(0.0f);
        luabridge::Stack<Engine::Space*>::Push(L(), &m_Space);
        lua_setglobal(L(), "space");
    }
};
}

TEST_F(ArchetypeScriptTest, ScriptsFindAnIdByNameAndANameById)
{
    WriteArchetype("Box.txt", "");
    WriteArchetype("Crate.txt", "Transform\n{\n}\n");
    LoadAndShareSpace();
    Run("id = Archetype.Find('Crate'); name = Archetype.GetName(id); missing = Archetype.Find('Nobody')\n"
        "unnamed = Archetype.GetName(42)");

    EXPECT_DOUBLE_EQ(Number("id"), 2.0);
    EXPECT_EQ(String("name"), "Crate");
    EXPECT_DOUBLE_EQ(Number("missing"), 0.0);
    EXPECT_EQ(String("unnamed"), "");
}

TEST_F(ArchetypeScriptTest, AnArchetypeValueHoldsItsIdReadOnly)
{
    WriteArchetype("Crate.txt", "Transform\n{\n}\n");
    LoadAndShareSpace();
    Run("value = Archetype('Crate').ArchetypeId; none = Archetype().ArchetypeId; unknown = Archetype('No').ArchetypeId\n"
        "local crate = Archetype('Crate')\n"
        "written = pcall(function() crate.ArchetypeId = 5 end)\n"
        "after = crate.ArchetypeId");

    EXPECT_DOUBLE_EQ(Number("value"), 1.0);
    EXPECT_DOUBLE_EQ(Number("none"), 0.0);
    EXPECT_DOUBLE_EQ(Number("unknown"), 0.0);
    Run("assert(written == false)");
    EXPECT_DOUBLE_EQ(Number("after"), 1.0);
}

TEST_F(ArchetypeScriptTest, AnEditedFileIsSeenByTheNextCreateObjectWhileEarlierObjectsKeepTheirValues)
{
    const std::string path = WriteArchetype("Crate.txt", "Transform\n{\n  Scale { 2 2 2 }\n}\n");
    LoadAndShareSpace();
    Run("crate = Archetype.Find('Crate'); first = space:CreateObject(crate)");

    std::ofstream(path, std::ios::trunc) << "Transform\n{\n  Scale { 6 6 6 }\n}\n";
    TouchLater(path);
    PollAndUpdateWatcher();
    Run("second = space:CreateObject(Archetype.Find('Crate'))\n"
        "same = Archetype.Find('Crate') == crate\n"
        "firstScale = first.Transform.Scale.x; secondScale = second.Transform.Scale.x");

    Run("assert(same)");
    EXPECT_DOUBLE_EQ(Number("firstScale"), 2.0);
    EXPECT_DOUBLE_EQ(Number("secondScale"), 6.0);
}

TEST_F(ArchetypeScriptTest, CreateObjectWithAnUnknownIdIsReportedAndGivesNil)
{
    LoadAndShareSpace();
    ReportCapture reports;
    Run("made = space:CreateObject(Archetype.Find('Nobody')); isNil = made == nil");

    EXPECT_NE(reports.Text().find("No archetype has the id 0"), std::string::npos) << reports.Text();
    Run("assert(isNil)");
    EXPECT_TRUE(m_Space.m_Objects.empty());
}
