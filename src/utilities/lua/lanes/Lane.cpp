#include "utilities/lua/lanes/Lane.h"

#include "platform/Threads.h"
#include "utilities/lua/lanes/Universe.h"

#include <system_error>

namespace Lanes
{
namespace
{
thread_local Lane* t_Current = nullptr;

// Its address is the cancel error, a light userdata equal in every state.
const char kCancelError = 0;

void CancelHook(lua_State* L, lua_Debug*)
{
    CheckCancel(L);
}
}

const char* StatusName(LaneStatus status)
{
    switch (status)
    {
    case LaneStatus::Pending:
        return "pending";
    case LaneStatus::Running:
        return "running";
    case LaneStatus::Waiting:
        return "waiting";
    case LaneStatus::Done:
        return "done";
    case LaneStatus::Error:
        return "error";
    case LaneStatus::Cancelled:
        return "cancelled";
    }
    return "error";
}

Lane::Lane(lua_State* state, int cancelStep) : m_State(state), m_CancelStep(cancelStep)
{
}

Lane::~Lane()
{
    if (m_Thread.joinable())
    {
        if (m_Thread.get_id() == std::this_thread::get_id())
            m_Thread.detach();
        else
            m_Thread.join();
    }
    lua_close(m_State);
}

bool Lane::Start(std::string* error)
{
    std::shared_ptr<Lane> self = shared_from_this();
    try
    {
        m_Thread = std::thread([self] {
            Platform::BeginEngineThread();
            self->Run();
        });
    }
    catch (const std::system_error& e)
    {
        *error = std::string("no thread could be started for the lane: ") + e.what();
        return false;
    }
    return true;
}

void Lane::Detach()
{
    if (m_Thread.joinable())
        m_Thread.detach();
}

bool Lane::WaitEnded(std::optional<Clock::time_point> deadline)
{
    auto ended = [this] { return Status() >= LaneStatus::Done; };
    std::unique_lock lock(m_EndMutex);
    if (!deadline)
    {
        m_Ended.wait(lock, ended);
        return true;
    }
    return m_Ended.wait_until(lock, *deadline, ended);
}

void Lane::RequestCancel()
{
    m_CancelRequested.store(true, std::memory_order_release);
    if (KeeperLock::HeldHere())
    {
        // A finalizer run inside a linda call: this thread already holds the mutex.
        if (m_WaitingOn)
            m_WaitingOn->notify_all();
        return;
    }
    KeeperLock lock(Universe::Process());
    if (m_WaitingOn)
        m_WaitingOn->notify_all();
}

void Lane::SetWaitingOn(std::condition_variable* changed)
{
    m_WaitingOn = changed;
    m_Status.store(changed ? LaneStatus::Waiting : LaneStatus::Running, std::memory_order_release);
}

Lane* Lane::Current()
{
    return t_Current;
}

void Lane::Run()
{
    t_Current = this;
    lua_State* L = m_State;
    if (CancelRequested())
    {
        lua_settop(L, 0);
        End(LaneStatus::Cancelled);
    }
    else
    {
        m_Status.store(LaneStatus::Running, std::memory_order_release);
        if (m_CancelStep > 0)
        {
            luaJIT_setmode(L, 0, LUAJIT_MODE_ENGINE | LUAJIT_MODE_OFF);
            lua_sethook(L, CancelHook, LUA_MASKCOUNT, m_CancelStep);
        }
        int status = lua_pcall(L, lua_gettop(L) - 1, LUA_MULTRET, 0);
        lua_sethook(L, nullptr, 0, 0);
        if (status == 0)
            End(LaneStatus::Done);
        else
            End(IsCancelError(L, -1) ? LaneStatus::Cancelled : LaneStatus::Error);
    }
    t_Current = nullptr;
    Universe::Process().RemoveLane(this);
}

void Lane::End(LaneStatus status)
{
    {
        std::lock_guard lock(m_EndMutex);
        m_Status.store(status, std::memory_order_release);
    }
    m_Ended.notify_all();
}

void PushCancelError(lua_State* L)
{
    lua_pushlightuserdata(L, const_cast<char*>(&kCancelError));
}

bool IsCancelError(lua_State* L, int index)
{
    return lua_type(L, index) == LUA_TLIGHTUSERDATA && lua_touserdata(L, index) == &kCancelError;
}

void CheckCancel(lua_State* L)
{
    Lane* lane = t_Current;
    if (lane && lane->CancelRequested())
    {
        PushCancelError(L);
        lua_error(L);
    }
}
}
