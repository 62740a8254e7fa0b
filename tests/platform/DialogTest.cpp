#include "platform/Dialog.h"

#include "support/Scoped.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <optional>
#include <string>
#include <thread>

namespace
{
using Platform::DialogAnswer;
using Platform::DialogPolicy;

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

TEST(PlatformDialogTest, AskOnTheMainThreadShowsTheMessageBox)
{
    ScopedDialogPolicy ask(DialogPolicy::Ask);
    int shown = 0;
    ScopedMessageBox box([&shown](const std::string&, const std::string&, DialogAnswer& answer) {
        ++shown;
        answer = DialogAnswer::Ignore;
        return true;
    });
    const Platform::DialogResult result = AskQuietly();
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(result.answer, DialogAnswer::Ignore);
    EXPECT_FALSE(result.byPolicy);
}

TEST(PlatformDialogTest, AskFromAnotherThreadGetsTheHeadlessAnswerWithoutAMessageBox)
{
    ScopedDialogPolicy ask(DialogPolicy::Ask);
    ScopedEnvironment answer(Platform::kDialogAnswerVariable, "retry");
    std::atomic<int> shown = 0;
    ScopedMessageBox box([&shown](const std::string&, const std::string&, DialogAnswer& answer) {
        ++shown;
        answer = DialogAnswer::Ignore;
        return true;
    });
    Platform::DialogResult result;
    std::thread worker([&result] { result = AskQuietly(); });
    worker.join();
    EXPECT_EQ(shown, 0);
    EXPECT_EQ(result.answer, DialogAnswer::Retry);
    EXPECT_TRUE(result.byPolicy);
}

TEST(PlatformDialogTest, AskFromTheEnvironmentOnAnotherThreadIsAnsweredAbort)
{
    ScopedDialogPolicy fromEnvironment(DialogPolicy::FromEnvironment);
    ScopedEnvironment answer(Platform::kDialogAnswerVariable, "ask");
    Platform::DialogResult result;
    result.byPolicy = false;
    std::thread worker([&result] { result = AskQuietly(); });
    worker.join();
    EXPECT_EQ(result.answer, DialogAnswer::Abort);
    EXPECT_TRUE(result.byPolicy);
}

TEST(PlatformDialogTest, BreakIntoDebuggerWithoutDebuggerReturns)
{
    if (Platform::IsDebuggerAttached())
        GTEST_SKIP() << "a debugger is attached";
    Platform::BreakIntoDebugger();
    SUCCEED();
}
