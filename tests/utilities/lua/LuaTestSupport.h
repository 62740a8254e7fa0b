// Test helpers for the Lua runtime: a Lua system of the test's own on a fresh
// data directory, Lua code run from a string, output of standard output caught,
// and file times moved forward so that the file watcher sees a later save.
#pragma once

#include "engine/FileWatcher.h"
#include "engine/Files.h"
#include "support/TempFolder.h"
#include "utilities/lua/LuaSystem.h"

#include <gtest/gtest.h>
#include <lua.hpp>

#include <chrono>
#include <filesystem>
#include <string>

// Points the data directory at `path` for one scope.
class ScopedDataDirectory
{
public:
    explicit ScopedDataDirectory(const std::string& path) : m_Old(Util::GetDataDirectory())
    {
        Util::SetDataDirectory(path);
    }
    ~ScopedDataDirectory() { Util::SetDataDirectory(m_Old); }
    ScopedDataDirectory(const ScopedDataDirectory&) = delete;
    ScopedDataDirectory& operator=(const ScopedDataDirectory&) = delete;

private:
    std::string m_Old;
};

// Catches what is printed on standard output while it lives.
class StdoutCapture
{
public:
    StdoutCapture() { testing::internal::CaptureStdout(); }
    ~StdoutCapture() { Text(); }
    StdoutCapture(const StdoutCapture&) = delete;
    StdoutCapture& operator=(const StdoutCapture&) = delete;

    // What was printed; ends the capture.
    const std::string& Text()
    {
        if (!m_Done)
        {
            m_Done = true;
            std::fflush(stdout);
            m_Text = testing::internal::GetCapturedStdout();
        }
        return m_Text;
    }

private:
    std::string m_Text;
    bool m_Done = false;
};

// Gives a file a modification time `seconds` from now, as a later save would.
inline void TouchLater(const std::string& path, int seconds = 2)
{
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() + std::chrono::seconds(seconds));
}

// One round of the watcher's thread, then one frame's delivery on this thread.
inline void PollAndUpdateWatcher()
{
    FileWatcher::Get().Poll();
    FileWatcher::Get().Update(0.016f);
}

// A Lua system of the test's own, with the data directory in a fresh temporary folder.
class LuaTest : public ::testing::Test
{
protected:
    lua_State* L() { return m_Lua.m_State; }

    // Runs `code` on the main state; fails the test with the message when it raises an error.
    void Run(const std::string& code)
    {
        const int top = lua_gettop(L());
        if (luaL_dostring(L(), code.c_str()) != 0)
            ADD_FAILURE() << lua_tostring(L(), -1) << "\nin:\n" << code;
        lua_settop(L(), top);
    }
    // The global `name` as a number (0 when it is none).
    double Number(const char* name)
    {
        lua_getglobal(L(), name);
        const double value = lua_tonumber(L(), -1);
        lua_pop(L(), 1);
        return value;
    }
    // The global `name` as a string ("" when it is none).
    std::string String(const char* name)
    {
        lua_getglobal(L(), name);
        const char* value = lua_tostring(L(), -1);
        const std::string text = value ? value : "";
        lua_pop(L(), 1);
        return text;
    }

    TempFolder m_Temp;
    ScopedDataDirectory m_DataDirectory{m_Temp.Path()};
    LuaSystem m_Lua;
};
