// The texture manager on a device without hardware that counts what it is asked for: textures
// made with the full chain and their mips generated, each owned texture destroyed once (failed
// names share the missing texture without owning it), and a device that refuses every texture
// giving the start-up messages while the program runs on.
#include "Graphics_Engine/Material/Texture/TextureManager.h"

#include "support/RecordingDevice.h"
#include "support/ReportCapture.h"
#include "support/TempFolder.h"
#include "support/TestImages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

using namespace Graphics;

namespace
{
void WriteFile(const std::string& path, const TestImages::Bytes& bytes)
{
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}
}

class TextureManagerTest : public testing::Test
{
protected:
    void WriteTextures()
    {
        WriteFile(m_Data.Path() + "3DTextures/MISSING_TEXTURE.png", TestImages::GreyPng(false));
        WriteFile(m_Data.Path() + "3DTextures/fine.png", TestImages::GreyPng(true, 8, 2));
        WriteFile(m_Data.Path() + "3DTextures/bad.png", TestImages::Bytes{0, 1, 2});
    }

    TempFolder m_Data;
    RecordingDevice m_Device;
};

TEST_F(TextureManagerTest, TexturesAreMadeWithFullMipChainAndTheirMipsGenerated)
{
    WriteTextures();
    TextureManager manager(m_Device);
    ReportCapture capture;
    manager.InitTextureManager(m_Data.Path());
    // The missing texture, the font and fine.png.
    ASSERT_EQ(m_Device.texturesMade.size(), 3u);
    for (const auto& [id, desc] : m_Device.texturesMade)
    {
        EXPECT_EQ(desc.mipLevels, 0u) << id;
        EXPECT_NE(std::find(m_Device.mipsGenerated.begin(), m_Device.mipsGenerated.end(), id),
                  m_Device.mipsGenerated.end())
            << id;
    }
    const TextureDesc& fine = m_Device.texturesMade.at(manager.Slots()[manager.GetTexture("fine.png")].texture.id);
    EXPECT_EQ(fine.width, 8u);
    EXPECT_EQ(fine.height, 2u);
    EXPECT_EQ(fine.format, Format::R8G8B8A8_UNORM_SRGB);
    EXPECT_EQ(m_Device.texturesMade.at(manager.Slots()[0].texture.id).format, Format::R8G8B8A8_UNORM);
}

TEST_F(TextureManagerTest, EachOwnedTextureIsDestroyedOnceAndSharedMissingTextureNotAgain)
{
    WriteTextures();
    {
        TextureManager manager(m_Device);
        ReportCapture capture;
        manager.InitTextureManager(m_Data.Path());
        manager.LoadTexture("gone.png", m_Data.Path() + "gone.png");
        EXPECT_EQ(manager.GetView(manager.GetTexture("bad.png")), manager.GetView(0));
        EXPECT_EQ(manager.GetView(manager.GetTexture("gone.png")), manager.GetView(0));
        EXPECT_TRUE(m_Device.texturesDestroyed.empty());
    }
    std::vector<std::uint32_t> destroyed = m_Device.texturesDestroyed;
    std::sort(destroyed.begin(), destroyed.end());
    std::vector<std::uint32_t> made;
    for (const auto& [id, desc] : m_Device.texturesMade)
        made.push_back(id);
    EXPECT_EQ(destroyed, made);
}

TEST_F(TextureManagerTest, DeviceRefusingEveryTextureReportsMissingTextureAndFontAndRunsOn)
{
    WriteTextures();
    m_Device.refuseTextures = true;
    TextureManager manager(m_Device);
    ReportCapture capture;
    manager.InitTextureManager(m_Data.Path());
    const std::string& text = capture.Text();
    EXPECT_NE(text.find("File \"MISSING_TEXTURE.png\" could not be read into a texture."), std::string::npos) << text;
    EXPECT_NE(text.find("File \"ImGui\" could not be read into a texture."), std::string::npos) << text;
    // The first file to fail is reported; the capture answers Ignore, which silences that site.
    EXPECT_NE(text.find("File \"bad.png\" could not be read into a texture."), std::string::npos) << text;
    EXPECT_FALSE(manager.FontTexture());
    EXPECT_FALSE(manager.GetView(manager.GetTexture("fine.png")));
    EXPECT_EQ(manager.GetTexture("fine.png"), 2u);
    EXPECT_EQ(manager.Slots().size(), 3u);
}

TEST_F(TextureManagerTest, ManagerBeforeInitAnswersMissingForEverything)
{
    TextureManager manager(m_Device);
    EXPECT_EQ(manager.GetTexture("anything.png"), 0u);
    EXPECT_FALSE(manager.GetView(0));
    EXPECT_FALSE(manager.GetView(7));
    EXPECT_TRUE(manager.Slots().empty());
}
