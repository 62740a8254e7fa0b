// Room files: what is written reads back as the same room, placed objects are
// read against their archetypes, and broken files give the reader's messages
// without a crash.

#include "rooms/Room.h"

#include "Components/Transform/Transform.h"
#include "engine/ArchetypeManager.h"
#include "engine/Files.h"
#include "engine/GameObject.h"
#include "support/ReportCapture.h"
#include "support/TempFolder.h"
#include "utilities/Serialization/Serializer.h"

#include <gtest/gtest.h>

namespace
{
class RoomFileTest : public testing::Test
{
protected:
    void SetUp() override
    {
        Engine::ArchetypeManager::Get().Clear();
        auto* crate = new GameObject();
        crate->m_Name = "Crate";
        crate->AddComponentUninitialized("Transform");
        Engine::ArchetypeManager::Get().Add(crate);
    }
    void TearDown() override
    {
        Engine::ArchetypeManager::Get().Clear();
        Util::SetTolerantRead(false);
    }

    // A crate placed at (x, 0, z).
    static GameObject* CrateAt(float x, float z)
    {
        Engine::ArchetypeManager& archetypes = Engine::ArchetypeManager::Get();
        GameObject* object = archetypes.GetArchetype(archetypes.Find("Crate"))->Clone();
        object->GetComponent<Transform>()->m_Position = Math::Point3D(x, 0.0f, z);
        return object;
    }
    // A room with every value set away from its default.
    static Room Sample()
    {
        Room room;
        room.m_GridSize = Math::Vector2D(2.0f, 3.0f);
        room.RoomFloor.RoomVec = {{0, 0, 0, 0}, {0, 1, 2, 0}, {0, 3, 1}, {}, {0, 0, 0, 0}};
        room.Objects.Add(CrateAt(1.5f, -2.0f));
        room.Objects.Add(CrateAt(-4.0f, 3.25f));
        room.m_PitDepth = 14.5f;
        room.m_Difficulty = 3.0f;
        room.m_BossRoom = true;
        room.m_BiomeOverride = "IceFields";
        return room;
    }
    static float XOf(const GameObject* object) { return object->GetComponent<Transform>()->m_Position.x; }
};
}

TEST_F(RoomFileTest, ReadingWhatWasWrittenGivesTheSameRoom)
{
    const Room room = Sample();
    Room read;
    read.FromText(room.ToText());
    EXPECT_EQ(read.m_GridSize.x, 2.0f);
    EXPECT_EQ(read.m_GridSize.y, 3.0f);
    EXPECT_EQ(read.RoomFloor.RoomVec, room.RoomFloor.RoomVec);
    ASSERT_EQ(read.Objects.GetObjectList().size(), 2u);
    EXPECT_EQ(XOf(read.GetGameObject(0)), 1.5f);
    EXPECT_EQ(read.GetGameObject(1)->GetComponent<Transform>()->m_Position.z, 3.25f);
    EXPECT_EQ(read.GetGameObject(0)->GetArchetype(), Engine::ArchetypeManager::Get().Find("Crate"));
    EXPECT_EQ(read.m_PitDepth, 14.5f);
    EXPECT_EQ(read.m_Difficulty, 3.0f);
    EXPECT_TRUE(read.m_BossRoom);
    EXPECT_EQ(read.m_BiomeOverride, "IceFields");
    // Written again, the text is the same.
    EXPECT_EQ(read.ToText(), room.ToText());
}

TEST_F(RoomFileTest, GridIsWrittenAsIndentedRowsOfIntegers)
{
    Room room;
    room.RoomFloor.RoomVec = {{0, 1}, {2, 3}};
    const std::string text = room.ToText();
    EXPECT_NE(text.find("RoomFloor {\n  0 1\n  2 3\n  }"), std::string::npos) << text;
}

TEST_F(RoomFileTest, SaveAndLoadThroughAFileSetNameAndPath)
{
    TempFolder temp;
    const std::string path = temp.Write("Rooms/Cavern.txt", "");
    ASSERT_TRUE(Sample().Save(path));
    Room read;
    ASSERT_TRUE(read.Load(path));
    EXPECT_EQ(read.GetName(), "Cavern");
    EXPECT_EQ(read.m_FilePath, path);
    EXPECT_EQ(read.Objects.GetObjectList().size(), 2u);
    EXPECT_FALSE(Room().Load(temp.Path() + "Rooms/Missing.txt"));
}

TEST_F(RoomFileTest, PlacedObjectsAreFoundByIndexInFileOrder)
{
    Room room = Sample();
    GameObject* second = room.GetGameObject(1);
    EXPECT_EQ(room.GetGameObjectIndex(second), 1);
    EXPECT_EQ(room.GetGameObjectIndex(nullptr), -1);
    EXPECT_EQ(room.GetGameObject(2), nullptr);
    EXPECT_EQ(room.GetGameObject(-1), nullptr);
    GameObject stranger;
    EXPECT_EQ(room.GetGameObjectIndex(&stranger), -1);
}

