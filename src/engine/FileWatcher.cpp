#include "engine/FileWatcher.h"

#include "engine/Files.h"
#include "platform/Threads.h"
#include "utilities/Meta/Registration.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <system_error>

META_REGISTER(FileWatcher)
{
    DERIVE(System);
    DESCRIPTION("Watches data files and reloads them when they change on disk.");
}

std::int64_t FileModificationTime(const std::string& path)
{
    std::error_code error;
    const auto time = std::filesystem::last_write_time(path, error);
    if (error)
        return 0;
    return std::chrono::duration_cast<std::chrono::seconds>(time.time_since_epoch()).count();
}

WatchedFile::WatchedFile(const WatchedFile& other)
{
    *this = other;
}

WatchedFile& WatchedFile::operator=(const WatchedFile& other)
{
    m_Path = other.m_Path;
    m_Time = other.m_Time;
    m_LastSeen = other.m_LastSeen;
    m_Callback = other.m_Callback;
    m_Key = other.m_Key;
    m_Changed = other.m_Changed.load();
    m_Held = other.m_Held.load();
    m_Dead = other.m_Dead.load();
    return *this;
}

FileWatcher& FileWatcher::Get()
{
    // Never destroyed: the process ends the thread.
    static FileWatcher* watcher = new FileWatcher();
    return *watcher;
}

FileWatcher::FileWatcher()
    : m_Thread([this] {
          Platform::BeginEngineThread();
          Run();
      })
{
}

FileWatcher::~FileWatcher()
{
    {
        std::lock_guard<std::mutex> lock(m_SleepMutex);
        m_Stop = true;
    }
    m_Wake.notify_all();
    m_Thread.join();
}

Meta::Data* FileWatcher::GetMeta() const
{
    return Meta::Get<FileWatcher>();
}

void FileWatcher::Run()
{
    std::unique_lock<std::mutex> sleep(m_SleepMutex);
    while (!m_Stop)
    {
        sleep.unlock();
        Poll();
        sleep.lock();
        m_Wake.wait_for(sleep, std::chrono::seconds(kPollSeconds), [this] { return m_Stop; });
    }
}

void FileWatcher::Poll()
{
    std::lock_guard<std::recursive_mutex> lock(m_Mutex);
    for (std::size_t i = 0; i < m_Watched.size(); ++i)
    {
        WatchedFile& file = m_Watched[i];
        if (file.m_Dead)
            continue;
        const std::int64_t time = FileModificationTime(file.m_Path);
        file.m_LastSeen = time;
        if (time == file.m_Time)
            continue;
        file.m_Time = time;
        // A flag already set means the place is already handed over (or held).
        if (!file.m_Changed.exchange(true))
            HandOver(i);
    }
}

void FileWatcher::HandOver(std::size_t index)
{
    m_Changes.push_back(index);
    m_Pending.store(true, std::memory_order_release);
}

void FileWatcher::Add(const std::string& path, bool immediate, const void* key, WatchedFile::Callback callback)
{
    const std::string normal = Util::NormalizePath(path);
    {
        std::lock_guard<std::recursive_mutex> lock(m_Mutex);
        WatchedFile file;
        file.m_Path = normal;
        file.m_Time = file.m_LastSeen = FileModificationTime(normal);
        file.m_Callback = callback;
        file.m_Key = key;
        m_Added.push_back(std::move(file));
        m_Pending.store(true, std::memory_order_release);
    }
    if (immediate)
        callback(normal);
}

void FileWatcher::Remove(const void* key)
{
    std::lock_guard<std::recursive_mutex> lock(m_Mutex);
    std::erase_if(m_Added, [key](const WatchedFile& file) { return file.m_Key == key; });
    // Only marked here: Deliver may be walking m_Watched, so it drops them itself.
    for (WatchedFile& file : m_Watched)
        if (file.m_Key == key && !file.m_Dead)
        {
            file.m_Dead = true;
            m_HasDead = true;
            m_Pending.store(true, std::memory_order_release);
        }
}

