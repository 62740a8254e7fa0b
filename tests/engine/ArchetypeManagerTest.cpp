// Archetype files: loading every file under "Archetypes/", reloading through the
// file watcher, broken files, and the editor's operations on archetype files.
#include "engine/ArchetypeTestSupport.h"

#include "utilities/lua/components/LuaComponent.h"

#include <filesystem>
#include <fstream>

namespace
{
const char* kCrate = "Transform\n{\n  Scale { 2 2 2 }\n}\n";

// Replaces the text of the file at `path` and gives it a later time, as a save in an editor would.
void Rewrite(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::trunc) << text;
    TouchLater(path);
}
}

TEST_F(ArchetypeFilesTest, LoadAllTakesTheFolderItselfFirstThenItsSubfoldersDepthFirstInNameOrder)
{
    WriteArchetype("B.txt", kCrate);
    WriteArchetype("A.txt", kCrate);
    WriteArchetype("Sub/Deep/D.txt", kCrate);
    WriteArchetype("Sub/C.txt", kCrate);
    WriteArchetype("Zed/E.txt", kCrate);
    WriteArchetype("notes.md", kCrate);
    Start();
    Manager().LoadAll();

    ASSERT_EQ(Manager().Count(), 5u);
    EXPECT_EQ(Manager().GetNames(), (std::vector<std::string>{"A", "B", "C", "D", "E"}));
    for (ArchetypeId id = 1; id <= 5; ++id)
    {
        const GameObject* archetype = Manager().GetArchetype(id);
        EXPECT_EQ(archetype->m_Archetype, id);
        EXPECT_EQ(archetype->m_Id, 0u);
        EXPECT_EQ(archetype->m_Space, nullptr);
        EXPECT_FALSE(archetype->m_Initialized);
        EXPECT_EQ(Manager().GetArchetypeId(archetype->m_Name), id);
        EXPECT_EQ(Manager().GetArchetypeName(id), archetype->m_Name);
    }
    EXPECT_EQ(Manager().GetPath("D"), Util::NormalizePath(m_Temp.Path() + "Archetypes/Sub/Deep/D.txt"));
    EXPECT_EQ(Manager().GetArchetypeId("notes"), 0u);
    EXPECT_EQ(Manager().GetArchetypeId("Nobody"), 0u);
    EXPECT_EQ(Manager().GetArchetypeName(0), "");
    EXPECT_EQ(Manager().GetArchetypeName(99), "");
}

TEST_F(ArchetypeFilesTest, ASecondFileOfTheSameNameInAnotherFolderReplacesTheFirstUnderOneId)
{
    WriteArchetype("Crate.txt", kCrate);
    WriteArchetype("Props/Crate.txt", "Transform\n{\n  Scale { 7 7 7 }\n}\nHierarchy\n{\n}\n");
    Start();
    Manager().LoadAll();

    ASSERT_EQ(Manager().Count(), 1u);
    const GameObject* crate = ArchetypeNamed("Crate");
    ASSERT_NE(crate, nullptr);
    EXPECT_EQ(crate->m_Archetype, 1u);
    EXPECT_FLOAT_EQ(ScaleOf(crate).x, 7.0f);
    EXPECT_EQ(ComponentNames(crate), "Transform Hierarchy");
    EXPECT_EQ(Manager().GetPath("Crate"), Util::NormalizePath(m_Temp.Path() + "Archetypes/Props/Crate.txt"));
}

TEST_F(ArchetypeFilesTest, AFileNameWithSeveralDotsNamesTheArchetypeUpToTheFirstDot)
{
    WriteArchetype("a.b.txt", kCrate);
    Start();
    Manager().LoadAll();

    EXPECT_EQ(Manager().GetArchetypeId("a"), 1u);
    EXPECT_EQ(Manager().GetArchetypeId("a.b"), 0u);
    EXPECT_EQ(Manager().GetArchetypeName(1), "a");
}

