#include "platform/Dialog.h"

#include "platform/Threads.h"

#include <SDL.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <mutex>
#include <strings.h>

namespace Platform
{
namespace
{
std::atomic<DialogPolicy> g_Policy{DialogPolicy::FromEnvironment};
std::mutex g_StandInMutex;
MessageBoxStandIn g_StandIn;

bool EnvironmentEquals(const char* name, const char* value)
{
    const char* actual = std::getenv(name);
    return actual != nullptr && strcasecmp(actual, value) == 0;
}

// True when a person could see and answer a message box.
bool DisplayCanAnswer()
{
    if (EnvironmentEquals("SDL_VIDEODRIVER", "offscreen") || EnvironmentEquals("SDL_VIDEODRIVER", "dummy") ||
        EnvironmentEquals("SDL_VIDEODRIVER", "evdev"))
        return false;
    if (std::getenv("DISPLAY") == nullptr && std::getenv("WAYLAND_DISPLAY") == nullptr)
        return false;
    return std::getenv("CI") == nullptr;
}

// The answer that VORN_DIALOG_ANSWER names, or FromEnvironment when it names none.
DialogPolicy EnvironmentPolicy()
{
    if (EnvironmentEquals(kDialogAnswerVariable, "abort"))
        return DialogPolicy::Abort;
    if (EnvironmentEquals(kDialogAnswerVariable, "retry"))
        return DialogPolicy::Retry;
    if (EnvironmentEquals(kDialogAnswerVariable, "ignore"))
        return DialogPolicy::Ignore;
    if (EnvironmentEquals(kDialogAnswerVariable, "ask"))
        return DialogPolicy::Ask;
    return DialogPolicy::FromEnvironment;
}

// The policy in force: the one set from code, else the environment variable,
// else Ask where a display is there and Abort where none is.
DialogPolicy EffectivePolicy()
{
    for (DialogPolicy policy : {g_Policy.load(), EnvironmentPolicy()})
        if (policy != DialogPolicy::FromEnvironment)
            return policy;
    return DisplayCanAnswer() ? DialogPolicy::Ask : DialogPolicy::Abort;
}

// The policy where nobody can be asked: the first fixed answer from code or environment, else Abort.
DialogPolicy HeadlessPolicy()
{
    for (DialogPolicy policy : {g_Policy.load(), EnvironmentPolicy()})
        if (policy == DialogPolicy::Abort || policy == DialogPolicy::Retry || policy == DialogPolicy::Ignore)
            return policy;
    return DialogPolicy::Abort;
}

// Answers without a person: the message goes to standard error instead.
DialogResult AnswerByPolicy(DialogAnswer answer, const std::string& title, const std::string& text)
{
    std::fprintf(stderr, "%s: %s", title.c_str(), text.c_str());
    std::fflush(stderr);
    return {answer, true};
}

// Shows the message box; false if it could not be shown or was closed unanswered.
bool ShowMessageBox(const std::string& title, const std::string& text, DialogAnswer& answer)
{
    MessageBoxStandIn standIn;
    {
        std::lock_guard lock(g_StandInMutex);
        standIn = g_StandIn;
    }
    if (standIn)
        return standIn(title, text, answer);
    const SDL_MessageBoxButtonData buttons[] = {
        {0, static_cast<int>(DialogAnswer::Abort), "Abort"},
        {0, static_cast<int>(DialogAnswer::Retry), "Retry"},
        {SDL_MESSAGEBOX_BUTTON_RETURNKEY_DEFAULT, static_cast<int>(DialogAnswer::Ignore), "Ignore"},
    };
    SDL_MessageBoxData data{};
    data.flags = SDL_MESSAGEBOX_ERROR;
    data.title = title.c_str();
    data.message = text.c_str();
    data.numbuttons = SDL_arraysize(buttons);
    data.buttons = buttons;
    int buttonId = -1;
    if (SDL_ShowMessageBox(&data, &buttonId) < 0 || buttonId < 0)
        return false;
    answer = static_cast<DialogAnswer>(buttonId);
    return true;
}
}

void SetDialogPolicy(DialogPolicy policy)
{
    g_Policy.store(policy);
}

void SetMessageBoxStandIn(MessageBoxStandIn standIn)
{
    std::lock_guard lock(g_StandInMutex);
    g_StandIn = std::move(standIn);
}

DialogResult AskAbortRetryIgnore(const std::string& title, const std::string& text)
{
    // A message box belongs to the main thread, where the window and its event loop live.
    DialogPolicy policy = EffectivePolicy();
    if (policy == DialogPolicy::Ask && !IsMainThread())
        policy = HeadlessPolicy();
    switch (policy)
    {
    case DialogPolicy::Retry:
        return AnswerByPolicy(DialogAnswer::Retry, title, text);
    case DialogPolicy::Ignore:
        return AnswerByPolicy(DialogAnswer::Ignore, title, text);
    case DialogPolicy::Ask:
    {
        DialogAnswer answer = DialogAnswer::Abort;
        if (ShowMessageBox(title, text, answer))
            return {answer, false};
        return AnswerByPolicy(DialogAnswer::Abort, title, text);
    }
    default:
        return AnswerByPolicy(DialogAnswer::Abort, title, text);
    }
}

// Reads the tracer's process id from /proc/self/status; non-zero means traced.
bool IsDebuggerAttached()
{
    std::ifstream status("/proc/self/status");
    std::string line;
    const std::string key = "TracerPid:";
    while (std::getline(status, line))
    {
        if (line.compare(0, key.size(), key) == 0)
            return std::atoi(line.c_str() + key.size()) != 0;
    }
    return false;
}

void BreakIntoDebugger()
{
    if (IsDebuggerAttached())
        std::raise(SIGTRAP);
}
}
