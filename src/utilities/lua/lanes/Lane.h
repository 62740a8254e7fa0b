// Lane: one script thread. It owns a Lua state whose stack holds the lane's function and arguments,
// runs it on an OS thread of its own, and keeps its results (or its error) in that state until the
// lane is freed. The lane is shared by its Lua handle and by its running thread: a handle collected
// while the lane runs only lets go of it, and the lane frees itself when its thread ends.
//
// Cancelling is cooperative: a request is seen at the lane's next linda call, by `cancel_test()`,
// or, when the lane was made with a cancel step, by a debug hook every that many instructions (with
// the JIT compiler off in that lane, since compiled code does not call hooks). The lane then raises
// the cancel error, which ends it as "cancelled" unless the script catches it.
#pragma once

#include "utilities/lua/lanes/Deadline.h"

#include <lua.hpp>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace Lanes
{
// Where a lane is in its life; the last three are final.
enum class LaneStatus
{
    Pending,
    Running,
    Waiting,
    Done,
    Error,
    Cancelled
};

// The status as scripts see it: "pending", "running", "waiting", "done", "error", "cancelled".
const char* StatusName(LaneStatus status);

class Lane : public std::enable_shared_from_this<Lane>
{
public:
    // Takes `state`, whose stack holds the function and then its arguments. A cancel step above 0
    // installs the cancel hook every that many instructions.
    Lane(lua_State* state, int cancelStep);
    ~Lane();
    Lane(const Lane&) = delete;
    Lane& operator=(const Lane&) = delete;

    // Starts the lane's thread; false with the reason in *error when no thread could be made.
    bool Start(std::string* error);
    // Lets the thread run on its own (the handle is gone); the lane frees itself when it ends.
    void Detach();

    // Where the lane is now.
    LaneStatus Status() const { return m_Status.load(std::memory_order_acquire); }
    // Waits until the lane has ended, until `deadline` when one is given; true when it has.
    bool WaitEnded(std::optional<Clock::time_point> deadline);
    // The lane's state. Once WaitEnded returned true its stack holds the results (Done) or the error value.
    lua_State* State() const { return m_State; }

    // Asks the lane to stop, and wakes it if it waits on a linda.
    void RequestCancel();
    // True once a cancel was requested.
    bool CancelRequested() const { return m_CancelRequested.load(std::memory_order_acquire); }

    // Notes the linda condition the lane waits on (null: it runs again); only with the keeper mutex held.
    void SetWaitingOn(std::condition_variable* changed);

    // The lane whose thread is the calling one, or null on other threads.
    static Lane* Current();

private:
    void Run();
    void End(LaneStatus status);

    lua_State* m_State;
    int m_CancelStep;
    std::thread m_Thread;
    std::atomic<LaneStatus> m_Status{LaneStatus::Pending};
    std::atomic<bool> m_CancelRequested{false};
    std::mutex m_EndMutex;
    std::condition_variable m_Ended;
    std::condition_variable* m_WaitingOn = nullptr;
};

// Pushes the value a cancelled lane raises (lanes.cancel_error).
void PushCancelError(lua_State* L);
// True when the value at `index` is the cancel error.
bool IsCancelError(lua_State* L, int index);
// Raises the cancel error in L when the lane of the calling thread was asked to cancel.
void CheckCancel(lua_State* L);
}
