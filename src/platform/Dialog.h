// Dialog: the three-way question (Abort, Retry, Ignore) that error reports put
// to the developer, and the debugger helpers that Retry uses.
//
// Where nobody can answer (no display, CI, tests) the answer comes from a
// policy instead of a window: the formatted message goes to standard error and
// the policy's answer is returned. The policy is, in order of precedence:
//   1. SetDialogPolicy() from code (tests use it);
//   2. the environment variable VORN_DIALOG_ANSWER = abort | retry | ignore | ask;
//   3. ask with a real message box when a display is there, else Abort.
// Only the main thread opens a message box. A question from any other thread
// gets the answer given where nobody can answer: the first of 1 and 2 that
// names abort, retry or ignore, else Abort.
#pragma once

#include <functional>
#include <string>

namespace Platform
{
// The button the developer chose.
enum class DialogAnswer
{
    Abort,
    Retry,
    Ignore
};

// How a dialog is answered.
enum class DialogPolicy
{
    FromEnvironment,  // VORN_DIALOG_ANSWER, or ask when a display is there
    Ask,              // always show the message box
    Abort,
    Retry,
    Ignore
};

// The outcome of one dialog.
struct DialogResult
{
    // The button chosen, by a person or by the policy.
    DialogAnswer answer = DialogAnswer::Abort;
    // True when no person answered: the policy chose.
    bool byPolicy = true;
};

// Stands in for the message box (tests use it): shows `text` and sets `answer`; false if unanswered.
using MessageBoxStandIn = std::function<bool(const std::string& title, const std::string& text, DialogAnswer& answer)>;

// Name of the environment variable that sets the headless answer.
inline constexpr const char* kDialogAnswerVariable = "VORN_DIALOG_ANSWER";

// Sets the policy for every later dialog; FromEnvironment restores the default.
void SetDialogPolicy(DialogPolicy policy);
// Replaces the real message box with `standIn`; an empty one puts the real box back.
void SetMessageBoxStandIn(MessageBoxStandIn standIn);
// Asks the developer (or the policy) about `text`, with `title` as the caption; never opens a
// window off the main thread.
DialogResult AskAbortRetryIgnore(const std::string& title, const std::string& text);
// True when a debugger is attached to this process.
bool IsDebuggerAttached();
// Stops in the attached debugger; does nothing when none is attached.
void BreakIntoDebugger();
}