TEST_F(ArchetypeFilesTest, AnEditedFileIsReloadedUnderItsIdAndOnlyLaterObjectsSeeTheChange)
{
    WriteArchetype("Anvil.txt", "Hierarchy\n{\n}\n");
    const std::string path = WriteArchetype("Crate.txt", kCrate);
    Start();
    Manager().LoadAll();
    FileWatcher::Get().Update(0.0f);  // the watches are taken on
    const ArchetypeId id = Manager().GetArchetypeId("Crate");
    ASSERT_EQ(id, 2u);
    GameObject* before = m_Space.CreateObject(id);

    Rewrite(path, "Transform\n{\n  Scale { 3 4 5 }\n}\nHierarchy\n{\n}\n");
    PollAndUpdateWatcher();

    EXPECT_EQ(Manager().GetArchetypeId("Crate"), id);
    EXPECT_EQ(Manager().Count(), 2u);
    EXPECT_EQ(Manager().GetArchetype(id)->m_Archetype, id);
    GameObject* after = m_Space.CreateObject(id);
    ASSERT_NE(after, nullptr);
    EXPECT_FLOAT_EQ(ScaleOf(after).y, 4.0f);
    EXPECT_EQ(ComponentNames(after), "Transform Hierarchy");
    EXPECT_EQ(after->GetArchetype(), id);
    EXPECT_FLOAT_EQ(ScaleOf(before).y, 2.0f);
    EXPECT_EQ(ComponentNames(before), "Transform");
}

TEST_F(ArchetypeFilesTest, ABrokenArchetypeIsReportedWithItsPathAndTheOthersLoad)
{
    WriteArchetype("Alpha.txt", kCrate);
    const std::string unknown = WriteArchetype("Broken/Unknown.txt", "Wobbler\n{\n  Speed 3\n}\nHierarchy\n{\n}\n");
    const std::string unreadable = WriteArchetype("Broken/Unreadable.txt", "Transform\n{\n  Scale { x y z }\n}\n");
    WriteArchetype("Omega.txt", kCrate);
    Start();
    ReportCapture reports;
    Manager().LoadAll();

    const std::string text = reports.Text();
    EXPECT_NE(text.find("This component does not exist: Wobbler\nFile:  " + Util::NormalizePath(unknown)),
              std::string::npos)
        << text;
    EXPECT_NE(text.find(Util::NormalizePath(unreadable)), std::string::npos) << text;
    ASSERT_NE(ArchetypeNamed("Alpha"), nullptr);
    ASSERT_NE(ArchetypeNamed("Omega"), nullptr);
    EXPECT_FLOAT_EQ(ScaleOf(ArchetypeNamed("Omega")).z, 2.0f);
    // What could be read of the broken files stands.
    ASSERT_NE(ArchetypeNamed("Unknown"), nullptr);
    EXPECT_EQ(ComponentNames(ArchetypeNamed("Unknown")), "Hierarchy");
}

TEST_F(ArchetypeFilesTest, AnEmptyFileIsAnArchetypeWithNoComponents)
{
    WriteArchetype("Nothing.txt", "");
    Start();
    Manager().LoadAll();

    ASSERT_NE(ArchetypeNamed("Nothing"), nullptr);
    EXPECT_TRUE(ArchetypeNamed("Nothing")->m_Components.empty());
}

TEST_F(ArchetypeFilesTest, AFileDeletedWhileWatchedLeavesItsArchetype)
{
    const std::string path = WriteArchetype("Crate.txt", kCrate);
    Start();
    Manager().LoadAll();
    FileWatcher::Get().Update(0.0f);
    const GameObject* crate = ArchetypeNamed("Crate");

    std::filesystem::remove(path);
    PollAndUpdateWatcher();

    EXPECT_EQ(ArchetypeNamed("Crate"), crate);
    EXPECT_FLOAT_EQ(ScaleOf(crate).x, 2.0f);
}

TEST_F(ArchetypeFilesTest, UnderTolerantReadAFileIsWrittenBackWithoutWhatNoLongerExistsAndNotReloaded)
{
    const std::string path =
        WriteArchetype("Crate.txt", "Wobbler\n{\n  Speed 3\n}\nTransform\n{\n  Scale { 2 2 2 }\n  Wheels 4\n}\n");
    TouchLater(path, -5);  // written a while ago: the write-back has a time of its own
    Start();
    Util::SetTolerantRead(true);
    ReportCapture reports;
    Manager().LoadAll();
    const GameObject* crate = ArchetypeNamed("Crate");
    PollAndUpdateWatcher();
    PollAndUpdateWatcher();

    EXPECT_EQ(reports.Text(), "");
    EXPECT_EQ(ArchetypeNamed("Crate"), crate);
    EXPECT_EQ(m_Temp.Read("Archetypes/Crate.txt"), "Transform \n{\n  Scale { 2 2 2 }\n}\n");
}

