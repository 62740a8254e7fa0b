#include "engine/PerformanceData.h"

#include "engine/Log.h"
#include "platform/Clock.h"

PerformanceData::PerformanceData() : m_Frequency(static_cast<float>(Platform::GetPerformanceFrequency()))
{
}

PerformanceData& PerformanceData::Get()
{
    static PerformanceData data;
    return data;
}

void PerformanceData::Start(const std::string& name)
{
    m_Current = name;
    m_Start = Platform::GetPerformanceCounter();
}

void PerformanceData::Stop()
{
    const float t = static_cast<float>(Platform::GetPerformanceCounter() - m_Start) / m_Frequency;
    auto found = m_Averages.find(m_Current);
    if (found == m_Averages.end())
        found = m_Averages.emplace(m_Current, 0.0f).first;
    found->second = found->second * 0.9f + t * 0.1f;
    m_Total += t;
}

void PerformanceData::Dump() const
{
    for (const auto& [name, average] : m_Averages)
        LOG("Performance", name + " (Usage: " + std::to_string(average) + ")");
}
