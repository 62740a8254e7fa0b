// ScriptFile: one Lua file, compiled once and kept as a registry reference to
// its chunk, shared by every script that runs it. The file is watched: when it
// changes on disk it is compiled again and, if that worked, each listener is
// called in the order it was added (a LuaScript re-runs the new chunk from its
// listener). A compile that fails (a syntax error, a missing file) is reported
// on standard output and keeps the chunk, references and listeners as they were,
// so a running game survives a half-written script.
#pragma once

#include <functional>
#include <string>
#include <vector>

class LuaSystem;

class ScriptFile
{
public:
    // Called after each successful compile.
    using Callback = std::function<void()>;

    // One listener of the file: `key` names it for removal.
    struct Listener
    {
        // Whose listener this is; null is a key like any other.
        const void* key = nullptr;
        // What runs after a compile.
        Callback callback;
    };

    // Watches `path` with the file watcher and compiles it at once, on `system`'s state.
    ScriptFile(LuaSystem& system, std::string path);
    // Ends the watch and releases the chunk.
    ~ScriptFile();
    ScriptFile(const ScriptFile&) = delete;
    ScriptFile& operator=(const ScriptFile&) = delete;

    // Compiles the file; on success replaces the chunk and calls the listeners in order.
    void Compile();
    // Adds a listener unless one with `key` stands in the list already; true if it was added.
    bool AddListener(const void* key, Callback callback);
    // Removes the listener of `key`, if any.
    void RemoveListener(const void* key);
    // Keeps the listener of `key` in the list but makes it do nothing.
    void MuteListener(const void* key);
    // True if a listener with `key` stands in the list.
    bool HasListener(const void* key) const;
    // Pushes the chunk on the state; pushes nothing and returns false when nothing compiled.
    bool PushChunk() const;

    // Registry reference of the compiled chunk; -1 as long as nothing compiled.
    int ref = -1;
    // Full path, normalised; scripts are found by it byte for byte.
    std::string path;
    // Called in vector order after each successful compile.
    std::vector<Listener> listeners;

private:
    LuaSystem& m_System;
};