TEST_F(ArchetypeFilesTest, ScriptComponentsInArchetypeFilesAreMadeFromTheirScripts)
{
    WriteComponent("Glow", "--[[!\nfloat Brightness 1\nfloat Radius 2\n]]\n"
                           "function Initialize() _G.lit = this.Brightness end\n");
    WriteArchetype("Lamp.txt", "Transform\n{\n}\nGlow\n{\n  Brightness 4\n}\n");
    Start();
    Manager().LoadAll();

    const GameObject* lamp = ArchetypeNamed("Lamp");
    ASSERT_NE(lamp, nullptr);
    ASSERT_EQ(ComponentNames(lamp), "Transform Glow");
    auto* glow = static_cast<LuaComponent*>(lamp->GetComponent("Glow"));
    EXPECT_FLOAT_EQ(*glow->GetAny("Brightness").Get<float>(), 4.0f);
    EXPECT_FLOAT_EQ(*glow->GetAny("Radius").Get<float>(), 2.0f);
    EXPECT_EQ(glow->GetScript(), nullptr);  // an archetype's components never start

    m_Space.CreateObject(Manager().GetArchetypeId("Lamp"));
    EXPECT_DOUBLE_EQ(Number("lit"), 4.0);
}

TEST_F(ArchetypeFilesTest, CreateWritesAnEmptyFileAndLoadsItAsAnArchetype)
{
    Start();
    const ArchetypeId id = Manager().Create("Barrel");

    ASSERT_NE(id, 0u);
    EXPECT_EQ(Manager().GetArchetypeName(id), "Barrel");
    EXPECT_TRUE(Manager().GetArchetype(id)->m_Components.empty());
    EXPECT_TRUE(std::filesystem::exists(m_Temp.Path() + "Archetypes/Barrel.txt"));
    EXPECT_EQ(Manager().Create("Barrel"), id);
    EXPECT_EQ(Manager().Count(), 1u);
}

TEST_F(ArchetypeFilesTest, DuplicateCopiesTheFileInItsFolderAndLoadsTheCopy)
{
    const std::string path = WriteArchetype("Props/Crate.txt", kCrate);
    Start();
    Manager().LoadAll();
    const ArchetypeId copy = Manager().Duplicate(path, "BigCrate");

    ASSERT_EQ(copy, 2u);
    EXPECT_EQ(Manager().GetPath("BigCrate"), Util::NormalizePath(m_Temp.Path() + "Archetypes/Props/BigCrate.txt"));
    EXPECT_FLOAT_EQ(ScaleOf(Manager().GetArchetype(copy)).x, 2.0f);
    EXPECT_NE(Manager().GetArchetype(copy), ArchetypeNamed("Crate"));
}

TEST_F(ArchetypeFilesTest, RenameMovesTheFileKeepsTheIdAndTheRenamedFileStillReloads)
{
    WriteArchetype("Props/Crate.txt", kCrate);
    Start();
    Manager().LoadAll();
    FileWatcher::Get().Update(0.0f);
    const ArchetypeId id = Manager().GetArchetypeId("Crate");

    ASSERT_TRUE(Manager().Rename(id, "Chest"));
    const std::string moved = m_Temp.Path() + "Archetypes/Props/Chest.txt";
    EXPECT_TRUE(std::filesystem::exists(moved));
    EXPECT_FALSE(std::filesystem::exists(m_Temp.Path() + "Archetypes/Props/Crate.txt"));
    EXPECT_EQ(Manager().GetArchetypeId("Chest"), id);
    EXPECT_EQ(Manager().GetArchetypeId("Crate"), 0u);
    EXPECT_EQ(Manager().GetArchetypeName(id), "Chest");
    EXPECT_EQ(Manager().GetPath("Chest"), Util::NormalizePath(moved));
    EXPECT_EQ(Manager().GetNames(), std::vector<std::string>{"Chest"});

    Rewrite(moved, "Transform\n{\n  Scale { 9 9 9 }\n}\n");
    PollAndUpdateWatcher();
    EXPECT_EQ(Manager().Count(), 1u);
    EXPECT_FLOAT_EQ(ScaleOf(Manager().GetArchetype(id)).x, 9.0f);
}