void FileWatcher::NoteOwnWrite(const std::string& path)
{
    const std::string normal = Util::NormalizePath(path);
    std::lock_guard<std::recursive_mutex> lock(m_Mutex);
    for (std::vector<WatchedFile>* list : {&m_Watched, &m_Added})
        for (WatchedFile& file : *list)
            if (file.m_Path == normal)
            {
                file.m_Time = file.m_LastSeen = FileModificationTime(normal);
                file.m_Changed = false;
            }
}

void FileWatcher::ChangePath(const std::string& oldPath, const std::string& newPath)
{
    const std::string oldNormal = Util::NormalizePath(oldPath);
    const std::string newNormal = Util::NormalizePath(newPath);
    std::lock_guard<std::recursive_mutex> lock(m_Mutex);
    for (std::vector<WatchedFile>* list : {&m_Watched, &m_Added})
        for (WatchedFile& file : *list)
            if (file.m_Path == oldNormal)
            {
                file.m_Path = newNormal;
                file.m_Time = file.m_LastSeen = FileModificationTime(newNormal);
                // The move itself is no change of content.
                file.m_Changed = false;
            }
}

void FileWatcher::SetHeld(const std::string& path, bool held)
{
    const std::string normal = Util::NormalizePath(path);
    std::lock_guard<std::recursive_mutex> lock(m_Mutex);
    for (WatchedFile& file : m_Added)
        if (file.m_Path == normal)
            file.m_Held = held;
    for (std::size_t i = 0; i < m_Watched.size(); ++i)
    {
        WatchedFile& file = m_Watched[i];
        if (file.m_Path != normal)
            continue;
        file.m_Held = held;
        // A change that waited while held goes out with the next Update.
        if (!held && file.m_Changed)
            HandOver(i);
    }
}

void FileWatcher::Deliver()
{
    if (m_InDelivery)
        return;
    {
        std::lock_guard<std::recursive_mutex> lock(m_Mutex);
        m_Pending.store(false, std::memory_order_relaxed);
        if (m_HasDead)
        {
            std::erase_if(m_Watched, [](const WatchedFile& file) { return file.m_Dead.load(); });
            m_HasDead = false;
            // The places moved: hand over again every change still waiting.
            m_Changes.clear();
            for (std::size_t i = 0; i < m_Watched.size(); ++i)
                if (m_Watched[i].m_Changed)
                    m_Changes.push_back(i);
        }
        // Appended behind the others, so the places handed over stay right.
        m_Watched.insert(m_Watched.end(), m_Added.begin(), m_Added.end());
        m_Added.clear();
        m_Delivering.swap(m_Changes);
    }
    // Callbacks run without the lock: they may add, remove, hold and write files, and the thread
    // goes on meanwhile. Nothing below changes the size of m_Watched until the loop ends: adds
    // wait in m_Added, removes only mark, and an Update from a callback returns at once.
    m_InDelivery = true;
    std::size_t next = 0;
    // However the loop ends (a callback may throw), the places not reached yet stay handed over.
    struct Finish
    {
        FileWatcher& watcher;
        const std::size_t& next;
        ~Finish()
        {
            std::lock_guard<std::recursive_mutex> lock(watcher.m_Mutex);
            for (std::size_t i = next; i < watcher.m_Delivering.size(); ++i)
                watcher.HandOver(watcher.m_Delivering[i]);
            watcher.m_Delivering.clear();
            watcher.m_InDelivery = false;
        }
    } finish{*this, next};
    while (next < m_Delivering.size())
    {
        WatchedFile& file = m_Watched[m_Delivering[next++]];
        if (file.m_Dead || file.m_Held)
            continue;
        // Claimed before the call: a change the thread sees during the callback sets the flag
        // again and hands the place over for a later Update.
        if (!file.m_Changed.exchange(false))
            continue;
        std::string path;
        {
            std::lock_guard<std::recursive_mutex> lock(m_Mutex);
            path = file.m_Path;
        }
        file.m_Callback(path);
    }
}
