// Profiler: where a run's time goes, function by function. It is off unless
// the game runs with --profile; then every PROFILE_FUNCTION() or PROFILE_SCOPE
// that runs is timed, with the time of nested scopes counted as the caller's
// inclusive time and the rest as its exclusive time. At shutdown a profiled run
// writes "ProfileResults.csv" in the working directory, a table that opens in
// any spreadsheet:
//
//   sep=;
//   File;Function;Average Exclusive Time;Exclusive Percentage;...;Times Called
//
// Times in the report are milliseconds; percentages are of the whole run.
//
//   void Space::Update(float dt)
//   {
//       PROFILE_FUNCTION();
//       ...
//   }
//
// Script functions have a table of their own, filled by the Lua hook, keyed by
// file and line. Scopes nest up to 128 deep; deeper ones are not timed.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

class Profiler
{
public:
    // Totals of one native function or scope.
    struct FunctionInfo
    {
        std::string m_File;
        std::string m_Function;
        std::uint64_t m_Exclusive = 0;
        std::uint64_t m_Inclusive = 0;
        std::uint64_t m_Calls = 0;
    };
    // Totals of one script function.
    struct LuaFunctionInfo
    {
        std::string m_File;
        int m_Line = 0;
        std::string m_Function;
        std::uint64_t m_Exclusive = 0;
        std::uint64_t m_Inclusive = 0;
        std::uint64_t m_Calls = 0;
    };

    // The one profiler.
    static Profiler& Get();

    // Turns collecting on or off; the run's clock starts when it is first turned on.
    void SetEnabled(bool enabled);
    // True while collecting.
    bool IsEnabled() const { return m_Enabled; }
    // Enters the native scope identified by `key` (any address unique to the scope).
    void Enter(const void* key, const char* file, const char* function);
    // Enters a script function, identified by its file and line (and its name, for native functions
    // that scripts call, which share a file and line); allocates only the first time it is seen.
    void EnterScript(std::string_view file, int line, std::string_view function);
    // Leaves the innermost scope entered.
    void Leave();
    // True once any scope was timed.
    bool HasData() const { return !m_Native.empty() || !m_Script.empty(); }
    // The report as CSV text.
    std::string Report() const;
    // Writes the report to `path`; false if the file can't be written.
    bool WriteReport(const std::string& path) const;
    // Forgets everything collected and turns collecting off.
    void Clear();

    // Most scopes open at once.
    static constexpr unsigned kStackCapacity = 128;

private:
    struct StackEntry
    {
        std::uint64_t* m_Exclusive = nullptr;
        std::uint64_t* m_Inclusive = nullptr;
        std::uint64_t* m_Calls = nullptr;
        std::uint64_t m_Start = 0;
        std::uint64_t m_Children = 0;
    };

    Profiler() = default;
    void Push(std::uint64_t& exclusive, std::uint64_t& inclusive, std::uint64_t& calls);

    std::array<StackEntry, kStackCapacity> m_Stack;
    // Scopes open, including those too deep to be timed.
    unsigned m_Count = 0;
    std::unordered_map<const void*, FunctionInfo> m_Native;
    // Script functions by a hash of file, line and name.
    std::unordered_map<std::uint64_t, LuaFunctionInfo> m_Script;
    std::uint64_t m_StartTime = 0;
    bool m_Enabled = false;
};

// Times one native scope while the profiler is on; costs a test of one flag while it is off.
class ProfileScope
{
public:
    ProfileScope(const void* key, const char* file, const char* function)
    {
        Profiler& profiler = Profiler::Get();
        if (profiler.IsEnabled())
        {
            profiler.Enter(key, file, function);
            m_Entered = true;
        }
    }
    ~ProfileScope()
    {
        if (m_Entered)
            Profiler::Get().Leave();
    }
    ProfileScope(const ProfileScope&) = delete;
    ProfileScope& operator=(const ProfileScope&) = delete;

private:
    bool m_Entered = false;
};

// Times the enclosing function.
#define PROFILE_FUNCTION() ProfileScope vornProfileScope(__PRETTY_FUNCTION__, __FILE__, __PRETTY_FUNCTION__)
// Times the enclosing scope under a name of its own; `key` is any address unique to what is timed.
#define PROFILE_SCOPE(key, name) ProfileScope vornProfileScope((key), __FILE__, (name))
