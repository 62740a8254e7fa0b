// CrashTest: crashes on purpose, for the end-to-end tests of the crash report
// (option --CrashTest). Each way of crashing names a function that the report's
// backtrace must show.
//
//   --CrashTest                       a null access on the main thread (CrashOnPurpose)
//   --CrashTest=TwoThreads            two engine threads crash at the same moment (CrashOnPurposeOnThread)
//   --CrashTest=ThreadStackOverflow   an engine thread overflows its stack (OverflowTheStack)
#pragma once

namespace Engine
{
// Crashes the way `how` names (null or unknown: on the main thread); never returns.
void CrashOnPurpose(const char* how);
}
