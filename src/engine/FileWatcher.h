// FileWatcher: hot reload. Systems that load data files (archetypes, rooms,
// scripts, shaders) watch each file with a callback; when a file changes on
// disk, its callback runs on the main thread, in FileWatcher::Update.
//
// A thread of the watcher's own reads every watched file's modification time
// once a second and flags the files whose time changed; the frame only scans
// those flags. Times are whole seconds, so two writes within one second of file
// time count as one change.
//
//   FileWatcher::Get().Add(path, true, this, [](const std::string& file) { Load(file); });
//
// With `immediate`, Add runs the callback at once, so a first load and every
// later reload go through the same code. The engine's own writes (the text
// format's writer) take the watcher's lock and note the write, so saving a file
// from the editor doesn't reload it.
#pragma once

#include "engine/System.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

// One file being watched.
struct WatchedFile
{
    // What the watcher calls with the path when the file changed.
    using Callback = std::function<void(const std::string& path)>;

    WatchedFile() = default;
    WatchedFile(const WatchedFile& other);
    WatchedFile& operator=(const WatchedFile& other);

    // Path of the file.
    std::string m_Path;
    // Modification time last acted on, in seconds (0 for a missing file).
    std::int64_t m_Time = 0;
    // Modification time the watcher's thread read last.
    std::int64_t m_LastSeen = 0;
    // Called on the main thread when the file changed.
    Callback m_Callback;
    // Who added the watch; Remove(key) ends all of its watches.
    const void* m_Key = nullptr;
    // Set by the thread when the time changed, cleared once the callback ran.
    std::atomic<bool> m_Changed = false;
    // While set, a change waits instead of being delivered.
    bool m_Held = false;
};

class FileWatcher : public System
{
public:
    // The one FileWatcher of the game, with its thread started.
    static FileWatcher& Get();

    // Starts the watching thread.
    FileWatcher();
    // Stops and joins the thread.
    ~FileWatcher() override;
    FileWatcher(const FileWatcher&) = delete;
    FileWatcher& operator=(const FileWatcher&) = delete;

    // Watches `path` for `key`; with `immediate`, calls the callback at once on this thread.
    void Add(const std::string& path, bool immediate, const void* key, WatchedFile::Callback callback);
    // Ends every watch added with `key`, at the next Update.
    void Remove(const void* key);
    // Marks the file's current time as seen, so the engine's own write doesn't bring a reload.
    void NoteOwnWrite(const std::string& path);
    // Follows a file the engine renamed; the rename itself brings no reload.
    void ChangePath(const std::string& oldPath, const std::string& newPath);
    // Holds back (or releases) the delivery of changes to `path`.
    void SetHeld(const std::string& path, bool held);
    // Takes in added and removed watches, then runs the callbacks of changed files.
    void Update(float dt) override;
    // One round of the thread: reads every watched file's time and flags the changed ones.
    void Poll();
    // The lock that guards the watch lists and file times; file writers hold it while they write.
    std::recursive_mutex& GetMutex() { return m_Mutex; }
    // Number of files being watched (added ones count after the next Update).
    std::size_t CountWatched() const { return m_Watched.size(); }
    Meta::Data* GetMeta() const override;

    // Seconds between two rounds of the thread.
    static constexpr int kPollSeconds = 1;

private:
    void Run();

    bool m_Stop = false;
    std::vector<WatchedFile> m_Watched;
    std::vector<WatchedFile> m_Added;
    std::vector<const void*> m_Removed;
    std::recursive_mutex m_Mutex;
    // True while m_Added or m_Removed holds something: the frame's only test before the flag scan.
    std::atomic<bool> m_Pending = false;
    std::mutex m_SleepMutex;
    std::condition_variable m_Wake;
    std::thread m_Thread;
};

// The modification time of a file in whole seconds, or 0 when it can't be read.
std::int64_t FileModificationTime(const std::string& path);
