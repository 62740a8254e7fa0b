// FileWatcher: hot reload. Systems that load data files (archetypes, rooms,
// scripts, shaders) watch each file with a callback; when a file changes on
// disk, its callback runs on the main thread, in FileWatcher::Update.
//
// A thread of the watcher's own reads every watched file's modification time
// once a second, flags the files whose time changed and hands their places over
// in a list; the frame only reads one atomic flag that says whether anything
// waits (a change, an added or removed watch, a released hold), so watching
// costs the frame the same for ten files or ten thousand. Times are whole
// seconds, so two writes within one second of file time count as one change.
//
// A removed watch is dead at once: its callback is not called again, even by
// the Update that is running, since its owner may be gone. A change seen while
// its file's callback runs is delivered by a later Update. Paths are normalised
// as they come in (Util::NormalizePath), so every spelling of a file is one file.
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
    // Set by the thread when the time changed; Update clears it just before the callback runs.
    std::atomic<bool> m_Changed = false;
    // While set, a change waits instead of being delivered.
    std::atomic<bool> m_Held = false;
    // Set when the watch was removed: it is skipped until Update drops it.
    std::atomic<bool> m_Dead = false;
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
    // Ends every watch added with `key` at once; no callback of them runs after this.
    void Remove(const void* key);
    // Marks the file's current time as seen, so the engine's own write doesn't bring a reload.
    void NoteOwnWrite(const std::string& path);
    // Follows a file the engine renamed; the rename itself brings no reload.
    void ChangePath(const std::string& oldPath, const std::string& newPath);
    // Holds back (or releases) the delivery of changes to `path`.
    void SetHeld(const std::string& path, bool held);
    // Takes in added and removed watches, then runs the callbacks of changed files; with nothing
    // waiting it reads one atomic flag and returns.
    void Update(float) override
    {
        if (m_Pending.load(std::memory_order_acquire))
            Deliver();
    }
    // One round of the thread: reads every watched file's time and hands over the changed ones.
    void Poll();
    // The lock that guards the watch lists and file times; file writers hold it while they write.
    std::recursive_mutex& GetMutex() { return m_Mutex; }
    // Number of files being watched (added and removed ones count from the next Update).
    std::size_t CountWatched() const { return m_Watched.size(); }
    Meta::Data* GetMeta() const override;

    // Seconds between two rounds of the thread.
    static constexpr int kPollSeconds = 1;

private:
    void Run();
    // Update's work when something waits.
    void Deliver();
    // Notes that m_Watched[index] has a change to deliver; the caller holds m_Mutex.
    void HandOver(std::size_t index);

    bool m_Stop = false;
    // Only Deliver adds to or takes from it, never while its callbacks run.
    std::vector<WatchedFile> m_Watched;
    std::vector<WatchedFile> m_Added;
    // Places in m_Watched with a change to deliver, filled by the thread (may repeat a place).
    std::vector<std::size_t> m_Changes;
    // The list Deliver is working through; swapped with m_Changes so neither allocates once grown.
    std::vector<std::size_t> m_Delivering;
    // True when m_Watched holds dead watches to drop.
    bool m_HasDead = false;
    // True while Deliver runs callbacks: an Update from a callback waits for the next frame.
    bool m_InDelivery = false;
    std::recursive_mutex m_Mutex;
    // Something waits for Update: a change, an added or removed watch, or a released hold.
    std::atomic<bool> m_Pending = false;
    std::mutex m_SleepMutex;
    std::condition_variable m_Wake;
    std::thread m_Thread;
};

// The modification time of a file in whole seconds, or 0 when it can't be read.
std::int64_t FileModificationTime(const std::string& path);
