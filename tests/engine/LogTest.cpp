#include "engine/Log.h"

#include "platform/Dialog.h"
#include "support/Scoped.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <latch>
#include <sstream>
#include <thread>
#include <type_traits>
#include <vector>

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
                "FATAL: \\[FATAL\\] cannot go on");
}

namespace
{
// Stands for an engine object that a running thread may still use; if it is destroyed, the exit code says so.
struct SingletonUsedByAThread
{
    ~SingletonUsedByAThread() { _exit(99); }
};

std::string ReadFile(const std::filesystem::path& path)
{
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

// A log file of the test's own, closed again at the end of the scope.
class ScopedLogFile
{
public:
    ScopedLogFile()
        : m_Path(std::filesystem::temp_directory_path() /
                 ("vorn_log_" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) + ".log"))
    {
        Engine::Log::Get().Open(m_Path.string());
    }
    ~ScopedLogFile()
    {
        Engine::Log::Get().Close();
        std::filesystem::remove(m_Path);
    }
    ScopedLogFile(const ScopedLogFile&) = delete;
    ScopedLogFile& operator=(const ScopedLogFile&) = delete;

    // What the file holds on disk now.
    std::string OnDisk() const { return ReadFile(m_Path); }

private:
    std::filesystem::path m_Path;
};
}

TEST(LogDeathTest, AbortLeavesWithoutDestroyingObjectsThatThreadsStillUse)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    ScopedDialogPolicy abort(Platform::DialogPolicy::Abort);
    EXPECT_EXIT(
        {
            static SingletonUsedByAThread singleton;
            Engine::ShowError("cannot go on", true, "f", "file", 3);
        },
        ::testing::ExitedWithCode(Engine::kAbortExitCode), "cannot go on");
}

TEST(LogDeathTest, AbortWritesTheLogFileBeforeLeaving)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::filesystem::path path = std::filesystem::temp_directory_path() / "vorn_log_abort.log";
    std::filesystem::remove(path);
    ScopedDialogPolicy abort(Platform::DialogPolicy::Abort);
    EXPECT_EXIT(
        {
            Engine::Log::Get().Open(path.string());
            LOG("Info", "a note before the end");
            Engine::ShowError("cannot go on", true, "f", "file", 3);
        },
        ::testing::ExitedWithCode(Engine::kAbortExitCode), "");
    const std::string text = ReadFile(path);
    std::filesystem::remove(path);
    EXPECT_NE(text.find("[Info] a note before the end"), std::string::npos) << text;
    EXPECT_NE(text.find("[FATAL] cannot go on"), std::string::npos) << text;
}

TEST(LogTest, LogFileIsNotFlushedAfterAnInfoEntryButIsAfterAnError)
{
    ScopedLogFile file;
    testing::internal::CaptureStdout();
    LOG("Info", "a quiet note");
    const std::string afterInfo = file.OnDisk();
    LOG("ERROR", "something broke");
    const std::string afterError = file.OnDisk();
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(afterInfo, "");
    EXPECT_NE(afterError.find("[Info] a quiet note"), std::string::npos) << afterError;
    EXPECT_NE(afterError.find("[ERROR] something broke"), std::string::npos) << afterError;
}

TEST(LogTest, LogFileIsFlushedOnAFatalReport)
{
    ScopedLogFile file;
    ScopedDialogPolicy ignore(Platform::DialogPolicy::Ignore);
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    LOG("Info", "a quiet note");
    Engine::ShowError("cannot load", true, "f", "file", 1);
    const std::string afterFatal = file.OnDisk();
    testing::internal::GetCapturedStderr();
    testing::internal::GetCapturedStdout();
    EXPECT_NE(afterFatal.find("[Info] a quiet note"), std::string::npos) << afterFatal;
    EXPECT_NE(afterFatal.find("[FATAL] cannot load"), std::string::npos) << afterFatal;
}

