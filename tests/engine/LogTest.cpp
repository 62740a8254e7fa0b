#include "engine/Log.h"

#include "platform/Dialog.h"
#include "support/Scoped.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

TEST(LogTest, FormatMessageJoinsTheGivenParts)
{
    EXPECT_EQ(Engine::FormatMessage("WARNING", "Low ammo", "Gun::Fire", "Gun.cpp", 12),
              "[WARNING] Low ammo\nFunction: Gun::Fire\nGun.cpp\nLine: 12\n");
}

TEST(LogTest, FormatMessageLeavesOutWhatIsEmpty)
{
    EXPECT_EQ(Engine::FormatMessage("", "Just text", nullptr, nullptr, 0), "Just text\n");
    EXPECT_EQ(Engine::FormatMessage("Performance", "x", "", "", 0), "[Performance] x\n");
}

TEST(LogTest, QualifiedFunctionNameDropsReturnTypeAndParameters)
{
    EXPECT_EQ(Engine::QualifiedFunctionName("void Engine::Space::GarbageCollectObjects()"),
              "Engine::Space::GarbageCollectObjects");
    EXPECT_EQ(Engine::QualifiedFunctionName("int WinMain(const char*)"), "WinMain");
    EXPECT_EQ(Engine::QualifiedFunctionName("std::vector<int> A::B(std::pair<int, int>) const"), "A::B");
    EXPECT_EQ(Engine::QualifiedFunctionName("T* Make() [with T = int]"), "Make");
}

TEST(LogTest, EntriesGoToTheLogFileWhichStartsAnewEachRun)
{
    const std::filesystem::path path = std::filesystem::temp_directory_path() / "vorn_log_test.log";
    {
        std::ofstream old(path);
        old << "previous run\n";
    }
    Engine::Log& log = Engine::Log::Get();
    log.Open(path.string());
    ASSERT_TRUE(log.IsOpen());
    testing::internal::CaptureStdout();
    LOG("WARNING", "Something odd");
    const std::string echoed = testing::internal::GetCapturedStdout();
    log.Close();

    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    EXPECT_EQ(text.str().find("previous run"), std::string::npos);
    EXPECT_EQ(text.str().rfind("[WARNING] Something odd\nFunction: ", 0), 0u);
    EXPECT_NE(text.str().find("Line: "), std::string::npos);
    EXPECT_EQ(echoed, text.str());
    std::filesystem::remove(path);
}

TEST(LogTest, LogThatCannotOpenStillEchoes)
{
    Engine::Log& log = Engine::Log::Get();
    log.Open("/nonexistent-folder/for/sure/GameLog.log");
    EXPECT_FALSE(log.IsOpen());
    testing::internal::CaptureStdout();
    LOG("Info", "still heard");
    EXPECT_NE(testing::internal::GetCapturedStdout().find("[Info] still heard"), std::string::npos);
}

namespace
{
void FirstSite()
{
    ERROR_REPORT("first site");
}
void SecondSite()
{
    FATAL_ERROR("second site");
}
int CountOf(const std::string& text, const std::string& what)
{
    int count = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
        ++count;
    return count;
}
}

TEST(LogTest, IgnoringAnErrorSiteStopsItsDialogWhileOtherSitesStillShow)
{
    ScopedDialogPolicy ignore(Platform::DialogPolicy::Ignore);
    testing::internal::CaptureStderr();
    FirstSite();
    FirstSite();
    SecondSite();
    const std::string shown = testing::internal::GetCapturedStderr();
    EXPECT_EQ(CountOf(shown, "first site"), 1);
    EXPECT_EQ(CountOf(shown, "second site"), 1);
    EXPECT_NE(shown.find("ERROR"), std::string::npos);
    EXPECT_NE(shown.find("FATAL"), std::string::npos);

    // Retry carries on but doesn't silence the site.
    Platform::SetDialogPolicy(Platform::DialogPolicy::Retry);
    testing::internal::CaptureStderr();
    SecondSite();
    SecondSite();
    EXPECT_EQ(CountOf(testing::internal::GetCapturedStderr(), "second site"), 0);

    Engine::Log::Get().ResetSites();
    testing::internal::CaptureStderr();
    SecondSite();
    SecondSite();
    EXPECT_EQ(CountOf(testing::internal::GetCapturedStderr(), "second site"), 2);
}

TEST(LogTest, ShowErrorReturnsTwoOnlyForIgnore)
{
    testing::internal::CaptureStderr();
    ScopedDialogPolicy ignore(Platform::DialogPolicy::Ignore);
    EXPECT_EQ(Engine::ShowError("x", true, "f", "file", 1), 2);
    Platform::SetDialogPolicy(Platform::DialogPolicy::Retry);
    EXPECT_EQ(Engine::ShowError("x", false, "f", "file", 1), 1);
    testing::internal::GetCapturedStderr();
}

TEST(LogDeathTest, AbortByTheHeadlessPolicyEndsTheProgramWithTheMessage)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    ScopedDialogPolicy abort(Platform::DialogPolicy::Abort);
    EXPECT_EXIT(Engine::ShowError("cannot go on", true, "f", "file", 3), ::testing::ExitedWithCode(Engine::kAbortExitCode),
                "FATAL: cannot go on");
}
