#include "platform/CrashHandler.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <latch>
#include <sstream>
#include <string>
#include <thread>

namespace
{
std::filesystem::path ReportPath()
{
    return std::filesystem::temp_directory_path() /
           ("vorn_crash_" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) + ".dmp");
}

std::string ReadFile(const std::filesystem::path& path)
{
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}
}

TEST(CrashHandlerDeathTest, CrashingThreadEndsWithItsSignalWhenTheWriterHangs)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            // A watchdog, so that a crash that waits forever ends with another signal.
            alarm(Platform::kCrashReportWaitSeconds * 4);
            Platform::InstallCrashHandler([]() -> std::string {
                std::this_thread::sleep_for(std::chrono::hours(1));
                return "";
            });
            raise(SIGSEGV);
        },
        ::testing::KilledBySignal(SIGSEGV), "");
}

TEST(CrashHandlerDeathTest, SecondCrashingThreadWaitsForTheFirstReport)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::filesystem::path path = ReportPath();
    std::filesystem::remove(path);
    EXPECT_EXIT(
        {
            alarm(Platform::kCrashReportWaitSeconds * 4);
            // The writer takes its time, as symbolising a large program does.
            Platform::InstallCrashHandler([path] {
                std::this_thread::sleep_for(std::chrono::milliseconds(300));
                return path.string();
            });
            std::latch together(2);
            auto crash = [&together] {
                together.arrive_and_wait();
                raise(SIGSEGV);
            };
            std::thread first(crash);
            std::thread second(crash);
            first.join();
            second.join();
        },
        ::testing::KilledBySignal(SIGSEGV), "");
    const std::string report = ReadFile(path);
    std::filesystem::remove(path);
    EXPECT_EQ(report.rfind("Crash report\nSignal: 11 SIGSEGV", 0), 0u) << report;
    EXPECT_NE(report.find("End of report\n"), std::string::npos) << report;
}
