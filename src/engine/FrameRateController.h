// FrameRateController: measures each frame and holds the frame rate to its cap.
// It is the last engine system of a frame: its Update measures the frame,
// sleeps to the target period (16 ms by default, whole milliseconds truncated),
// and sends "EndOfFrame" on the global event table. Option --fps=N sets the cap.
#pragma once

#include "engine/Options.h"
#include "engine/System.h"

#include <cstdint>
#include <string>

class FrameRateController : public System
{
public:
    // The longest frame time any system sees, in seconds.
    static constexpr float kMaxDt = 0.033333335f;

    // The one frame rate controller; registers the option "fps".
    static FrameRateController& Get();

    void Update(float dt) override;
    Meta::Data* GetMeta() const override;
    // The type's name.
    virtual std::string GetName() const { return "FrameRateController"; }

    // What the cap makes of a frame that took `elapsed` seconds.
    struct Capped
    {
        // The frame's length after the wait, in seconds.
        float dt;
        // Milliseconds to sleep.
        unsigned waitMs;
    };
    // Applies the cap with target period `targetDt`, in whole milliseconds truncated.
    static Capped Cap(float elapsed, float targetDt);
    // Caps m_Dt at kMaxDt and returns it.
    float ClampDt();
    // Frames per second of the last frame.
    float GetFrameRate() const { return m_Dt > 0.0f ? 1.0f / m_Dt : 0.0f; }
    // Seconds run so far.
    float GetElapsedTime() const { return m_Elapsed; }
    // Applies the value of option "fps" (null when given without a usable value).
    void SetTargetFromOption(const char* value);

    // The frame period the cap holds, in seconds.
    float m_TargetDt = 0.016666668f;
    // Length of the last frame after the cap, in seconds.
    float m_Dt = 0.016666668f;
    // Sum of all m_Dt.
    float m_Elapsed = 0.0f;
    // Counter ticks per second.
    float m_Frequency = 1.0f;
    // Counter value at the end of the last frame.
    std::uint64_t m_LastCounter = 0;

    FrameRateController();

private:
    // Option "fps", removed again with this controller.
    Engine::OwnedOption m_FpsOption{"fps", [this](const char* value) { SetTargetFromOption(value); }};
};
