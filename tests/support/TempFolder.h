// A fresh folder under the system's temporary folder for one test, removed with everything in it at scope exit.
#pragma once

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

class TempFolder
{
public:
    TempFolder()
    {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        m_Path = std::filesystem::temp_directory_path() /
                 ("vorn_" + std::string(test->test_suite_name()) + "_" + test->name() + "_" +
                  std::to_string(getpid()));
        std::filesystem::remove_all(m_Path);
        std::filesystem::create_directories(m_Path);
    }
    ~TempFolder() { std::filesystem::remove_all(m_Path); }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    // The folder's path, ending in '/'.
    std::string Path() const { return m_Path.string() + "/"; }
    // Writes `text` to a file in the folder (folders on the way are made); gives its path.
    std::string Write(const std::string& name, const std::string& text) const
    {
        const std::filesystem::path file = m_Path / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::trunc) << text;
        return file.string();
    }
    // The text of a file in the folder.
    std::string Read(const std::string& name) const
    {
        std::ifstream file(m_Path / name);
        return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }

private:
    std::filesystem::path m_Path;
};
