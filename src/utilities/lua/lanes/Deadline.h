// Deadline: the timeouts of the lanes module, given from Lua in seconds, turned into points in time.
// A timeout of nil means no limit; 0 means "do not wait"; very long timeouts are held to a year so
// that clock arithmetic never overflows.
#pragma once

#include <lua.hpp>

#include <chrono>
#include <optional>

namespace Lanes
{
using Clock = std::chrono::steady_clock;

// The point `seconds` from now (clamped to 0 .. one year).
Clock::time_point DeadlineIn(double seconds);

// Reads the timeout argument at `index` of L: nothing when it is nil or absent (no limit), a deadline
// when it is a number of seconds. Raises a Lua error naming `where` for a negative number, a NaN or another type.
std::optional<Clock::time_point> CheckTimeout(lua_State* L, int index, const char* where);
}
