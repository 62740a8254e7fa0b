// Catches the error dialogs and log lines of one scope: dialogs are answered
// Ignore, every error site is shown again first, and what the reports print on
// standard error and standard output is kept for the test to look at.
#pragma once

#include "engine/Log.h"
#include "support/Scoped.h"

#include <gtest/gtest.h>

#include <string>

class ReportCapture
{
public:
    ReportCapture() : m_Policy(Platform::DialogPolicy::Ignore)
    {
        Engine::Log::Get().ResetSites();
        testing::internal::CaptureStderr();
        testing::internal::CaptureStdout();
    }
    ~ReportCapture() { Finish(); }
    ReportCapture(const ReportCapture&) = delete;
    ReportCapture& operator=(const ReportCapture&) = delete;

    // Everything reported so far in the scope (dialogs, then log lines); ends the capture.
    const std::string& Text()
    {
        Finish();
        return m_Text;
    }
    // True if the reports hold `part`.
    bool Holds(const std::string& part) { return Text().find(part) != std::string::npos; }

private:
    void Finish()
    {
        if (m_Done)
            return;
        m_Done = true;
        m_Text = testing::internal::GetCapturedStderr();
        m_Text += testing::internal::GetCapturedStdout();
    }

    ScopedDialogPolicy m_Policy;
    std::string m_Text;
    bool m_Done = false;
};
