#include "engine/FileWatcher.h"

#include "support/TempFolder.h"
#include "utilities/Serialization/Serializer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
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
}

TEST(FileWatcherTest, ImmediateAddCallsTheCallbackAtOnce)
{
    TempFolder temp;
    const std::string path = temp.Write("a.txt", "1");
    FileWatcher watcher;
    Recorder recorder;
    watcher.Add(path, true, &recorder, recorder.Callback());
    EXPECT_EQ(recorder.paths, std::vector<std::string>{path});
    watcher.Add(path, false, &recorder, recorder.Callback());
    EXPECT_EQ(recorder.paths.size(), 1u);
}

TEST(FileWatcherTest, AddedWatchesCountFromTheNextUpdate)
{
    TempFolder temp;
    FileWatcher watcher;
    Recorder recorder;
    watcher.Add(temp.Write("a.txt", "1"), false, &recorder, recorder.Callback());
    EXPECT_EQ(watcher.CountWatched(), 0u);
    watcher.Update(0.016f);
    EXPECT_EQ(watcher.CountWatched(), 1u);
}

TEST(FileWatcherTest, ChangedFileIsDeliveredOnceInUpdate)
{
    TempFolder temp;
    const std::string path = temp.Write("a.txt", "1");
    FileWatcher watcher;
    Recorder recorder;
    watcher.Add(path, false, &recorder, recorder.Callback());
    watcher.Update(0.016f);
    watcher.Poll();
    watcher.Update(0.016f);
    EXPECT_TRUE(recorder.paths.empty());

    Touch(path, 5);
    watcher.Poll();
    EXPECT_TRUE(recorder.paths.empty());
    watcher.Update(0.016f);
    EXPECT_EQ(recorder.paths, std::vector<std::string>{path});
    EXPECT_EQ(recorder.threads.front(), std::this_thread::get_id());
    watcher.Poll();
    watcher.Update(0.016f);
    EXPECT_EQ(recorder.paths.size(), 1u);
}

TEST(FileWatcherTest, ChangeOnDiskReachesTheMainThreadWithinTwoSeconds)
{
    TempFolder temp;
    const std::string path = temp.Write("a.txt", "1");
    FileWatcher watcher;
    Recorder recorder;
    watcher.Add(path, false, &recorder, recorder.Callback());
    watcher.Update(0.016f);
    std::ofstream(path, std::ios::trunc) << "changed";
    Touch(path, 3);
    const auto start = std::chrono::steady_clock::now();
    while (recorder.paths.empty() && std::chrono::steady_clock::now() - start < 3s)
    {
        watcher.Update(0.016f);
        std::this_thread::sleep_for(10ms);
    }
    const auto waited = std::chrono::steady_clock::now() - start;
    ASSERT_EQ(recorder.paths, std::vector<std::string>{path});
    EXPECT_EQ(recorder.threads.front(), std::this_thread::get_id());
    EXPECT_LT(waited, 2500ms);
}

TEST(FileWatcherTest, TwoQuickWritesInTheSameSecondCountAsOneChange)
{
    TempFolder temp;
    const std::string path = temp.Write("a.txt", "1");
    FileWatcher watcher;
    Recorder recorder;
    watcher.Add(path, false, &recorder, recorder.Callback());
    watcher.Update(0.016f);
    std::ofstream(path, std::ios::trunc) << "first";
    Touch(path, 10, 100ms);
    watcher.Poll();
    std::ofstream(path, std::ios::trunc) << "second";
    Touch(path, 10, 600ms);
    watcher.Poll();
    watcher.Update(0.016f);
    watcher.Poll();
    watcher.Update(0.016f);
    EXPECT_EQ(recorder.paths.size(), 1u);
}

TEST(FileWatcherTest, RemovedFileReadsAsAChangeAndTheCallbackCopes)
{
    TempFolder temp;
    const std::string path = temp.Write("a.txt", "1");
    FileWatcher watcher;
    bool opened = true;
    int calls = 0;
    watcher.Add(path, false, &calls, [&](const std::string& file) {
        ++calls;
        opened = std::ifstream(file).is_open();
    });
    watcher.Update(0.016f);
    std::filesystem::remove(path);
    watcher.Poll();
    watcher.Update(0.016f);
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(opened);
}

