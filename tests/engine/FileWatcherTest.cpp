#include "engine/FileWatcher.h"

#include "support/TempFolder.h"
#include "utilities/Serialization/Serializer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace
{
using namespace std::chrono_literals;

// Gives a file a modification time `seconds` away from now, as a later save would.
void Touch(const std::string& path, int seconds, std::chrono::milliseconds extra = 0ms)
{
    const auto when = std::filesystem::file_time_type::clock::now() + std::chrono::seconds(seconds) + extra;
    std::filesystem::last_write_time(path, when);
}

// Records the paths its callback got, and on which thread.
struct Recorder
{
    WatchedFile::Callback Callback()
    {
        return [this](const std::string& path) {
            paths.push_back(path);
            threads.push_back(std::this_thread::get_id());
        };
    }
    std::vector<std::string> paths;
    std::vector<std::thread::id> threads;
};

// A watcher of its own and a temporary folder for each test.
class FileWatcherTest : public ::testing::Test
{
protected:
    // Writes a file and watches it with the recorder, taken in by an Update; gives its path.
    std::string WatchNew(const std::string& name)
    {
        const std::string path = m_Temp.Write(name, "1");
        m_Watcher.Add(path, false, &m_Recorder, m_Recorder.Callback());
        m_Watcher.Update(0.016f);
        return path;
    }
    // One round of the thread, then one frame's delivery.
    void PollAndUpdate()
    {
        m_Watcher.Poll();
        m_Watcher.Update(0.016f);
    }

    TempFolder m_Temp;
    FileWatcher m_Watcher;
    Recorder m_Recorder;
};
}

TEST_F(FileWatcherTest, ImmediateAddCallsTheCallbackAtOnce)
{
    const std::string path = m_Temp.Write("a.txt", "1");
    m_Watcher.Add(path, true, &m_Recorder, m_Recorder.Callback());
    EXPECT_EQ(m_Recorder.paths, std::vector<std::string>{path});
    m_Watcher.Add(path, false, &m_Recorder, m_Recorder.Callback());
    EXPECT_EQ(m_Recorder.paths.size(), 1u);
}

TEST_F(FileWatcherTest, AddedWatchesCountFromTheNextUpdate)
{
    m_Watcher.Add(m_Temp.Write("a.txt", "1"), false, &m_Recorder, m_Recorder.Callback());
    EXPECT_EQ(m_Watcher.CountWatched(), 0u);
    m_Watcher.Update(0.016f);
    EXPECT_EQ(m_Watcher.CountWatched(), 1u);
}

TEST_F(FileWatcherTest, ChangedFileIsDeliveredOnceInUpdate)
{
    const std::string path = WatchNew("a.txt");
    PollAndUpdate();
    EXPECT_TRUE(m_Recorder.paths.empty());

    Touch(path, 5);
    m_Watcher.Poll();
    EXPECT_TRUE(m_Recorder.paths.empty());
    m_Watcher.Update(0.016f);
    EXPECT_EQ(m_Recorder.paths, std::vector<std::string>{path});
    EXPECT_EQ(m_Recorder.threads.front(), std::this_thread::get_id());
    PollAndUpdate();
    EXPECT_EQ(m_Recorder.paths.size(), 1u);
}

TEST_F(FileWatcherTest, ChangeOnDiskReachesTheMainThreadWithinTwoSeconds)
{
    const std::string path = WatchNew("a.txt");
    std::ofstream(path, std::ios::trunc) << "changed";
    Touch(path, 3);
    const auto start = std::chrono::steady_clock::now();
    while (m_Recorder.paths.empty() && std::chrono::steady_clock::now() - start < 3s)
    {
        m_Watcher.Update(0.016f);
        std::this_thread::sleep_for(10ms);
    }
    const auto waited = std::chrono::steady_clock::now() - start;
    ASSERT_EQ(m_Recorder.paths, std::vector<std::string>{path});
    EXPECT_EQ(m_Recorder.threads.front(), std::this_thread::get_id());
    EXPECT_LT(waited, 2500ms);
}

TEST_F(FileWatcherTest, ASecondWriteInTheSameSecondOfFileTimeBringsNoSecondReload)
{
    const std::string path = WatchNew("a.txt");
    // Both writes land inside one whole second of file time, ten seconds ahead.
    const auto second = std::chrono::floor<std::chrono::seconds>(std::filesystem::file_time_type::clock::now()) + 10s;
    std::ofstream(path, std::ios::trunc) << "first";
    std::filesystem::last_write_time(path, second + 100ms);
    PollAndUpdate();
    ASSERT_EQ(m_Recorder.paths.size(), 1u);

    std::ofstream(path, std::ios::trunc) << "second";
    std::filesystem::last_write_time(path, second + 600ms);
    PollAndUpdate();
    PollAndUpdate();
    EXPECT_EQ(m_Recorder.paths.size(), 1u);
}

