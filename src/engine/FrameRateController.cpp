#include "engine/FrameRateController.h"

#include "engine/GenericEvents.h"
#include "engine/Manager.h"
#include "platform/Clock.h"
#include "utilities/Meta/Registration.h"

#include <cstdlib>

META_REGISTER(FrameRateController)
{
    DERIVE(System);
    DESCRIPTION("Measures frames and holds the frame rate to its cap.");
    METHOD(GetFrameRate);
    METHOD(GetElapsedTime);
}

FrameRateController::FrameRateController()
    : m_Frequency(static_cast<float>(Platform::GetPerformanceFrequency())),
      m_LastCounter(Platform::GetPerformanceCounter())
{
}

FrameRateController& FrameRateController::Get()
{
    static FrameRateController* controller = new FrameRateController();
    return *controller;
}

Meta::Data* FrameRateController::GetMeta() const
{
    return Meta::Get<FrameRateController>();
}

void FrameRateController::SetTargetFromOption(const char* value)
{
    if (!value)
        return;
    const int fps = std::atoi(value);
    if (fps > 0)
        m_TargetDt = 1.0f / static_cast<float>(fps);
}

float FrameRateController::ClampDt()
{
    if (m_Dt > kMaxDt)
        m_Dt = kMaxDt;
    return m_Dt;
}

FrameRateController::Capped FrameRateController::Cap(float elapsed, float targetDt)
{
    const unsigned elapsedMs = static_cast<unsigned>(elapsed * 1000.0f);
    const unsigned targetMs = static_cast<unsigned>(targetDt * 1000.0f);
    if (targetMs <= elapsedMs)
        return {elapsed, 0};
    const unsigned wait = targetMs - elapsedMs;
    return {static_cast<float>(wait) / 1000.0f + elapsed, wait};
}

void FrameRateController::Update(float)
{
    const std::uint64_t ticks = Platform::GetPerformanceCounter() - m_LastCounter;
    const float elapsed = static_cast<float>(static_cast<double>(ticks)) / m_Frequency;
    const Capped capped = Cap(elapsed, m_TargetDt);
    m_Dt = capped.dt;
    if (capped.waitMs > 0)
        Platform::Sleep(capped.waitMs);
    m_Elapsed += m_Dt;
    m_LastCounter = Platform::GetPerformanceCounter();

    GenericEvent::EndOfFrame endOfFrame;
    Engine::Manager::Get().m_Events.Dispatch("EndOfFrame", &endOfFrame);
}
