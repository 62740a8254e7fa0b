// The texture manager on a real OpenGL context (offscreen driver): images of a temporary
// "3DTextures/" folder become textures in the format their colour space asks for, with full mip
// chains; names resolve in any case; files that cannot be read show the missing texture and are
// reported; the GUI font image is built in.
#include "Graphics_Engine/Material/Texture/TextureManager.h"

#include "Graphics_Engine/Material/Texture/GuiFontImage.h"
#include "platform/ImageDecoder.h"
#include "platform/gl/GlTestDevice.h"

#include "support/ReportCapture.h"
#include "support/TempFolder.h"
#include "support/TestImages.h"

#include <epoxy/gl.h>
#include <stb/stb_image_write.h>

#include <filesystem>
#include <fstream>

using namespace Graphics;
using TestImages::Bytes;

namespace
{
void WriteFile(const std::string& path, const Bytes& bytes)
{
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

// A baseline JPEG of one colour, as stb_image_write encodes it (no EXIF segment).
Bytes Jpeg(int width, int height)
{
    Bytes out;
    const Bytes pixels = TestImages::Solid(width, height, 90, 120, 150);
    stbi_write_jpg_to_func(
        [](void* context, void* data, int size) {
            auto* bytes = static_cast<Bytes*>(context);
            bytes->insert(bytes->end(), static_cast<std::uint8_t*>(data), static_cast<std::uint8_t*>(data) + size);
        },
        &out, width, height, 4, pixels.data(), 90);
    return out;
}

// The RGBA8 pixels GL holds for one mip level of a texture.
Bytes LevelPixels(TextureHandle texture, int level, int width, int height)
{
    Bytes pixels(static_cast<std::size_t>(width) * height * 4);
    glGetTextureImage(texture.id, level, GL_RGBA, GL_UNSIGNED_BYTE, static_cast<GLsizei>(pixels.size()),
                      pixels.data());
    return pixels;
}

// A loud checker: magenta and black squares of 4 texels.
Bytes Checker(int side)
{
    Bytes pixels;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
        {
            const bool magenta = ((x / 4) + (y / 4)) % 2 == 0;
            pixels.insert(pixels.end(), {static_cast<std::uint8_t>(magenta ? 255 : 0), 0,
                                         static_cast<std::uint8_t>(magenta ? 255 : 0), 255});
        }
    return pixels;
}
}

class TextureManagerGlTest : public GlDeviceFixture
{
protected:
    void SetUp() override
    {
        GlDeviceFixture::SetUp();
        m_Manager = std::make_unique<TextureManager>(*m_Device);
    }
    void TearDown() override
    {
        m_Manager.reset();
        GlDeviceFixture::TearDown();
    }

    // The path of a file in the temporary data directory's "3DTextures/".
    std::string Texture(const std::string& name) const { return m_Data.Path() + "3DTextures/" + name; }
    // Writes the missing texture into the temporary data directory.
    void WriteMissingTexture() const
    {
        WriteFile(Texture("MISSING_TEXTURE.png"), TestImages::Png(16, 16, Checker(16), false));
    }
    // Runs InitTextureManager on the temporary data directory; gives what it reported.
    std::string Init()
    {
        ReportCapture capture;
        m_Manager->InitTextureManager(m_Data.Path());
        return capture.Text();
    }
    const TextureSlot& SlotOf(const std::string& name) const
    {
        return m_Manager->Slots().at(m_Manager->GetTexture(name));
    }

