// The frame's cost of hot reload: FileWatcher::Update with many watched files
// and no change, beside a read of one atomic flag, which is all the frame should
// pay (the file times are read, and changes collected, on the watcher's own
// thread).
#include "engine/FileWatcher.h"

#include <benchmark/benchmark.h>

#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace
{
// A folder of `count` small files, removed at exit.
class WatchedFolder
{
public:
    explicit WatchedFolder(int count)
        : m_Path(std::filesystem::temp_directory_path() / ("vorn_bench_watch_" + std::to_string(getpid())))
    {
        std::filesystem::create_directories(m_Path);
        for (int i = 0; i < count; ++i)
        {
            m_Files.push_back((m_Path / ("file" + std::to_string(i) + ".txt")).string());
            std::ofstream(m_Files.back()) << i;
        }
    }
    ~WatchedFolder() { std::filesystem::remove_all(m_Path); }

    const std::vector<std::string>& Files() const { return m_Files; }

private:
    std::filesystem::path m_Path;
    std::vector<std::string> m_Files;
};

void FileWatcherUpdate(benchmark::State& state)
{
    const WatchedFolder folder(static_cast<int>(state.range(0)));
    FileWatcher watcher;
    int reloads = 0;
    for (const std::string& file : folder.Files())
        watcher.Add(file, false, &folder, [&reloads](const std::string&) { ++reloads; });
    watcher.Update(0.016f);
    for (auto _ : state)
        watcher.Update(0.016f);
    benchmark::DoNotOptimize(reloads);
}
BENCHMARK(FileWatcherUpdate)->Arg(1000);

void FileWatcherUpdate_Reference(benchmark::State& state)
{
    std::atomic<bool> somethingChanged = false;
    int reloads = 0;
    for (auto _ : state)
    {
        if (somethingChanged.load(std::memory_order_acquire))
            ++reloads;
        benchmark::DoNotOptimize(reloads);
    }
}
BENCHMARK(FileWatcherUpdate_Reference)->Arg(1000);
}
