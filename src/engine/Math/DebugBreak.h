// Debugger hooks for the math types: their BreakOnNAN methods stop here when a
// computation produced a NaN, so the bad value can be inspected where it
// appeared. Without a debugger attached nothing happens.
#pragma once

namespace Math
{
// True when a tracer (a debugger) is attached to this process, read from the
// TracerPid line of /proc/self/status.
bool IsDebuggerAttached();

// Raises SIGTRAP when a debugger is attached; otherwise does nothing.
void BreakIfDebuggerAttached();
}