    TempFolder m_Data;
    std::unique_ptr<TextureManager> m_Manager;
};

TEST_F(TextureManagerGlTest, SrgbPngGetsSrgbFormatAndLinearPngPlainRgba8)
{
    WriteMissingTexture();
    WriteFile(Texture("srgb.png"), TestImages::GreyPng(true));
    WriteFile(Texture("linear.png"), TestImages::GreyPng(false));
    EXPECT_EQ(Init(), "");
    EXPECT_EQ(TextureInternalFormat(SlotOf("srgb.png").texture), GL_SRGB8_ALPHA8);
    EXPECT_EQ(TextureInternalFormat(SlotOf("linear.png").texture), GL_RGBA8);
}

TEST_F(TextureManagerGlTest, JpegWhoseExifSaysSrgbGetsSrgbFormat)
{
    WriteMissingTexture();
    const Bytes jpeg = Jpeg(8, 8);
    ASSERT_GT(jpeg.size(), 2u);
    WriteFile(Texture("plain.jpg"), jpeg);
    WriteFile(Texture("tagged.jpg"),
              TestImages::WithSegment(jpeg, TestImages::ExifSegment(TestImages::ExifTiff(1, false))));
    EXPECT_EQ(Init(), "");
    EXPECT_EQ(TextureInternalFormat(SlotOf("plain.jpg").texture), GL_RGBA8);
    EXPECT_EQ(TextureInternalFormat(SlotOf("tagged.jpg").texture), GL_SRGB8_ALPHA8);
}

TEST_F(TextureManagerGlTest, TextureHasFullMipChainFilledFromTheImage)
{
    WriteMissingTexture();
    WriteFile(Texture("wide.png"), TestImages::Png(64, 16, TestImages::Solid(64, 16, 40, 160, 220), false));
    EXPECT_EQ(Init(), "");
    const TextureHandle texture = SlotOf("wide.png").texture;
    ASSERT_TRUE(texture);
    EXPECT_EQ(TextureMipCount(texture), 7);
    EXPECT_EQ(TextureLevelSize(texture, 6), (std::array<int, 2>{1, 1}));
    const Bytes last = LevelPixels(texture, 6, 1, 1);
    EXPECT_EQ(last, (Bytes{40, 160, 220, 255}));
    EXPECT_EQ(TextureMipCount(SlotOf("missing_texture.png").texture), 5);
}

TEST_F(TextureManagerGlTest, FileThatDoesNotDecodeShowsMissingTextureInLastSlotAndIsReported)
{
    WriteMissingTexture();
    WriteFile(Texture("a_good.png"), TestImages::GreyPng(false));
    WriteFile(Texture("broken.png"), Bytes{'n', 'o', 't', ' ', 'a', 'n', ' ', 'i', 'm', 'a', 'g', 'e'});
    const std::string reports = Init();
    EXPECT_NE(reports.find("File \"broken.png\" could not be read into a texture."), std::string::npos) << reports;
    EXPECT_NE(reports.find("Function: Graphics::TextureManager::LoadTextureFormFile"), std::string::npos) << reports;
    EXPECT_NE(reports.find("Graphics_Engine/Material/Texture/TextureManager"), std::string::npos) << reports;

    const unsigned index = m_Manager->GetTexture("broken.png");
    EXPECT_EQ(index, m_Manager->Slots().size() - 1);
    EXPECT_NE(index, 0u);
    EXPECT_EQ(m_Manager->GetView(index), m_Manager->GetView(0));
    EXPECT_TRUE(m_Manager->GetView(0));
    EXPECT_FALSE(m_Manager->Slots()[index].owned);
    EXPECT_NE(m_Manager->GetTexture("a_good.png"), 0u);
}

TEST_F(TextureManagerGlTest, FailedLoadTextureAfterStartResolvesToNewLastSlotShowingMissingTexture)
{
    WriteMissingTexture();
    EXPECT_EQ(Init(), "");
    ReportCapture capture;
    const unsigned index = m_Manager->LoadTexture("Gone.png", Texture("Gone.png"));
    EXPECT_TRUE(capture.Holds("File \"Gone.png\" could not be read into a texture.")) << capture.Text();
    EXPECT_EQ(index, m_Manager->Slots().size() - 1);
    EXPECT_EQ(m_Manager->GetTexture("gone.png"), index);
    EXPECT_EQ(m_Manager->GetView(index), m_Manager->GetView(0));
}

TEST_F(TextureManagerGlTest, NameInAnyCaseFindsItsTexture)
{
    WriteMissingTexture();
    WriteFile(Texture("Stone_Floor.PNG"), TestImages::GreyPng(true));
    EXPECT_EQ(Init(), "");
    const unsigned index = m_Manager->GetTexture("stone_floor.png");
    EXPECT_NE(index, 0u);
    EXPECT_EQ(m_Manager->GetTexture("STONE_FLOOR.PNG"), index);
    EXPECT_EQ(m_Manager->GetTexture("Stone_Floor.PNG"), index);
    EXPECT_EQ(m_Manager->GetTexture("sTONE_fLOOR.png"), index);
}

TEST_F(TextureManagerGlTest, UnknownNameGivesMissingTextureIndexZero)
{
    WriteMissingTexture();
    EXPECT_EQ(Init(), "");
    EXPECT_EQ(m_Manager->GetTexture("no_such_texture.png"), 0u);
    EXPECT_EQ(m_Manager->GetTexture(""), 0u);
    EXPECT_EQ(m_Manager->GetTexture("missing_texture.png"), 0u);
}

TEST_F(TextureManagerGlTest, ViewOfIndexOutOfRangeIsMissingTexturesView)
{
    WriteMissingTexture();
    EXPECT_EQ(Init(), "");
    EXPECT_TRUE(m_Manager->GetView(0));
    EXPECT_EQ(m_Manager->GetView(1000), m_Manager->GetView(0));
}

TEST_F(TextureManagerGlTest, ImageOverLargestSideIsScaledDownToFit)
{
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    if (largest < Platform::kLargestTextureSide)
        GTEST_SKIP() << "the driver's largest texture is " << largest;
    WriteMissingTexture();
    WriteFile(Texture("long.png"), TestImages::Png(16400, 2, TestImages::Solid(16400, 2, 250, 10, 10), false));
    EXPECT_EQ(Init(), "");
    const TextureHandle texture = SlotOf("long.png").texture;
    ASSERT_TRUE(texture);
    EXPECT_EQ(TextureLevelSize(texture, 0), (std::array<int, 2>{16384, 2}));
    EXPECT_EQ(TextureMipCount(texture), 15);
}

TEST_F(TextureManagerGlTest, InitLoadsEveryFileInNameOrderUnderLowerCaseNames)
{
    WriteMissingTexture();
    WriteFile(Texture("B_Wall.PNG"), TestImages::GreyPng(true));
    WriteFile(Texture("a_lava.png"), TestImages::GreyPng(true));
    WriteFile(Texture("C_ICE.png"), TestImages::GreyPng(false));
    std::filesystem::create_directories(Texture("Sub"));
    WriteFile(Texture("Sub/inner.png"), TestImages::GreyPng(false));
    EXPECT_EQ(Init(), "");
    EXPECT_EQ(m_Manager->Folder(), m_Data.Path() + "3DTextures/");
    // Index 0 is the missing texture, read once; the other files follow in name order.
    ASSERT_EQ(m_Manager->Slots().size(), 4u);
    std::vector<unsigned> indices = {m_Manager->GetTexture("a_lava.png"), m_Manager->GetTexture("b_wall.png"),
                                     m_Manager->GetTexture("c_ice.png")};
    std::vector<unsigned> sorted = indices;
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(sorted, (std::vector<unsigned>{1, 2, 3}));
    EXPECT_EQ(m_Manager->GetTexture("inner.png"), 0u);
    for (const TextureSlot& slot : m_Manager->Slots())
        EXPECT_TRUE(slot.owned && slot.texture && slot.view);
}

TEST_F(TextureManagerGlTest, MissingTextureFileIsReportedAndTheRestLoads)
{
    WriteFile(Texture("rock.png"), TestImages::GreyPng(false));
    const std::string reports = Init();
    EXPECT_NE(reports.find("File \"MISSING_TEXTURE.png\" could not be read into a texture."), std::string::npos)
        << reports;
    EXPECT_NE(reports.find("Function: Graphics::TextureManager::InitTextureManager"), std::string::npos) << reports;
    EXPECT_FALSE(m_Manager->GetView(0));
    EXPECT_NE(m_Manager->GetTexture("rock.png"), 0u);
    EXPECT_TRUE(m_Manager->FontTexture());
}

TEST_F(TextureManagerGlTest, MissingDataFolderIsReportedAndLeavesOnlyTheFont)
{
    ReportCapture capture;
    m_Manager->InitTextureManager(m_Data.Path() + "nowhere/");
    EXPECT_TRUE(capture.Holds("File \"MISSING_TEXTURE.png\" could not be read into a texture.")) << capture.Text();
    EXPECT_EQ(m_Manager->Slots().size(), 1u);
    EXPECT_TRUE(m_Manager->FontView());
}

TEST_F(TextureManagerGlTest, GuiFontImageIsLoadedIntoItsOwnLinearTexture)
{
    WriteMissingTexture();
    EXPECT_EQ(Init(), "");
    const std::span<const std::uint8_t> bytes = GuiFontImage();
    const Platform::DecodedImage image = Platform::DecodeImage(bytes.data(), bytes.size());
    ASSERT_TRUE(image.Valid());
    const TextureHandle font = m_Manager->FontTexture();
    ASSERT_TRUE(font);
    EXPECT_TRUE(m_Manager->FontView());
    EXPECT_EQ(TextureLevelSize(font, 0), (std::array<int, 2>{image.width, image.height}));
    EXPECT_EQ(TextureInternalFormat(font), GL_RGBA8);
    EXPECT_EQ(LevelPixels(font, 0, image.width, image.height), image.pixels);
    for (const TextureSlot& slot : m_Manager->Slots())
        EXPECT_NE(slot.texture, font);
}

TEST_F(TextureManagerGlTest, LoadingANameAgainEntersTheNewSlot)
{
    WriteMissingTexture();
    WriteFile(Texture("tile.png"), TestImages::GreyPng(false));
    EXPECT_EQ(Init(), "");
    const unsigned first = m_Manager->GetTexture("tile.png");
    WriteFile(Texture("tile.png"), TestImages::GreyPng(true));
    const unsigned second = m_Manager->LoadTexture("TILE.png", Texture("tile.png"));
    EXPECT_NE(second, first);
    EXPECT_EQ(m_Manager->GetTexture("tile.png"), second);
    EXPECT_EQ(TextureInternalFormat(m_Manager->Slots()[second].texture), GL_SRGB8_ALPHA8);
}

TEST_F(TextureManagerGlTest, EndingDestroysOwnedTexturesAndTheFontOnce)
{
    WriteMissingTexture();
    WriteFile(Texture("one.png"), TestImages::GreyPng(false));
    WriteFile(Texture("two.png"), Bytes{1, 2, 3});
    Init();
    std::vector<GLuint> names;
    for (const TextureSlot& slot : m_Manager->Slots())
        names.push_back(slot.texture.id);
    names.push_back(m_Manager->FontTexture().id);
    for (GLuint name : names)
        EXPECT_TRUE(glIsTexture(name));
    m_Manager.reset();
    for (GLuint name : names)
        EXPECT_FALSE(glIsTexture(name)) << name;
    // A texture made afterwards is not destroyed by anything left behind.
    const TextureHandle fresh = m_Device->CreateTexture2D({4, 4, 1, Format::R8G8B8A8_UNORM, BindShaderResource});
    EXPECT_TRUE(glIsTexture(fresh.id));
    m_Device->DestroyTexture(fresh);
}

TEST_F(TextureManagerGlTest, InitAgainReplacesEverything)
{
    WriteMissingTexture();
    WriteFile(Texture("first.png"), TestImages::GreyPng(false));
    EXPECT_EQ(Init(), "");
    const GLuint before = SlotOf("first.png").texture.id;
    std::filesystem::remove(Texture("first.png"));
    EXPECT_EQ(Init(), "");
    EXPECT_EQ(m_Manager->GetTexture("first.png"), 0u);
    EXPECT_EQ(m_Manager->Slots().size(), 1u);
    EXPECT_FALSE(glIsTexture(before) && before != m_Manager->Slots()[0].texture.id &&
                 before != m_Manager->FontTexture().id);
}

TEST_F(TextureManagerGlTest, ShippedTexturesLoadWithoutReportsInTheirColourSpaces)
{
    ReportCapture capture;
    m_Manager->InitTextureManager(std::string(VORN_DATA_DIR) + "/");
    EXPECT_EQ(capture.Text(), "");
    EXPECT_TRUE(m_Manager->GetView(0));
    for (const char* colour : {"white.png", "stone_floor.png", "cave_wall.png", "moss.png", "ice.png", "lava.png"})
    {
        const unsigned index = m_Manager->GetTexture(colour);
        ASSERT_NE(index, 0u) << colour;
        EXPECT_EQ(TextureInternalFormat(m_Manager->Slots()[index].texture), GL_SRGB8_ALPHA8) << colour;
    }
    EXPECT_EQ(TextureInternalFormat(m_Manager->Slots()[m_Manager->GetTexture("flat_normal.png")].texture), GL_RGBA8);
    EXPECT_EQ(TextureInternalFormat(m_Manager->Slots()[0].texture), GL_RGBA8);
}
