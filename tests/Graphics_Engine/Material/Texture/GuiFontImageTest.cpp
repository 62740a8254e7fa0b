// The GUI font image built into the program: it decodes, and it is exactly the atlas that the
// GUI's font recipe builds, so the glyph coordinates the GUI computes fall on its pixels.
#include "Graphics_Engine/Material/Texture/GuiFontImage.h"

#include "Graphics_Engine/Material/Texture/GuiFontAtlas.h"
#include "Graphics_Engine/Material/Texture/ImageColourSpace.h"
#include "platform/ImageDecoder.h"

#include <gtest/gtest.h>

TEST(GuiFontImageTest, DecodesToThe512By64AtlasOfTheDefaultFont)
{
    const std::span<const std::uint8_t> bytes = Graphics::GuiFontImage();
    ASSERT_FALSE(bytes.empty());
    const Platform::DecodedImage image = Platform::DecodeImage(bytes.data(), bytes.size());
    ASSERT_TRUE(image.Valid()) << image.error;
    EXPECT_EQ(image.width, 512);
    EXPECT_EQ(image.height, 64);
}

TEST(GuiFontImageTest, IsLinear)
{
    const std::span<const std::uint8_t> bytes = Graphics::GuiFontImage();
    EXPECT_EQ(Graphics::DetectColourSpace(bytes.data(), bytes.size()), Graphics::ImageColourSpace::Linear);
}

TEST(GuiFontImageTest, MatchesTheAtlasTheGuiRecipeBuilds)
{
    ImFontAtlas atlas;
    Graphics::BuildGuiFontAtlas(atlas);
    unsigned char* pixels = nullptr;
    int width = 0;
    int height = 0;
    atlas.GetTexDataAsRGBA32(&pixels, &width, &height);
    ASSERT_NE(pixels, nullptr);

    const std::span<const std::uint8_t> bytes = Graphics::GuiFontImage();
    const Platform::DecodedImage image = Platform::DecodeImage(bytes.data(), bytes.size());
    ASSERT_EQ(image.width, width);
    ASSERT_EQ(image.height, height);
    EXPECT_TRUE(std::equal(image.pixels.begin(), image.pixels.end(), pixels));
}
