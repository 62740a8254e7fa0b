// Coroutine: a Lua function run as a coroutine that scripts resume step by step,
// known to scripts as "Coroutine" (made by MakeCoroutine(f), stepped with
// co:resume(...), with its member `loop`).
//
// It holds registry references to a Lua thread of the main state and to the
// body function. Each resume runs the body until it yields or returns; with
// `loop` set, a body that returned is put back on the thread so the next resume
// starts it over. A run-time error is printed as "Lua Error: ..." with the
// thread's call stack, and the coroutine is dead from then on: it never resumes
// again. Copies share the Lua thread.
#pragma once

struct lua_State;

class Coroutine
{
public:
    // What resume gives: the statuses of lua_resume, and these two of its own.
    static constexpr int kDead = -1;
    // The body finished, or there is no thread to run.
    static constexpr int kFinished = 0;
    // The body yielded.
    static constexpr int kYielded = 1;

    // A coroutine with no thread: resume prints that it does not exist.
    Coroutine() = default;
    // A coroutine running the function on top of `caller`'s stack (popped), on a new thread of `main`.
    Coroutine(lua_State* main, lua_State* caller);
    // Takes new references to the same thread and function; copies `loop` and the dead mark.
    Coroutine(const Coroutine& other);
    Coroutine& operator=(const Coroutine& other);
    // Releases both references.
    virtual ~Coroutine();

    // Resumes the body with the values at stack index 2 and up of `L` (the coroutine itself is at
    // index 1); gives kDead, kFinished, kYielded or a Lua error code.
    int resume(lua_State* L);
    // True once a run-time error ended the coroutine.
    bool IsDead() const { return m_Dead; }

    // Registry reference of the Lua thread.
    int m_Thread = -1;
    // Registry reference of the body function.
    int m_Function = -1;
    // When the body returns, load it again so that the next resume starts over.
    bool loop = true;

private:
    void Release();
    void CopyFrom(const Coroutine& other);
    // Reports a failed resume: the thread's error with its call stack, printed on `L`'s behalf.
    void ReportError(lua_State* L, lua_State* thread);

    // Set on a run-time error; a dead coroutine never resumes.
    bool m_Dead = false;
    // Set by the constructors and copied; nothing reads it.
    bool m_Made = true;
    // The main state, which holds both references.
    lua_State* m_Main = nullptr;
};