TEST_F(FileWatcherTest, AWatchAddedAndRemovedBeforeTheNextUpdateNeverFires)
{
    const std::string path = m_Temp.Write("a.txt", "1");
    m_Watcher.Add(path, false, &m_Recorder, m_Recorder.Callback());
    m_Watcher.Remove(&m_Recorder);
    m_Watcher.Update(0.016f);
    EXPECT_EQ(m_Watcher.CountWatched(), 0u);
    Touch(path, 5);
    PollAndUpdate();
    EXPECT_TRUE(m_Recorder.paths.empty());
}

TEST_F(FileWatcherTest, ACallbackThatRemovesAnotherWatchStopsItsCallbackInTheSameUpdate)
{
    const std::string first = m_Temp.Write("a.txt", "1");
    const std::string second = m_Temp.Write("b.txt", "1");
    Recorder removed;
    int calls = 0;
    m_Watcher.Add(first, false, &calls, [&](const std::string&) {
        ++calls;
        m_Watcher.Remove(&removed);
    });
    m_Watcher.Add(second, false, &removed, removed.Callback());
    m_Watcher.Update(0.016f);
    Touch(first, 5);
    Touch(second, 5);
    PollAndUpdate();
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(removed.paths.empty());
    PollAndUpdate();
    EXPECT_TRUE(removed.paths.empty());
    EXPECT_EQ(m_Watcher.CountWatched(), 1u);
}

TEST_F(FileWatcherTest, ACallbackMayRemoveItsOwnWatchAndWatchTheFileAgain)
{
    const std::string path = WatchNew("a.txt");
    int reloads = 0;
    std::function<void(const std::string&)> reload = [&](const std::string& file) {
        ++reloads;
        m_Watcher.Remove(&reloads);
        m_Watcher.Add(file, false, &reloads, reload);
    };
    m_Watcher.Add(path, false, &reloads, reload);
    m_Watcher.Update(0.016f);
    for (int round = 1; round <= 3; ++round)
    {
        // The watch added again is taken in by the next frame.
        m_Watcher.Update(0.016f);
        Touch(path, 5 * round);
        PollAndUpdate();
        EXPECT_EQ(reloads, round);
    }
    m_Watcher.Update(0.016f);
    EXPECT_EQ(m_Watcher.CountWatched(), 2u);
}

TEST_F(FileWatcherTest, AChangeSeenWhileItsCallbackRunsIsDeliveredByALaterUpdate)
{
    const std::string path = m_Temp.Write("a.txt", "1");
    int calls = 0;
    m_Watcher.Add(path, false, &calls, [&](const std::string& file) {
        if (++calls == 1)
        {
            // The file is saved again while it is being reloaded, and the thread sees it.
            Touch(file, 20);
            m_Watcher.Poll();
        }
    });
    m_Watcher.Update(0.016f);
    Touch(path, 5);
    PollAndUpdate();
    EXPECT_EQ(calls, 1);
    m_Watcher.Update(0.016f);
    EXPECT_EQ(calls, 2);
    PollAndUpdate();
    EXPECT_EQ(calls, 2);
}

TEST_F(FileWatcherTest, EverySpellingOfAPathIsOneFile)
{
    m_Temp.Write("sub/a.txt", "1");
    const std::string normal = m_Temp.Path() + "sub/a.txt";
    std::string backslashed = m_Temp.Path() + "sub/./a.txt";
    std::replace(backslashed.begin(), backslashed.end(), '/', '\\');
    m_Watcher.Add(m_Temp.Path() + "/sub//./a.txt", true, &m_Recorder, m_Recorder.Callback());
    m_Watcher.Update(0.016f);
    ASSERT_EQ(m_Recorder.paths, std::vector<std::string>{normal});

    // The engine's own write under another spelling is known as its own.
    Touch(normal, 4);
    m_Watcher.NoteOwnWrite(backslashed);
    PollAndUpdate();
    EXPECT_EQ(m_Recorder.paths.size(), 1u);

    // A hold under a third spelling holds the same file.
    m_Watcher.SetHeld(m_Temp.Path() + "sub/./a.txt", true);
    Touch(normal, 8);
    PollAndUpdate();
    EXPECT_EQ(m_Recorder.paths.size(), 1u);
    m_Watcher.SetHeld(backslashed, false);
    m_Watcher.Update(0.016f);
    EXPECT_EQ(m_Recorder.paths, (std::vector<std::string>{normal, normal}));
}

