// Test helpers that change process-wide settings for one scope and put them back.
#pragma once

#include "platform/Dialog.h"

#include <cstdlib>
#include <optional>
#include <string>

// Sets (or unsets, with nullptr) an environment variable and restores it on scope exit.
class ScopedEnvironment
{
public:
    ScopedEnvironment(const char* name, const char* value) : m_Name(name)
    {
        if (const char* old = std::getenv(name))
            m_Old = old;
        if (value != nullptr)
            setenv(name, value, 1);
        else
            unsetenv(name);
    }
    ~ScopedEnvironment()
    {
        if (m_Old)
            setenv(m_Name.c_str(), m_Old->c_str(), 1);
        else
            unsetenv(m_Name.c_str());
    }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    std::string m_Name;
    std::optional<std::string> m_Old;
};

// Sets the dialog policy and puts back the default on scope exit.
class ScopedDialogPolicy
{
public:
    explicit ScopedDialogPolicy(Platform::DialogPolicy policy) { Platform::SetDialogPolicy(policy); }
    ~ScopedDialogPolicy() { Platform::SetDialogPolicy(Platform::DialogPolicy::FromEnvironment); }
    ScopedDialogPolicy(const ScopedDialogPolicy&) = delete;
    ScopedDialogPolicy& operator=(const ScopedDialogPolicy&) = delete;
};

// Puts a stand-in in place of the message box and puts the real one back on scope exit.
class ScopedMessageBox
{
public:
    explicit ScopedMessageBox(Platform::MessageBoxStandIn standIn)
    {
        Platform::SetMessageBoxStandIn(std::move(standIn));
    }
    ~ScopedMessageBox() { Platform::SetMessageBoxStandIn({}); }
    ScopedMessageBox(const ScopedMessageBox&) = delete;
    ScopedMessageBox& operator=(const ScopedMessageBox&) = delete;
};