TEST(FileWatcherTest, SavingWithTheEnginesOwnWriterDoesNotBringAReload)
{
    TempFolder temp;
    const std::string path = temp.Write("Settings.txt", "{\n}\n");
    FileWatcher& watcher = FileWatcher::Get();
    Recorder recorder;
    watcher.Add(path, false, &recorder, recorder.Callback());
    watcher.Update(0.016f);
    {
        Util::Serializer file;
        ASSERT_TRUE(file.OpenWrite(path));
        // A second later in file time, as a save in the next second would be.
        file.m_Stream << "{\n  Saved true\n}\n";
        file.m_Stream.flush();
        Touch(path, 7);
    }
    watcher.Poll();
    watcher.Update(0.016f);
    EXPECT_TRUE(recorder.paths.empty());
    watcher.Remove(&recorder);
    watcher.Update(0.016f);
}

TEST(FileWatcherTest, NoteOwnWriteClearsAChangeAlreadySeen)
{
    TempFolder temp;
    const std::string path = temp.Write("a.txt", "1");
    FileWatcher watcher;
    Recorder recorder;
    watcher.Add(path, false, &recorder, recorder.Callback());
    watcher.Update(0.016f);
    Touch(path, 4);
    watcher.Poll();
    watcher.NoteOwnWrite(path);
    watcher.Update(0.016f);
    EXPECT_TRUE(recorder.paths.empty());
}

TEST(FileWatcherTest, RemoveEndsEveryWatchOfTheKey)
{
    TempFolder temp;
    const std::string first = temp.Write("a.txt", "1");
    const std::string second = temp.Write("b.txt", "1");
    FileWatcher watcher;
    Recorder mine;
    Recorder other;
    watcher.Add(first, false, &mine, mine.Callback());
    watcher.Add(second, false, &mine, mine.Callback());
    watcher.Add(second, false, &other, other.Callback());
    watcher.Update(0.016f);
    watcher.Remove(&mine);
    watcher.Update(0.016f);
    EXPECT_EQ(watcher.CountWatched(), 1u);
    Touch(first, 5);
    Touch(second, 5);
    watcher.Poll();
    watcher.Update(0.016f);
    EXPECT_TRUE(mine.paths.empty());
    EXPECT_EQ(other.paths, std::vector<std::string>{second});
}

TEST(FileWatcherTest, ChangePathFollowsARenamedFile)
{
    TempFolder temp;
    const std::string old = temp.Write("old.txt", "1");
    const std::string renamed = temp.Path() + "new.txt";
    FileWatcher watcher;
    Recorder recorder;
    watcher.Add(old, false, &recorder, recorder.Callback());
    watcher.Update(0.016f);
    std::filesystem::rename(old, renamed);
    watcher.ChangePath(old, renamed);
    watcher.Poll();
    watcher.Update(0.016f);
    EXPECT_TRUE(recorder.paths.empty());
    Touch(renamed, 5);
    watcher.Poll();
    watcher.Update(0.016f);
    EXPECT_EQ(recorder.paths, std::vector<std::string>{renamed});
}

TEST(FileWatcherTest, HeldChangeWaitsUntilReleased)
{
    TempFolder temp;
    const std::string path = temp.Write("a.txt", "1");
    FileWatcher watcher;
    Recorder recorder;
    watcher.Add(path, false, &recorder, recorder.Callback());
    watcher.Update(0.016f);
    watcher.SetHeld(path, true);
    Touch(path, 5);
    watcher.Poll();
    watcher.Update(0.016f);
    EXPECT_TRUE(recorder.paths.empty());
    watcher.SetHeld(path, false);
    watcher.Update(0.016f);
    EXPECT_EQ(recorder.paths.size(), 1u);
}

TEST(FileWatcherTest, CallbackMayAddWatches)
{
    TempFolder temp;
    const std::string path = temp.Write("a.txt", "1");
    const std::string other = temp.Write("b.txt", "1");
    FileWatcher watcher;
    int calls = 0;
    watcher.Add(path, false, &calls, [&](const std::string&) {
        ++calls;
        watcher.Add(other, false, &calls, [](const std::string&) {});
    });
    watcher.Update(0.016f);
    Touch(path, 5);
    watcher.Poll();
    watcher.Update(0.016f);
    EXPECT_EQ(calls, 1);
    watcher.Update(0.016f);
    EXPECT_EQ(watcher.CountWatched(), 2u);
}
