// The colour-space rule read from an image's own bytes: the PNG sRGB chunk, the JPEG EXIF
// ColorSpace tag, linear for everything else, and safe answers for truncated and garbage bytes.
#include "Graphics_Engine/Material/Texture/ImageColourSpace.h"

#include "support/TestImages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>

using namespace Graphics;
using TestImages::Bytes;

namespace
{
bool IsSrgb(const Bytes& bytes)
{
    return DetectColourSpace(bytes.data(), bytes.size()) == ImageColourSpace::Srgb;
}
}

TEST(ImageColourSpaceTest, PngWithSrgbChunkIsSrgb)
{
    const Bytes png = TestImages::GreyPng(true);
    EXPECT_TRUE(PngHasSrgbChunk(png.data(), png.size()));
    EXPECT_TRUE(IsSrgb(png));
}

TEST(ImageColourSpaceTest, PngWithoutSrgbChunkIsLinear)
{
    const Bytes png = TestImages::GreyPng(false);
    EXPECT_FALSE(PngHasSrgbChunk(png.data(), png.size()));
    EXPECT_FALSE(IsSrgb(png));
}

TEST(ImageColourSpaceTest, PngSrgbChunkAfterIendIsNotSeen)
{
    Bytes png = TestImages::GreyPng(false);
    TestImages::PutChunk(png, "sRGB", {0});
    EXPECT_FALSE(IsSrgb(png));
}

TEST(ImageColourSpaceTest, EveryTruncationOfSrgbPngIsSafeAndSrgbOnlyOnceChunkIsWhole)
{
    const Bytes png = TestImages::GreyPng(true);
    // Signature (8) + IHDR (25) + the sRGB chunk's length and type (8) and its byte (1).
    const std::size_t srgbDataEnd = 8 + 25 + 8 + 1;
    for (std::size_t size = 0; size <= png.size(); ++size)
    {
        const Bytes part(png.begin(), png.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(PngHasSrgbChunk(part.data(), part.size()), size >= srgbDataEnd) << size;
    }
}

TEST(ImageColourSpaceTest, PngChunkLengthPastTheEndIsLinear)
{
    Bytes png = TestImages::GreyPng(true);
    // The IHDR length says 0xFFFFFFF0 bytes: the walk must stop, not jump.
    png[8] = 0xFF;
    png[9] = 0xFF;
    png[10] = 0xFF;
    png[11] = 0xF0;
    EXPECT_FALSE(PngHasSrgbChunk(png.data(), png.size()));
}

TEST(ImageColourSpaceTest, JpegWithExifColorSpaceOneIsSrgb)
{
    EXPECT_TRUE(IsSrgb(TestImages::JpegHeaderWithExif(1, true)));
    EXPECT_TRUE(IsSrgb(TestImages::JpegHeaderWithExif(1, false)));
}

TEST(ImageColourSpaceTest, JpegWithUncalibratedColorSpaceIsLinear)
{
    EXPECT_FALSE(IsSrgb(TestImages::JpegHeaderWithExif(0xFFFF, true)));
    EXPECT_FALSE(IsSrgb(TestImages::JpegHeaderWithExif(2, false)));
}

TEST(ImageColourSpaceTest, JpegWithoutExifIsLinear)
{
    const Bytes jpeg = {0xFF, 0xD8, 0xFF, 0xE0, 0x00, 0x04, 'J', 'F', 0xFF, 0xDA, 0x00, 0x02, 0xFF, 0xD9};
    EXPECT_FALSE(IsSrgb(jpeg));
}

TEST(ImageColourSpaceTest, ExifAfterStartOfScanIsNotSeen)
{
    Bytes jpeg = {0xFF, 0xD8, 0xFF, 0xDA, 0x00, 0x02};
    const Bytes exif = TestImages::ExifSegment(TestImages::ExifTiff(1, true));
    jpeg.insert(jpeg.end(), exif.begin(), exif.end());
    EXPECT_FALSE(IsSrgb(jpeg));
}

TEST(ImageColourSpaceTest, EveryTruncationOfExifJpegIsSafe)
{
    const Bytes jpeg = TestImages::JpegHeaderWithExif(1, false);
    for (std::size_t size = 0; size < jpeg.size(); ++size)
    {
        const Bytes part(jpeg.begin(), jpeg.begin() + static_cast<std::ptrdiff_t>(size));
        // The ColorSpace value ends 6 bytes before the start-of-scan segment and the segment's padding.
        const bool whole = size >= jpeg.size() - 6;
        EXPECT_EQ(JpegExifSaysSrgb(part.data(), part.size()), whole) << size;
    }
}

TEST(ImageColourSpaceTest, ExifIfdOffsetsOutsideTheSegmentAreLinear)
{
    Bytes tiff = TestImages::ExifTiff(1, true);
    // The IFD0 offset points far past the segment.
    tiff[4] = 0x7F;
    EXPECT_FALSE(IsSrgb(TestImages::WithSegment({0xFF, 0xD8, 0xFF, 0xD9}, TestImages::ExifSegment(tiff))));
    tiff = TestImages::ExifTiff(1, true);
    // The Exif IFD pointer's value points far past the segment.
    tiff[18] = 0xFF;
    EXPECT_FALSE(IsSrgb(TestImages::WithSegment({0xFF, 0xD8, 0xFF, 0xD9}, TestImages::ExifSegment(tiff))));
}

TEST(ImageColourSpaceTest, OtherFormatsAreLinear)
{
    const Bytes bmp = {'B', 'M', 0, 0, 0, 0, 0, 0, 0, 0, 54, 0, 0, 0};
    EXPECT_FALSE(IsSrgb(bmp));
    const Bytes text = {'s', 'R', 'G', 'B'};
    EXPECT_FALSE(IsSrgb(text));
}

TEST(ImageColourSpaceTest, NoBytesAreLinear)
{
    EXPECT_EQ(DetectColourSpace(nullptr, 0), ImageColourSpace::Linear);
    EXPECT_EQ(DetectColourSpace(nullptr, 100), ImageColourSpace::Linear);
    EXPECT_FALSE(PngHasSrgbChunk(nullptr, 8));
    EXPECT_FALSE(JpegExifSaysSrgb(nullptr, 2));
}

TEST(ImageColourSpaceTest, GarbageAfterPngAndJpegSignaturesNeverReadsPastTheEnd)
{
    std::mt19937 random(14);
    std::uniform_int_distribution<int> byte(0, 255);
    const Bytes pngStart = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    const Bytes jpegStart = {0xFF, 0xD8, 0xFF, 0xE1};
    for (int round = 0; round < 2000; ++round)
    {
        Bytes bytes = round % 2 == 0 ? pngStart : jpegStart;
        const int extra = round % 97;
        for (int i = 0; i < extra; ++i)
            bytes.push_back(static_cast<std::uint8_t>(byte(random)));
        // Exact-size heap copies, so that the sanitizer sees any read past the end.
        const auto copy = std::make_unique<std::uint8_t[]>(bytes.size());
        std::copy(bytes.begin(), bytes.end(), copy.get());
        DetectColourSpace(copy.get(), bytes.size());
    }
}
