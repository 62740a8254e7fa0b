// OpenAL and libsndfile stay behind src/platform/: no other engine file includes their headers.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace
{
TEST(AudioBoundaryTest, OnlyPlatformFilesIncludeOpenAlOrSndfile)
{
    const std::filesystem::path source = std::filesystem::path(VORN_DATA_DIR).parent_path() / "src";
    ASSERT_TRUE(std::filesystem::is_directory(source));
    int checked = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(source))
    {
        const std::string path = entry.path().generic_string();
        if (!entry.is_regular_file() || path.find("/src/platform/") != std::string::npos)
            continue;
        std::ifstream file(entry.path());
        std::stringstream text;
        text << file.rdbuf();
        const std::string content = text.str();
        EXPECT_EQ(content.find("#include <AL/"), std::string::npos) << path;
        EXPECT_EQ(content.find("#include <sndfile"), std::string::npos) << path;
        ++checked;
    }
    EXPECT_GT(checked, 100);
}
}
