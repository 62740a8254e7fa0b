// Decoding images to RGBA (from memory and from files), refusing bad bytes without crashing, and
// scaling images down to the largest texture side.
#include "platform/ImageDecoder.h"

#include "support/TempFolder.h"
#include "support/TestImages.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <random>

using Platform::DecodedImage;
using TestImages::Bytes;

TEST(ImageDecoderTest, PngDecodesToItsRgbaPixels)
{
    Bytes pixels = TestImages::Solid(3, 2, 10, 20, 30, 40);
    pixels[4] = 200;
    const Bytes png = TestImages::Png(3, 2, pixels, false);
    const DecodedImage image = Platform::DecodeImage(png.data(), png.size());
    ASSERT_TRUE(image.Valid()) << image.error;
    EXPECT_EQ(image.width, 3);
    EXPECT_EQ(image.height, 2);
    EXPECT_EQ(image.pixels, pixels);
    EXPECT_TRUE(image.error.empty());
}

TEST(ImageDecoderTest, FileDecodesLikeItsBytes)
{
    TempFolder folder;
    const Bytes png = TestImages::GreyPng(true, 5, 7);
    std::ofstream(folder.Path() + "grey.png", std::ios::binary)
        .write(reinterpret_cast<const char*>(png.data()), static_cast<std::streamsize>(png.size()));
    const DecodedImage image = Platform::DecodeImageFile(folder.Path() + "grey.png");
    ASSERT_TRUE(image.Valid()) << image.error;
    EXPECT_EQ(image.width, 5);
    EXPECT_EQ(image.height, 7);
    EXPECT_EQ(image.pixels[0], 128);
}

TEST(ImageDecoderTest, MissingFileGivesEmptyImageWithReason)
{
    const DecodedImage image = Platform::DecodeImageFile("/nonexistent/folder/none.png");
    EXPECT_FALSE(image.Valid());
    EXPECT_FALSE(image.error.empty());
}

TEST(ImageDecoderTest, GarbageAndEmptyBytesGiveEmptyImage)
{
    const std::string text = "this is not an image at all";
    const DecodedImage garbage = Platform::DecodeImage(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    EXPECT_FALSE(garbage.Valid());
    EXPECT_FALSE(garbage.error.empty());
    EXPECT_FALSE(Platform::DecodeImage(nullptr, 0).Valid());
    EXPECT_FALSE(Platform::DecodeImage(nullptr, 10).Valid());
}

TEST(ImageDecoderTest, EveryTruncationOfPngIsRefusedWithoutCrash)
{
    const Bytes png = TestImages::GreyPng(true, 6, 6);
    for (std::size_t size = 0; size < png.size(); ++size)
    {
        const auto copy = std::make_unique<std::uint8_t[]>(size + 1);
        std::copy(png.begin(), png.begin() + static_cast<std::ptrdiff_t>(size), copy.get());
        const DecodedImage image = Platform::DecodeImage(copy.get(), size);
        // The last bytes are the IEND chunk, which stb_image does not need.
        if (size < png.size() - 12)
        {
            EXPECT_FALSE(image.Valid()) << size;
        }
    }
}

TEST(ImageDecoderTest, FlippedBytesOfPngNeverCrash)
{
    const Bytes png = TestImages::Png(8, 8, TestImages::Solid(8, 8, 1, 2, 3), false);
    std::mt19937 random(14);
    for (int round = 0; round < 500; ++round)
    {
        Bytes changed = png;
        for (int flips = 0; flips < 4; ++flips)
            changed[random() % changed.size()] ^= static_cast<std::uint8_t>(1u << (random() % 8));
        const auto copy = std::make_unique<std::uint8_t[]>(changed.size());
        std::copy(changed.begin(), changed.end(), copy.get());
        const DecodedImage image = Platform::DecodeImage(copy.get(), changed.size());
        if (image.Valid())
        {
            EXPECT_EQ(image.pixels.size(), static_cast<std::size_t>(image.width) * image.height * 4);
        }
    }
}

TEST(ImageDecoderTest, ImageClaimingMorePixelsThanAllowedIsRefusedBeforeDecoding)
{
    // A header of 65535 x 65535 pixels (16 GiB of RGBA) with no pixel data behind it.
    Bytes png = TestImages::GreyPng(false, 1, 1);
    for (int i = 16; i < 24; ++i)
        png[i] = (i % 4 < 2) ? 0 : 0xFF;
    const DecodedImage image = Platform::DecodeImage(png.data(), png.size());
    EXPECT_FALSE(image.Valid());
}

TEST(ImageDecoderTest, ImageOverLargestSideIsScaledDownKeepingAspect)
{
    DecodedImage wide;
    wide.width = 16400;
    wide.height = 2;
    wide.pixels = TestImages::Solid(16400, 2, 200, 100, 50, 255);
    const DecodedImage fitted = Platform::FitImage(std::move(wide), false);
    ASSERT_TRUE(fitted.Valid()) << fitted.error;
    EXPECT_EQ(fitted.width, Platform::kLargestTextureSide);
    EXPECT_EQ(fitted.height, 2);
    EXPECT_EQ(fitted.pixels.size(), std::size_t{16384} * 2 * 4);
    EXPECT_EQ(fitted.pixels[0], 200);
    EXPECT_EQ(fitted.pixels[1], 100);

    DecodedImage tall;
    tall.width = 300;
    tall.height = 600;
    tall.pixels = TestImages::Solid(300, 600, 9, 9, 9);
    const DecodedImage fittedTall = Platform::FitImage(std::move(tall), true, 64);
    EXPECT_EQ(fittedTall.width, 32);
    EXPECT_EQ(fittedTall.height, 64);
}

TEST(ImageDecoderTest, ThinImageOverLargestSideKeepsOneTexel)
{
    DecodedImage line;
    line.width = 1;
    line.height = 200;
    line.pixels = TestImages::Solid(1, 200, 1, 2, 3);
    const DecodedImage fitted = Platform::FitImage(std::move(line), false, 50);
    EXPECT_EQ(fitted.width, 1);
    EXPECT_EQ(fitted.height, 50);
}

TEST(ImageDecoderTest, ImageWithinLargestSideIsKeptAsItIs)
{
    DecodedImage image;
    image.width = 16384;
    image.height = 1;
    image.pixels = TestImages::Solid(16384, 1, 7, 8, 9);
    const Bytes before = image.pixels;
    const DecodedImage fitted = Platform::FitImage(std::move(image), true);
    EXPECT_EQ(fitted.width, 16384);
    EXPECT_EQ(fitted.height, 1);
    EXPECT_EQ(fitted.pixels, before);
}
