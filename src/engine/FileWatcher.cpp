#include "engine/FileWatcher.h"

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
    m_Held = other.m_Held;
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
    for (WatchedFile& file : m_Watched)
    {
        const std::int64_t time = FileModificationTime(file.m_Path);
        file.m_LastSeen = time;
        if (time != file.m_Time)
            file.m_Changed = true;
        file.m_Time = time;
    }
}

void FileWatcher::Add(const std::string& path, bool immediate, const void* key, WatchedFile::Callback callback)
{
    {
        std::lock_guard<std::recursive_mutex> lock(m_Mutex);
        WatchedFile file;
        file.m_Path = path;
        file.m_Time = file.m_LastSeen = FileModificationTime(path);
        file.m_Callback = callback;
        file.m_Key = key;
        m_Added.push_back(std::move(file));
        m_Pending = true;
    }
    if (immediate)
        callback(path);
}

void FileWatcher::Remove(const void* key)
{
    std::lock_guard<std::recursive_mutex> lock(m_Mutex);
    m_Removed.push_back(key);
    m_Pending = true;
}

void FileWatcher::NoteOwnWrite(const std::string& path)
{
    std::lock_guard<std::recursive_mutex> lock(m_Mutex);
    for (std::vector<WatchedFile>* list : {&m_Watched, &m_Added})
        for (WatchedFile& file : *list)
            if (file.m_Path == path)
            {
                file.m_Time = file.m_LastSeen = FileModificationTime(path);
                file.m_Changed = false;
            }
}

void FileWatcher::ChangePath(const std::string& oldPath, const std::string& newPath)
{
    std::lock_guard<std::recursive_mutex> lock(m_Mutex);
    for (std::vector<WatchedFile>* list : {&m_Watched, &m_Added})
        for (WatchedFile& file : *list)
            if (file.m_Path == oldPath)
            {
                file.m_Path = newPath;
                file.m_Time = file.m_LastSeen = FileModificationTime(newPath);
                // The move itself is no change of content.
                file.m_Changed = false;
            }
}

void FileWatcher::SetHeld(const std::string& path, bool held)
{
    std::lock_guard<std::recursive_mutex> lock(m_Mutex);
    for (std::vector<WatchedFile>* list : {&m_Watched, &m_Added})
        for (WatchedFile& file : *list)
            if (file.m_Path == path)
                file.m_Held = held;
}

void FileWatcher::Update(float)
{
    if (m_Pending)
    {
        std::lock_guard<std::recursive_mutex> lock(m_Mutex);
        std::erase_if(m_Watched, [this](const WatchedFile& file) {
            return std::find(m_Removed.begin(), m_Removed.end(), file.m_Key) != m_Removed.end();
        });
        m_Removed.clear();
        m_Watched.insert(m_Watched.end(), m_Added.begin(), m_Added.end());
        m_Added.clear();
        m_Pending = false;
    }
    // Callbacks run without the lock: they may add watches. Their additions wait
    // in m_Added, so m_Watched doesn't move under this loop.
    for (std::size_t i = 0; i < m_Watched.size(); ++i)
    {
        WatchedFile& file = m_Watched[i];
        if (file.m_Changed && !file.m_Held)
        {
            file.m_Callback(file.m_Path);
            file.m_Changed = false;
        }
    }
}