TEST_F(RoomFileTest, UnknownArchetypeIsReportedAndTheObjectsAfterItAreRead)
{
    ReportCapture reports;
    Room room;
    room.FromText("{\n  Objects {\n  Ghost\n  {\n    Transform\n    {\n      Position { 9 9 9 }\n    }\n  }\n"
                  "  Crate\n  {\n    Transform\n    {\n      Position { 7 0 0 }\n    }\n  }\n  }\n"
                  "  PitDepth 20\n}\n",
                  "Rooms/Haunted.txt");
    // Ends the capture, so that failures below are shown.
    reports.Text();
    ASSERT_EQ(room.Objects.GetObjectList().size(), 1u);
    EXPECT_EQ(XOf(room.GetGameObject(0)), 7.0f);
    EXPECT_EQ(room.m_PitDepth, 20.0f);
    EXPECT_TRUE(reports.Holds("Archetype with the name Ghost does not exist! \nFile: Rooms/Haunted.txt"))
        << reports.Text();
    EXPECT_TRUE(reports.Holds("ReadStream"));
    EXPECT_TRUE(reports.Holds("Room.cpp"));
}

TEST_F(RoomFileTest, UnknownArchetypeIsSkippedSilentlyWhileResaving)
{
    Util::SetTolerantRead(true);
    ReportCapture reports;
    Room room;
    room.FromText("{\n  Objects {\n  Ghost\n  {\n    Transform { Position { 9 9 9 } }\n  }\n  Crate\n  {\n  }\n"
                  "  }\n  Difficulty 4\n}\n");
    reports.Text();
    EXPECT_EQ(room.Objects.GetObjectList().size(), 1u);
    EXPECT_EQ(room.m_Difficulty, 4.0f);
    EXPECT_FALSE(reports.Holds("Ghost")) << reports.Text();
}

TEST_F(RoomFileTest, ResaveModeWritesTheRoomBackAtOnce)
{
    TempFolder temp;
    const std::string path = temp.Write("Rooms/Old.txt", "{\n  Objects {\n  Ghost\n  {\n  }\n  }\n}\n");
    Util::SetTolerantRead(true);
    Room room;
    ASSERT_TRUE(room.Load(path));
    Util::SetTolerantRead(false);
    Room again;
    ASSERT_TRUE(again.Load(path));
    EXPECT_TRUE(again.Objects.GetObjectList().empty());
    EXPECT_EQ(again.ToText(), room.ToText());
}

TEST_F(RoomFileTest, RaggedAndBlankRowsAreKeptAsWritten)
{
    Room room;
    room.FromText("{\n  RoomFloor {\n  1 1 1\n  1\n\n  2 3\n  }\n}\n");
    const std::vector<std::vector<int>> expected{{1, 1, 1}, {1}, {}, {2, 3}};
    EXPECT_EQ(room.RoomFloor.RoomVec, expected);
    room.PrepareGrid();
    EXPECT_EQ(room.FloorType(2, 1), 0);
}

TEST_F(RoomFileTest, BrokenRoomFilesNeverCrash)
{
    ReportCapture reports;
    const std::string text = Sample().ToText();
    for (std::size_t length = 0; length <= text.size(); ++length)
    {
        Room room;
        room.FromText(text.substr(0, length));
        room.PrepareGrid();
        (void)room.ShootRay(-3.0f, -3.0f, 3.0f, 2.0f);
        (void)room.ToText();
    }
    for (const char* junk : {"}", "{ RoomFloor }", "{ Objects { } } }", "{ Objects { Crate } }", "{ Objects {{{{ }",
                             "{ RoomFloor { x y\n 1 2 z 3\n } PitDepth nope }", "{ Objects { Crate{ Transform {"})
    {
        Room room;
        room.FromText(junk);
        (void)room.ToText();
    }
}

TEST_F(RoomFileTest, TestRoomIsSavedToAScratchFileAndLoadedBack)
{
    TempFolder temp;
    const std::string old = Util::GetDataDirectory();
    Util::SetDataDirectory(temp.Path());
    Room room = Sample();
    room.m_Name = "Cavern";
    room.m_FilePath = "Rooms/Cavern.txt";
    EXPECT_FALSE(room.LoadTestRoom());
    ASSERT_TRUE(room.SaveTestRoom());
    EXPECT_EQ(Room::TestRoomPath(), temp.Path() + "TestRoom.txt");
    room.RoomFloor.RoomVec.clear();
    room.Objects.Clear();
    room.m_PitDepth = 1.0f;
    ASSERT_TRUE(room.LoadTestRoom());
    Util::SetDataDirectory(old);
    EXPECT_EQ(room.RoomFloor.RoomVec, Sample().RoomFloor.RoomVec);
    EXPECT_EQ(room.Objects.GetObjectList().size(), 2u);
    EXPECT_EQ(room.m_PitDepth, 14.5f);
    EXPECT_EQ(room.GetName(), "Cavern");
    EXPECT_EQ(room.m_FilePath, "Rooms/Cavern.txt");
}
