// PerformanceData: the frame timers. Start(name) begins timing a named piece of
// the frame, Stop() ends it and folds the time into that name's moving average
// (new = old * 0.9 + t * 0.1). Timers don't nest: a nested Start replaces the
// outer one. Nothing is allocated once a name is known.
#pragma once

#include <cstdint>
#include <map>
#include <string>

class PerformanceData
{
public:
    // The one set of frame timers.
    static PerformanceData& Get();

    // Starts timing under `name`.
    void Start(const std::string& name);
    // Stops the running timer and updates its average.
    void Stop();
    // Writes every average to the log under "Performance", in name order.
    void Dump() const;

    // Name of the running timer ("NONE" at first).
    std::string m_Current = "NONE";
    // Moving average in seconds, by name.
    std::map<std::string, float, std::less<>> m_Averages;
    // Counter value at Start.
    std::uint64_t m_Start = 0;
    // Sum of all timed seconds.
    float m_Total = 0.0f;
    // Counter ticks per second.
    float m_Frequency = 1.0f;

private:
    PerformanceData();
};
