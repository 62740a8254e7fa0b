// The models tools/make_models.sh wrote into Data/Models/: every one reads back
// through the engine's readers, and every closed one winds outward.
#include "tools/ToolRun.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace
{
const std::filesystem::path kModels = std::filesystem::path(VORN_DATA_DIR) / "Models";

double SignedVolume(const Graphics::ModelFile& model)
{
    double volume = 0.0;
    for (std::size_t t = 0; t + 2 < model.Indices.size(); t += 3)
    {
        const float* a = model.Vertices[model.Indices[t]].position;
        const float* b = model.Vertices[model.Indices[t + 1]].position;
        const float* c = model.Vertices[model.Indices[t + 2]].position;
        volume += (a[0] * (b[1] * c[2] - b[2] * c[1]) - a[1] * (b[0] * c[2] - b[2] * c[0]) +
                   a[2] * (b[0] * c[1] - b[1] * c[0])) / 6.0;
    }
    return volume;
}
}

TEST(GameModels, EveryModelOfTheDataFolderReadsBackAndWindsOutward)
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(kModels))
    {
        const std::string name = entry.path().filename().string();
        names.insert(name);
        if (entry.path().extension() == ".kba")
        {
            const std::vector<std::uint8_t> bytes = ToolTest::ReadBytes(entry.path().string());
            std::vector<Graphics::Animation> animations;
            std::string error;
            EXPECT_TRUE(Graphics::ReadKba(bytes.data(), bytes.size(), animations, error)) << name << ": " << error;
            EXPECT_FALSE(animations.empty()) << name;
            continue;
        }
        ASSERT_EQ(entry.path().extension(), ".kbm") << name;
        Graphics::ModelFile model;
        ASSERT_TRUE(ToolTest::ReadModel(entry.path().string(), model)) << name;
        EXPECT_FALSE(model.Indices.empty()) << name;
        if (name != "plane.kbm")
        {
            EXPECT_GT(SignedVolume(model), 0.0) << name;
        }
    }
    for (const char* expected : {"player.kbm", "embercrawler.kbm", "healthorb.kbm", "wallpiece.kbm"})
        EXPECT_TRUE(names.count(expected)) << expected;
}

TEST(GameModels, EmberCrawlerIsSkinnedWithItsTwoClips)
{
    Graphics::ModelFile model;
    ASSERT_TRUE(ToolTest::ReadModel((kModels / "embercrawler.kbm").string(), model));
    EXPECT_EQ(model.Type, Graphics::ModelType::Skinned);
    ASSERT_EQ(model.Bones.size(), 3u);
    ASSERT_EQ(model.Animations.size(), 2u);
    EXPECT_EQ(model.Animations[0].Name, "Crawl");
    EXPECT_EQ(model.Animations[1].Name, "Lunge");
}