TEST_F(ArchetypeFilesTest, RenameToATakenOrEmptyNameOrOfAnUnknownIdIsReportedAndChangesNothing)
{
    WriteArchetype("Crate.txt", kCrate);
    WriteArchetype("Chest.txt", kCrate);
    Start();
    Manager().LoadAll();
    ReportCapture reports;

    EXPECT_FALSE(Manager().Rename(1, "Chest"));
    EXPECT_FALSE(Manager().Rename(1, ""));
    EXPECT_FALSE(Manager().Rename(7, "Box"));
    EXPECT_NE(reports.Text().find("can't be renamed"), std::string::npos);
    EXPECT_EQ(Manager().GetArchetypeName(1), "Chest");
    EXPECT_EQ(Manager().GetArchetypeName(2), "Crate");
}

TEST_F(ArchetypeFilesTest, SaveWritesEveryComponentWithItsDifferencesFromDefaultsAndBringsNoReload)
{
    WriteComponent("Glow", "--[[!\nfloat Brightness 1\n]]\n");
    TouchLater(WriteArchetype("Lamp.txt", "Transform\n{\n}\nGlow\n{\n}\n"), -5);
    Start();
    Manager().LoadAll();
    FileWatcher::Get().Update(0.0f);
    GameObject* lamp = ArchetypeNamed("Lamp");
    lamp->GetComponent<Transform>()->m_Scale = Math::Vector3D(1, 3, 1);
    lamp->AddComponentUninitialized("Hierarchy");

    ASSERT_TRUE(Manager().Save(lamp));
    PollAndUpdateWatcher();

    EXPECT_EQ(ArchetypeNamed("Lamp"), lamp);
    EXPECT_EQ(m_Temp.Read("Archetypes/Lamp.txt"),
              "Transform \n{\n  Scale { 1 3 1 }\n}\nGlow \n{\n}\nHierarchy \n{\n}\n");
}

TEST(ShippedArchetypesTest, ThePlayerEnemyPickupAndWallPieceOfTheGameLoadWithoutAReport)
{
    Engine::ArchetypeManager& manager = Engine::ArchetypeManager::Get();
    manager.Clear();
    ScopedDataDirectory data(VORN_DATA_DIR "/");
    LuaSystem lua;
    GameObject::RegisterComponentProperties();
    {
        StdoutCapture dropped;
        lua.Initialize();
    }
    std::string reports;
    {
        ReportCapture capture;
        manager.LoadAll();
        reports = capture.Text();
    }
    EXPECT_EQ(reports, "");

    const std::vector<std::pair<std::string, std::string>> expected = {
        {"Player", "Transform Mesh CameraFocus PlayerMovement"},
        {"EmberCrawler", "Transform SkinnedMesh Bobber"},
        {"HealthOrb", "Transform Mesh Spinner Bobber"},
        {"WallPiece", "Transform TexturedMesh"},
        {"FloorTile", "Transform TexturedMesh"},
        {"Rock", "Transform Mesh PhysicsBody ColliderAxisCube"},
        {"FloorPlaneCollision", "Transform PhysicsBody ColliderPlane"},
        {"Crate", "Transform Mesh PhysicsBody ColliderCube ImpactSound"},
        {"StoneBall", "Transform Mesh PhysicsBody ColliderSphere ImpactSound"},
        {"Camera", "Transform Camera CameraController"},
        {"KeyLight", "Transform Light"},
        {"EmberLight", "Transform Light Orbiter"},
        {"SpotLight", "Transform Light"},
    };
    for (const auto& [name, components] : expected)
    {
        SCOPED_TRACE(name);
        const GameObject* archetype = manager.GetArchetype(manager.GetArchetypeId(name));
        ASSERT_NE(archetype, nullptr);
        std::string names;
        for (const Component* component : archetype->m_Components)
            names += (names.empty() ? "" : " ") + component->GetName();
        EXPECT_EQ(names, components);
    }
    auto* orb = static_cast<LuaComponent*>(manager.GetArchetype(manager.GetArchetypeId("HealthOrb"))->GetComponent("Spinner"));
    EXPECT_FLOAT_EQ(orb->GetAny("DegreesPerSecond").Get<Math::Vector3D>()->y, 120.0f);
    manager.Clear();
}
