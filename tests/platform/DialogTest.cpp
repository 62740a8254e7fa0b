#include "platform/Dialog.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace
{
using Platform::DialogAnswer;
using Platform::DialogPolicy;

// Sets (or unsets, with nullptr) an environment variable and restores it on scope exit.
class ScopedEnvironment
{
public:
    ScopedEnvironment(const char* name, const char* value) : m_Name(name)
    {
        if (const char* old = std::getenv(name))
            m_Old = old;
        if (value != nullptr)
            setenv(name, value, 1);
        else
            unsetenv(name);
    }
    ~ScopedEnvironment()
    {
        if (m_Old)
            setenv(m_Name.c_str(), m_Old->c_str(), 1);
        else
            unsetenv(m_Name.c_str());
    }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    std::string m_Name;
    std::optional<std::string> m_Old;
};

// Sets the dialog policy and puts back the default on scope exit.
class ScopedDialogPolicy
{
public:
    explicit ScopedDialogPolicy(DialogPolicy policy) { Platform::SetDialogPolicy(policy); }
    ~ScopedDialogPolicy() { Platform::SetDialogPolicy(DialogPolicy::FromEnvironment); }
    ScopedDialogPolicy(const ScopedDialogPolicy&) = delete;
    ScopedDialogPolicy& operator=(const ScopedDialogPolicy&) = delete;
};

Platform::DialogResult AskQuietly()
{
    testing::internal::CaptureStderr();
    const Platform::DialogResult result = Platform::AskAbortRetryIgnore("Test", "question\n");
    testing::internal::GetCapturedStderr();
    return result;
}
}

TEST(PlatformDialogTest, IgnorePolicyAnswersIgnoreByPolicy)
{
    ScopedDialogPolicy policy(DialogPolicy::Ignore);
    const Platform::DialogResult result = AskQuietly();
    EXPECT_EQ(result.answer, DialogAnswer::Ignore);
    EXPECT_TRUE(result.byPolicy);
}

TEST(PlatformDialogTest, RetryAndAbortPoliciesAnswerThemselves)
{
    {
        ScopedDialogPolicy policy(DialogPolicy::Retry);
        EXPECT_EQ(AskQuietly().answer, DialogAnswer::Retry);
    }
    {
        ScopedDialogPolicy policy(DialogPolicy::Abort);
        EXPECT_EQ(AskQuietly().answer, DialogAnswer::Abort);
    }
}

TEST(PlatformDialogTest, PolicyFromCodeOverridesEnvironment)
{
    ScopedEnvironment answer(Platform::kDialogAnswerVariable, "retry");
    ScopedDialogPolicy policy(DialogPolicy::Ignore);
    EXPECT_EQ(AskQuietly().answer, DialogAnswer::Ignore);
}

TEST(PlatformDialogTest, EnvironmentRetryAnswersRetry)
{
    ScopedEnvironment answer(Platform::kDialogAnswerVariable, "retry");
    ScopedDialogPolicy policy(DialogPolicy::FromEnvironment);
    const Platform::DialogResult result = AskQuietly();
    EXPECT_EQ(result.answer, DialogAnswer::Retry);
    EXPECT_TRUE(result.byPolicy);
}

TEST(PlatformDialogTest, EnvironmentAnswerIgnoresCase)
{
    ScopedEnvironment answer(Platform::kDialogAnswerVariable, "IGNORE");
    EXPECT_EQ(AskQuietly().answer, DialogAnswer::Ignore);
}

TEST(PlatformDialogTest, OffscreenDriverWithoutPolicyDefaultsToAbort)
{
    ScopedEnvironment answer(Platform::kDialogAnswerVariable, nullptr);
    ScopedEnvironment driver("SDL_VIDEODRIVER", "offscreen");
    const Platform::DialogResult result = AskQuietly();
    EXPECT_EQ(result.answer, DialogAnswer::Abort);
    EXPECT_TRUE(result.byPolicy);
}

TEST(PlatformDialogTest, UnrecognisedEnvironmentAnswerFallsBackToDefault)
{
    ScopedEnvironment answer(Platform::kDialogAnswerVariable, "maybe");
    ScopedEnvironment driver("SDL_VIDEODRIVER", "dummy");
    const Platform::DialogResult result = AskQuietly();
    EXPECT_EQ(result.answer, DialogAnswer::Abort);
    EXPECT_TRUE(result.byPolicy);
}

TEST(PlatformDialogTest, ContinuousIntegrationDefaultsToAbortEvenWithADisplay)
{
    ScopedEnvironment answer(Platform::kDialogAnswerVariable, nullptr);
    ScopedEnvironment driver("SDL_VIDEODRIVER", nullptr);
    ScopedEnvironment display("DISPLAY", ":0");
    ScopedEnvironment ci("CI", "true");
    const Platform::DialogResult result = AskQuietly();
    EXPECT_EQ(result.answer, DialogAnswer::Abort);
    EXPECT_TRUE(result.byPolicy);
}

TEST(PlatformDialogTest, PolicyAnswerWritesTitleAndTextToStandardError)
{
    ScopedDialogPolicy policy(DialogPolicy::Ignore);
    testing::internal::CaptureStderr();
    Platform::AskAbortRetryIgnore("Assertion failed", "x > 0 in Foo.cpp\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Assertion failed: x > 0 in Foo.cpp\n");
}

TEST(PlatformDialogTest, WriteDebugOutputGoesToStandardError)
{
    testing::internal::CaptureStderr();
    Platform::WriteDebugOutput("debug line\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "debug line\n");
}

TEST(PlatformDialogTest, BreakIntoDebuggerWithoutDebuggerReturns)
{
    if (Platform::IsDebuggerAttached())
        GTEST_SKIP() << "a debugger is attached";
    Platform::BreakIntoDebugger();
    SUCCEED();
}