TEST_F(FileWatcherTest, TheEnginesOwnWriterUnderAnotherSpellingBringsNoReload)
{
    const std::string path = m_Temp.Write("Settings.txt", "{\n}\n");
    FileWatcher& watcher = FileWatcher::Get();
    watcher.Add(path, false, &m_Recorder, m_Recorder.Callback());
    watcher.Update(0.016f);
    {
        Util::Serializer file;
        ASSERT_TRUE(file.OpenWrite(m_Temp.Path() + ".//Settings.txt"));
        file.m_Stream << "{\n  Saved true\n}\n";
        file.m_Stream.flush();
        Touch(path, 7);
    }
    watcher.Poll();
    watcher.Update(0.016f);
    EXPECT_TRUE(m_Recorder.paths.empty());
    watcher.Remove(&m_Recorder);
    watcher.Update(0.016f);
}

TEST_F(FileWatcherTest, RemovedFileReadsAsAChangeAndTheCallbackCopes)
{
    const std::string path = m_Temp.Write("a.txt", "1");
    bool opened = true;
    int calls = 0;
    m_Watcher.Add(path, false, &calls, [&](const std::string& file) {
        ++calls;
        opened = std::ifstream(file).is_open();
    });
    m_Watcher.Update(0.016f);
    std::filesystem::remove(path);
    PollAndUpdate();
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(opened);
}

TEST_F(FileWatcherTest, SavingWithTheEnginesOwnWriterDoesNotBringAReload)
{
    // The engine's writer notes its writes with the game's watcher.
    const std::string path = m_Temp.Write("Settings.txt", "{\n}\n");
    FileWatcher& watcher = FileWatcher::Get();
    watcher.Add(path, false, &m_Recorder, m_Recorder.Callback());
    watcher.Update(0.016f);
    {
        Util::Serializer file;
        ASSERT_TRUE(file.OpenWrite(path));
        file.m_Stream << "{\n  Saved true\n}\n";
        file.m_Stream.flush();
        // A later second in file time, as a save a moment later would have.
        Touch(path, 7);
    }
    watcher.Poll();
    watcher.Update(0.016f);
    EXPECT_TRUE(m_Recorder.paths.empty());
    watcher.Remove(&m_Recorder);
    watcher.Update(0.016f);
}

TEST_F(FileWatcherTest, NoteOwnWriteClearsAChangeAlreadySeen)
{
    const std::string path = WatchNew("a.txt");
    Touch(path, 4);
    m_Watcher.Poll();
    m_Watcher.NoteOwnWrite(path);
    m_Watcher.Update(0.016f);
    EXPECT_TRUE(m_Recorder.paths.empty());
}

TEST_F(FileWatcherTest, RemoveEndsEveryWatchOfTheKey)
{
    const std::string first = WatchNew("a.txt");
    const std::string second = m_Temp.Write("b.txt", "1");
    Recorder other;
    m_Watcher.Add(second, false, &m_Recorder, m_Recorder.Callback());
    m_Watcher.Add(second, false, &other, other.Callback());
    m_Watcher.Update(0.016f);
    m_Watcher.Remove(&m_Recorder);
    m_Watcher.Update(0.016f);
    EXPECT_EQ(m_Watcher.CountWatched(), 1u);
    Touch(first, 5);
    Touch(second, 5);
    PollAndUpdate();
    EXPECT_TRUE(m_Recorder.paths.empty());
    EXPECT_EQ(other.paths, std::vector<std::string>{second});
}

TEST_F(FileWatcherTest, ChangePathFollowsARenamedFile)
{
    const std::string old = WatchNew("old.txt");
    const std::string renamed = m_Temp.Path() + "new.txt";
    std::filesystem::rename(old, renamed);
    m_Watcher.ChangePath(old, renamed);
    PollAndUpdate();
    EXPECT_TRUE(m_Recorder.paths.empty());
    Touch(renamed, 5);
    PollAndUpdate();
    EXPECT_EQ(m_Recorder.paths, std::vector<std::string>{renamed});
}

TEST_F(FileWatcherTest, HeldChangeWaitsUntilReleased)
{
    const std::string path = WatchNew("a.txt");
    m_Watcher.SetHeld(path, true);
    Touch(path, 5);
    PollAndUpdate();
    EXPECT_TRUE(m_Recorder.paths.empty());
    m_Watcher.SetHeld(path, false);
    m_Watcher.Update(0.016f);
    EXPECT_EQ(m_Recorder.paths.size(), 1u);
}

TEST_F(FileWatcherTest, CallbackMayAddWatches)
{
    const std::string path = m_Temp.Write("a.txt", "1");
    const std::string other = m_Temp.Write("b.txt", "1");
    int calls = 0;
    m_Watcher.Add(path, false, &calls, [&](const std::string&) {
        ++calls;
        m_Watcher.Add(other, false, &calls, [](const std::string&) {});
    });
    m_Watcher.Update(0.016f);
    Touch(path, 5);
    PollAndUpdate();
    EXPECT_EQ(calls, 1);
    m_Watcher.Update(0.016f);
    EXPECT_EQ(m_Watcher.CountWatched(), 2u);
}
