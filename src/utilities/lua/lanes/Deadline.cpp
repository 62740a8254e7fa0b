#include "utilities/lua/lanes/Deadline.h"

#include <cmath>

namespace Lanes
{
namespace
{
constexpr double kLongestWait = 365.0 * 24.0 * 3600.0;
}

Clock::time_point DeadlineIn(double seconds)
{
    if (!(seconds > 0.0))
        seconds = 0.0;
    if (seconds > kLongestWait)
        seconds = kLongestWait;
    auto wait = std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
    return Clock::now() + wait;
}

std::optional<Clock::time_point> CheckTimeout(lua_State* L, int index, const char* where)
{
    if (lua_isnoneornil(L, index))
        return std::nullopt;
    if (lua_type(L, index) != LUA_TNUMBER)
        luaL_error(L, "%s: the timeout must be a number of seconds, not a %s", where, luaL_typename(L, index));
    double seconds = lua_tonumber(L, index);
    if (std::isnan(seconds) || seconds < 0.0)
        luaL_error(L, "%s: the timeout must be a number of seconds, at least 0", where);
    return DeadlineIn(seconds);
}
}