TEST(LogTest, DialogTextCarriesTheCategoryAsTheLogDoes)
{
    ScopedDialogPolicy ignore(Platform::DialogPolicy::Ignore);
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    Engine::ShowError("no such state", true, "GameStateManager::Update", "GameStateManager.cpp", 7);
    Engine::ShowError("bad value", false, "Read", "Serializer.cpp", 9);
    const std::string dialogs = testing::internal::GetCapturedStderr();
    const std::string logged = testing::internal::GetCapturedStdout();
    const std::string fatal =
        Engine::FormatMessage("FATAL", "no such state", "GameStateManager::Update", "GameStateManager.cpp", 7);
    const std::string error = Engine::FormatMessage("ERROR", "bad value", "Read", "Serializer.cpp", 9);
    EXPECT_EQ(dialogs, "FATAL: " + fatal + "ERROR: " + error);
    EXPECT_EQ(logged, fatal + error);
}

TEST(LogTest, ReportFromAWorkerThreadIsLoggedAndAnsweredByThePolicyWithoutADialog)
{
    ScopedLogFile file;
    // The main thread would open a message box; a worker thread must not.
    ScopedDialogPolicy ask(Platform::DialogPolicy::Ask);
    ScopedEnvironment answer(Platform::kDialogAnswerVariable, "ignore");
    std::atomic<int> shown = 0;
    ScopedMessageBox box([&shown](const std::string&, const std::string&, Platform::DialogAnswer& answer) {
        ++shown;
        answer = Platform::DialogAnswer::Retry;
        return true;
    });
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    int result = 0;
    std::thread worker([&result] { result = Engine::ShowError("from a worker", false, "Poll", "FileWatcher.cpp", 5); });
    worker.join();
    const std::string answered = testing::internal::GetCapturedStderr();
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(shown, 0);
    EXPECT_EQ(result, 2);
    EXPECT_NE(answered.find("ERROR: [ERROR] from a worker"), std::string::npos) << answered;
    EXPECT_NE(file.OnDisk().find("[ERROR] from a worker"), std::string::npos) << file.OnDisk();
}

namespace
{
void SiteReportedFromManyThreads()
{
    ERROR_REPORT("reported from many threads");
}
}

namespace
{
void SiteReportedFromTwoThreads()
{
    ERROR_REPORT("reported from two threads");
}
}

TEST(LogTest, IgnoreAtASiteSilencesTheReportAnotherThreadMadeWhileTheDialogWasOpen)
{
    ScopedDialogPolicy ask(Platform::DialogPolicy::Ask);
    ScopedEnvironment answer(Platform::kDialogAnswerVariable, "ignore");
    Engine::Log::Get().ResetSites();
    int shown = 0;
    std::thread worker;
    ScopedMessageBox box([&shown, &worker](const std::string&, const std::string&, Platform::DialogAnswer& answer) {
        ++shown;
        // While the developer looks at the dialog, a worker thread reports at the same site.
        worker = std::thread(SiteReportedFromTwoThreads);
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        answer = Platform::DialogAnswer::Ignore;
        return true;
    });
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    SiteReportedFromTwoThreads();
    worker.join();
    const std::string answeredByPolicy = testing::internal::GetCapturedStderr();
    const std::string logged = testing::internal::GetCapturedStdout();
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(CountOf(answeredByPolicy, "reported from two threads"), 0) << answeredByPolicy;
    EXPECT_EQ(CountOf(logged, "reported from two threads"), 1) << logged;
}

TEST(LogTest, ErrorSiteFlagsAreAtomic)
{
    static_assert(std::is_same_v<decltype(Engine::Log::Get().NewSite()), std::atomic<bool>*>);
    std::atomic<bool>* site = Engine::Log::Get().NewSite();
    EXPECT_TRUE(site->load());
}

TEST(LogTest, IgnoreAtASiteReportedFromManyThreadsAtOnceShowsOneReport)
{
    ScopedDialogPolicy ignore(Platform::DialogPolicy::Ignore);
    Engine::Log::Get().ResetSites();
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    constexpr int kThreads = 8;
    std::latch together(kThreads);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&together] {
            together.arrive_and_wait();
            for (int report = 0; report < 20; ++report)
                SiteReportedFromManyThreads();
        });
    for (std::thread& thread : threads)
        thread.join();
    const std::string shown = testing::internal::GetCapturedStderr();
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(CountOf(shown, "reported from many threads"), 1) << shown;
}
