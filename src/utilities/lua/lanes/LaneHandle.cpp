#include "utilities/lua/lanes/LaneHandle.h"

#include "utilities/lua/lanes/Core.h"
#include "utilities/lua/lanes/Lane.h"
#include "utilities/lua/lanes/Lanes.h"
#include "utilities/lua/lanes/Libraries.h"
#include "utilities/lua/lanes/Universe.h"

#include <memory>
#include <new>
#include <string>

namespace Lanes
{
namespace
{
const char* const kHandleMetatable = "vorn.lanes.lane";
// The most instructions between two looks at a cancel request that a lane may ask for.
constexpr lua_Number kMostCancelStep = 1e9;

using LanePointer = std::shared_ptr<Lane>;

LanePointer& CheckHandle(lua_State* L, int index, const char* where)
{
    auto* handle = static_cast<LanePointer*>(luaL_checkudata(L, index, kHandleMetatable));
    if (!*handle)
        luaL_error(L, "%s: the lane handle is no longer valid", where);
    return *handle;
}

// What the new lane's state is set up with, in protected mode.
struct LaneSetup
{
    Universe* universe;
    LibrarySet libraries;
    lua_CFunction loader;
};

int SetUpLaneState(lua_State* L)
{
    auto* setup = static_cast<LaneSetup*>(lua_touserdata(L, 1));
    lua_pop(L, 1);
    OpenLibraries(L, setup->libraries);
    InstallUniverse(L, setup->universe, setup->loader);
    if (HasLibrary(setup->libraries, "package"))
        InstallRequireHooks(L, setup->loader);
    lua_pushcfunction(L, CancelTest);
    lua_setfield(L, LUA_GLOBALSINDEX, "cancel_test");
    return 0;
}

// Copies the table at `index` of L into the globals of the lane state S; false with the reason.
bool CopyGlobals(Universe* U, lua_State* L, int index, lua_State* S, std::string* error)
{
    lua_pushvalue(L, index);
    if (luaG_inter_move(U, L, S, 1, error) != 0)
    {
        lua_pop(L, 1);
        return false;
    }
    lua_pushnil(S);
    while (lua_next(S, -2))
    {
        lua_pushvalue(S, -2);
        lua_insert(S, -2);
        lua_rawset(S, LUA_GLOBALSINDEX);
    }
    lua_pop(S, 1);
    return true;
}

// Pushes copies of the lane's values on its stack from `first` to the top into L; false with the reason.
bool CopyFromLane(lua_State* S, int first, lua_State* L, std::string* error)
{
    int top = lua_gettop(S);
    int n = top - first + 1;
    if (n <= 0)
        return true;
    if (!lua_checkstack(S, n))
    {
        *error = "too many results";
        return false;
    }
    for (int i = first; i <= top; ++i)
        lua_pushvalue(S, i);
    if (luaG_inter_move(get_universe(S), S, L, n, error) != 0)
    {
        lua_settop(S, top);
        return false;
    }
    return true;
}

int Join(lua_State* L)
{
    LanePointer lane = CheckHandle(L, 1, "lane:join");
    std::optional<Clock::time_point> deadline = CheckTimeout(L, 2, "lane:join");
    if (!lane->WaitEnded(deadline))
    {
        lua_pushnil(L);
        lua_pushliteral(L, "timeout");
        return 2;
    }
    lua_State* S = lane->State();
    std::string error;
    switch (lane->Status())
    {
    case LaneStatus::Done:
    {
        int before = lua_gettop(L);
        if (!CopyFromLane(S, 1, L, &error))
            return luaL_error(L, "lane:join: the lane's results %s", error.c_str());
        return lua_gettop(L) - before;
    }
    case LaneStatus::Error:
        lua_pushnil(L);
        if (!CopyFromLane(S, lua_gettop(S), L, &error))
            lua_pushfstring(L, "the lane failed with a %s error value, which %s", luaL_typename(S, -1),
                            error.c_str());
        return 2;
    default:
        lua_pushnil(L);
        lua_pushliteral(L, "cancelled");
        return 2;
    }
}

int Cancel(lua_State* L)
{
    LanePointer lane = CheckHandle(L, 1, "lane:cancel");
    std::optional<Clock::time_point> deadline = CheckTimeout(L, 2, "lane:cancel");
    lane->RequestCancel();
    lua_pushboolean(L, lane->WaitEnded(deadline ? *deadline : DeadlineIn(0.0)));
    return 1;
}

// handle[i]: the i-th result, waiting for the lane; raises the lane's error when it failed.
int Result(lua_State* L, LanePointer lane, int position)
{
    lane->WaitEnded(std::nullopt);
    lua_State* S = lane->State();
    std::string error;
    switch (lane->Status())
    {
    case LaneStatus::Done:
        if (position < 1 || position > lua_gettop(S))
        {
            lua_pushnil(L);
            return 1;
        }
        if (!CopyFromLane(S, position, L, &error))
            return luaL_error(L, "lane result: %s", error.c_str());
        lua_settop(L, lua_gettop(L) - (lua_gettop(S) - position));
        return 1;
    case LaneStatus::Error:
        if (!CopyFromLane(S, lua_gettop(S), L, &error))
            return luaL_error(L, "the lane failed with an error value that %s", error.c_str());
        return lua_error(L);
    default:
        PushCancelError(L);
        return lua_error(L);
    }
}

int HandleIndex(lua_State* L)
{
    LanePointer lane = CheckHandle(L, 1, "lane");
    if (lua_type(L, 2) == LUA_TNUMBER)
        return Result(L, lane, static_cast<int>(lua_tointeger(L, 2)));
    if (lua_type(L, 2) != LUA_TSTRING)
        return 0;
    std::string key = lua_tostring(L, 2);
    if (key == "status")
        lua_pushstring(L, StatusName(lane->Status()));
    else if (key == "join")
        lua_pushcfunction(L, Join);
    else if (key == "cancel")
        lua_pushcfunction(L, Cancel);
    else
        lua_pushnil(L);
    return 1;
}

int HandleGc(lua_State* L)
{
    auto* handle = static_cast<LanePointer*>(lua_touserdata(L, 1));
    if (handle && *handle)
        (*handle)->Detach();
    if (handle)
        handle->~LanePointer();
    return 0;
}

int HandleToString(lua_State* L)
{
    auto* handle = static_cast<LanePointer*>(lua_touserdata(L, 1));
    lua_pushfstring(L, "Lane: %p", handle ? static_cast<void*>(handle->get()) : nullptr);
    return 1;
}

void PushHandle(lua_State* L, LanePointer lane)
{
    void* memory = lua_newuserdata(L, sizeof(LanePointer));
    auto* handle = new (memory) LanePointer();
    if (luaL_newmetatable(L, kHandleMetatable))
    {
        lua_pushcfunction(L, HandleIndex);
        lua_setfield(L, -2, "__index");
        lua_pushcfunction(L, HandleGc);
        lua_setfield(L, -2, "__gc");
        lua_pushcfunction(L, HandleToString);
        lua_setfield(L, -2, "__tostring");
        lua_pushliteral(L, "Lane");
        lua_setfield(L, -2, "__metatable");
    }
    lua_setmetatable(L, -2);
    *handle = std::move(lane);
}

// Makes the lane's state and fills it; null with the reason when that failed (the state is closed).
lua_State* MakeLaneState(lua_State* L, Universe* U, const LibrarySet& libraries, std::string* error)
{
    lua_State* S = luaL_newstate();
    if (!S)
    {
        *error = "no Lua state could be made for the lane";
        return nullptr;
    }
    LaneSetup setup{U, libraries, InstalledLoader(L)};
    if (lua_cpcall(S, SetUpLaneState, &setup) != 0)
    {
        *error = std::string("the lane's state could not be set up: ") + (lua_isstring(S, -1) ? lua_tostring(S, -1) : "?");
        lua_close(S);
        return nullptr;
    }
    int top = lua_gettop(L);
    if (lua_istable(L, 3) && !CopyGlobals(U, L, 3, S, error))
    {
        *error = "the option globals: " + *error;
    }
    else if (!lua_checkstack(L, top))
    {
        *error = "too many arguments";
    }
    else
    {
        lua_pushvalue(L, 1);
        if (luaG_inter_move(U, L, S, 1, error) != 0)
        {
            *error = "the lane's function: " + *error;
        }
        else
        {
            for (int i = 5; i <= top; ++i)
                lua_pushvalue(L, i);
            if (luaG_inter_move(U, L, S, top - 4, error) == 0)
                return S;
            *error = "the lane's arguments: " + *error;
        }
    }
    lua_settop(L, top);
    lua_close(S);
    return nullptr;
}

const luaL_Reg kMethods[] = {{"join", Join}, {"cancel", Cancel}, {nullptr, nullptr}};
}

int NewLane(lua_State* L)
{
    luaL_checktype(L, 1, LUA_TFUNCTION);
    const char* list = luaL_optstring(L, 2, "base");
    if (!lua_isnoneornil(L, 3) && !lua_istable(L, 3))
        return luaL_error(L, "lanes.gen: globals must be a table, not a %s", luaL_typename(L, 3));
    int cancelStep = 0;
    if (lua_type(L, 4) == LUA_TNUMBER)
    {
        lua_Number step = lua_tonumber(L, 4);
        if (!(step >= 1))
            return luaL_error(L, "lanes.gen: cancelstep must be at least 1");
        cancelStep = static_cast<int>(step > kMostCancelStep ? kMostCancelStep : step);
    }
    lua_settop(L, lua_gettop(L) < 4 ? 4 : lua_gettop(L));

    std::string error;
    LibrarySet libraries;
    if (!ParseLibraries(list, &libraries, &error))
        return luaL_error(L, "lanes.gen: %s", error.c_str());
    Universe* U = get_universe(L);
    if (!U)
        U = &Universe::Process();
    lua_State* S = MakeLaneState(L, U, libraries, &error);
    if (!S)
        return luaL_error(L, "lanes.gen: %s", error.c_str());

    auto lane = std::make_shared<Lane>(S, cancelStep);
    U->AddLane(lane);
    if (!lane->Start(&error))
    {
        U->RemoveLane(lane.get());
        return luaL_error(L, "lanes.gen: %s", error.c_str());
    }
    PushHandle(L, std::move(lane));
    return 1;
}

const luaL_Reg* LaneHandleMethods()
{
    return kMethods;
}
}
