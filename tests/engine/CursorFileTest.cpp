#include "engine/CursorFile.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

using Engine::CursorImage;

namespace
{
using Bytes = std::vector<std::uint8_t>;

// One image as a test describes it, top row first.
struct TestImage
{
    int width = 2;
    int height = 2;
    int bits = 32;
    // R, G, B of each palette colour (1, 4 and 8 bits).
    std::vector<std::array<std::uint8_t, 3>> palette;
    // Per pixel: the palette index, 0xRRGGBB (24 bits) or 0xAARRGGBB (32 bits).
    std::vector<std::uint32_t> values;
    // Per pixel: true where the mask makes it transparent; empty for none.
    std::vector<bool> masked;
    // A 32-bit image may leave the mask out.
    bool writeMask = true;
    int hotspotX = 0;
    int hotspotY = 0;
};

void Put(Bytes& out, std::uint32_t value, int size)
{
    for (int i = 0; i < size; ++i)
        out.push_back(static_cast<std::uint8_t>((value >> (8 * i)) & 0xFF));
}

void Set(Bytes& bytes, std::size_t at, std::uint32_t value, int size)
{
    for (int i = 0; i < size; ++i)
        bytes[at + i] = static_cast<std::uint8_t>((value >> (8 * i)) & 0xFF);
}

std::size_t RowBytes(int width, int bits)
{
    return static_cast<std::size_t>((width * bits + 31) / 32 * 4);
}

// A packed row of 1, 4 or 8-bit values, first pixel in the high bits.
Bytes PackRow(const std::vector<unsigned>& values, int bits, int width)
{
    Bytes row(RowBytes(width, bits), 0);
    for (std::size_t x = 0; x < values.size(); ++x)
    {
        const std::size_t bit = x * bits;
        row[bit / 8] = static_cast<std::uint8_t>(row[bit / 8] | (values[x] << (8 - bits - bit % 8)));
    }
    return row;
}

// The bitmap of one image: header, palette, colour rows, mask rows, bottom row first.
Bytes EncodeImage(const TestImage& image)
{
    Bytes colour;
    Bytes mask;
    for (int y = image.height - 1; y >= 0; --y)
    {
        std::vector<unsigned> rowValues;
        std::vector<unsigned> maskBits;
        for (int x = 0; x < image.width; ++x)
        {
            const std::size_t i = static_cast<std::size_t>(y * image.width + x);
            rowValues.push_back(image.values[i]);
            maskBits.push_back(!image.masked.empty() && image.masked[i] ? 1u : 0u);
        }
        if (image.bits <= 8)
        {
            const Bytes row = PackRow(rowValues, image.bits, image.width);
            colour.insert(colour.end(), row.begin(), row.end());
        }
        else
        {
            const std::size_t start = colour.size();
            for (unsigned value : rowValues)
                Put(colour, value, image.bits / 8);  // B, G, R (, A)
            colour.resize(start + RowBytes(image.width, image.bits), 0);
        }
        const Bytes maskRow = PackRow(maskBits, 1, image.width);
        mask.insert(mask.end(), maskRow.begin(), maskRow.end());
    }
    Bytes out;
    Put(out, 40, 4);
    Put(out, static_cast<std::uint32_t>(image.width), 4);
    Put(out, static_cast<std::uint32_t>(image.height * 2), 4);
    Put(out, 1, 2);
    Put(out, static_cast<std::uint32_t>(image.bits), 2);
    Put(out, 0, 4);  // uncompressed
    Put(out, static_cast<std::uint32_t>(colour.size() + mask.size()), 4);
    Put(out, 0, 4);
    Put(out, 0, 4);
    Put(out, static_cast<std::uint32_t>(image.palette.size()), 4);
    Put(out, 0, 4);
    for (const auto& rgb : image.palette)
        out.insert(out.end(), {rgb[2], rgb[1], rgb[0], 0});
    out.insert(out.end(), colour.begin(), colour.end());
    if (image.writeMask)
        out.insert(out.end(), mask.begin(), mask.end());
    return out;
}

// A whole cursor file with one directory entry per image.
Bytes EncodeCursor(const std::vector<TestImage>& images)
{
    Bytes out;
    Put(out, 0, 2);
    Put(out, 2, 2);
    Put(out, static_cast<std::uint32_t>(images.size()), 2);
    std::vector<Bytes> encoded;
    for (const TestImage& image : images)
        encoded.push_back(EncodeImage(image));
    std::size_t offset = 6 + 16 * images.size();
    for (std::size_t i = 0; i < images.size(); ++i)
    {
        out.push_back(static_cast<std::uint8_t>(images[i].width % 256));
        out.push_back(static_cast<std::uint8_t>(images[i].height % 256));
        out.push_back(0);
        out.push_back(0);
        Put(out, static_cast<std::uint32_t>(images[i].hotspotX), 2);
        Put(out, static_cast<std::uint32_t>(images[i].hotspotY), 2);
        Put(out, static_cast<std::uint32_t>(encoded[i].size()), 4);
        Put(out, static_cast<std::uint32_t>(offset), 4);
        offset += encoded[i].size();
    }
    for (const Bytes& image : encoded)
        out.insert(out.end(), image.begin(), image.end());
    return out;
}

// Offsets of the first directory entry's fields and of the first image's header.
constexpr std::size_t kEntryBytesAt = 14;
constexpr std::size_t kEntryOffsetAt = 18;
constexpr std::size_t kImageAt = 22;

bool Read(const Bytes& bytes, CursorImage& image, std::string& error)
{
    return Engine::ReadCursor(bytes.data(), bytes.size(), image, error);
}

std::string ErrorOf(const Bytes& bytes)
{
    CursorImage image;
    std::string error;
    EXPECT_FALSE(Read(bytes, image, error));
    EXPECT_FALSE(error.empty());
    EXPECT_TRUE(image.pixels.empty());
    return error;
}

std::array<std::uint8_t, 4> Pixel(const CursorImage& image, int x, int y)
{
    const std::size_t at = (static_cast<std::size_t>(y) * image.width + x) * 4;
    return {image.pixels[at], image.pixels[at + 1], image.pixels[at + 2], image.pixels[at + 3]};
}

using Rgba = std::array<std::uint8_t, 4>;

TestImage ThirtyTwoBitImage()
{
    TestImage image;
    image.width = 3;
    image.height = 2;
    image.values = {0xFF102030, 0x80405060, 0x00000000, 0xFF0000FF, 0xFF00FF00, 0xFFFF0000};
    image.hotspotX = 2;
    image.hotspotY = 1;
    return image;
}
}

TEST(CursorFileTest, Reads32BitImageWithItsAlphaAndHotspotTopRowFirst)
{
    CursorImage image;
    std::string error;
    ASSERT_TRUE(Read(EncodeCursor({ThirtyTwoBitImage()}), image, error)) << error;
    EXPECT_EQ(image.width, 3);
    EXPECT_EQ(image.height, 2);
    EXPECT_EQ(image.hotspotX, 2);
    EXPECT_EQ(image.hotspotY, 1);
    ASSERT_EQ(image.pixels.size(), 3u * 2u * 4u);
    EXPECT_EQ(Pixel(image, 0, 0), (Rgba{0x10, 0x20, 0x30, 0xFF}));
    EXPECT_EQ(Pixel(image, 1, 0), (Rgba{0x40, 0x50, 0x60, 0x80}));
    EXPECT_EQ(Pixel(image, 2, 0)[3], 0);
    EXPECT_EQ(Pixel(image, 0, 1), (Rgba{0x00, 0x00, 0xFF, 0xFF}));
    EXPECT_EQ(Pixel(image, 2, 1), (Rgba{0xFF, 0x00, 0x00, 0xFF}));
}

TEST(CursorFileTest, Reads32BitImageWithoutItsMask)
{
    TestImage source = ThirtyTwoBitImage();
    source.writeMask = false;
    CursorImage image;
    std::string error;
    ASSERT_TRUE(Read(EncodeCursor({source}), image, error)) << error;
    EXPECT_EQ(Pixel(image, 1, 0), (Rgba{0x40, 0x50, 0x60, 0x80}));
}

TEST(CursorFileTest, A32BitImageWithNoAlphaTakesItsTransparencyFromTheMask)
{
    TestImage source;
    source.values = {0x00112233, 0x00445566, 0x00778899, 0x00AABBCC};
    source.masked = {false, true, true, false};
    CursorImage image;
    std::string error;
    ASSERT_TRUE(Read(EncodeCursor({source}), image, error)) << error;
    EXPECT_EQ(Pixel(image, 0, 0), (Rgba{0x11, 0x22, 0x33, 0xFF}));
    EXPECT_EQ(Pixel(image, 1, 0)[3], 0);
    EXPECT_EQ(Pixel(image, 0, 1)[3], 0);
    EXPECT_EQ(Pixel(image, 1, 1), (Rgba{0xAA, 0xBB, 0xCC, 0xFF}));
}

TEST(CursorFileTest, Reads24BitImageWithTheMaskAsTransparency)
{
    TestImage source;
    source.width = 5;  // 15 bytes a row, padded to 16
    source.height = 2;
    source.bits = 24;
    source.values = {0x010203, 0x040506, 0x070809, 0x0A0B0C, 0x0D0E0F,
                     0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF, 0x000000};
    source.masked = {false, false, false, false, true, true, false, false, false, false};
    CursorImage image;
    std::string error;
    ASSERT_TRUE(Read(EncodeCursor({source}), image, error)) << error;
    EXPECT_EQ(image.width, 5);
    EXPECT_EQ(Pixel(image, 0, 0), (Rgba{0x01, 0x02, 0x03, 0xFF}));
    EXPECT_EQ(Pixel(image, 3, 0), (Rgba{0x0A, 0x0B, 0x0C, 0xFF}));
    EXPECT_EQ(Pixel(image, 4, 0)[3], 0);
    EXPECT_EQ(Pixel(image, 0, 1)[3], 0);
    EXPECT_EQ(Pixel(image, 1, 1), (Rgba{0x00, 0xFF, 0x00, 0xFF}));
    EXPECT_EQ(Pixel(image, 4, 1), (Rgba{0x00, 0x00, 0x00, 0xFF}));
}

TEST(CursorFileTest, Reads8BitPalettedImageWithItsMask)
{
    TestImage source;
    source.width = 3;
    source.height = 3;
    source.bits = 8;
    source.palette = {{0, 0, 0}, {255, 128, 0}, {40, 16, 8}};
    source.values = {2, 1, 0, 1, 2, 1, 0, 1, 2};
    source.masked = {false, false, true, false, false, false, true, false, false};
    CursorImage image;
    std::string error;
    ASSERT_TRUE(Read(EncodeCursor({source}), image, error)) << error;
    EXPECT_EQ(Pixel(image, 0, 0), (Rgba{40, 16, 8, 255}));
    EXPECT_EQ(Pixel(image, 1, 0), (Rgba{255, 128, 0, 255}));
    EXPECT_EQ(Pixel(image, 2, 0)[3], 0);
    EXPECT_EQ(Pixel(image, 0, 2)[3], 0);
    EXPECT_EQ(Pixel(image, 2, 2), (Rgba{40, 16, 8, 255}));
}

TEST(CursorFileTest, Reads1And4BitPalettedImages)
{
    TestImage oneBit;
    oneBit.width = 9;  // the second byte of each row holds one pixel
    oneBit.height = 1;
    oneBit.bits = 1;
    oneBit.palette = {{0, 0, 0}, {255, 255, 255}};
    oneBit.values = {1, 0, 1, 1, 0, 0, 0, 0, 1};
    CursorImage image;
    std::string error;
    ASSERT_TRUE(Read(EncodeCursor({oneBit}), image, error)) << error;
    EXPECT_EQ(Pixel(image, 0, 0), (Rgba{255, 255, 255, 255}));
    EXPECT_EQ(Pixel(image, 1, 0), (Rgba{0, 0, 0, 255}));
    EXPECT_EQ(Pixel(image, 8, 0), (Rgba{255, 255, 255, 255}));

    TestImage fourBit;
    fourBit.width = 3;
    fourBit.height = 1;
    fourBit.bits = 4;
    fourBit.palette.resize(16);
    fourBit.palette[5] = {5, 50, 150};
    fourBit.palette[15] = {15, 60, 200};
    fourBit.values = {15, 5, 15};
    ASSERT_TRUE(Read(EncodeCursor({fourBit}), image, error)) << error;
    EXPECT_EQ(Pixel(image, 0, 0), (Rgba{15, 60, 200, 255}));
    EXPECT_EQ(Pixel(image, 1, 0), (Rgba{5, 50, 150, 255}));
    EXPECT_EQ(Pixel(image, 2, 0), (Rgba{15, 60, 200, 255}));
}

TEST(CursorFileTest, AnIndexPastAShortPaletteIsBlack)
{
    TestImage source;
    source.width = 2;
    source.height = 1;
    source.bits = 8;
    source.palette = {{9, 9, 9}};
    source.values = {0, 200};
    CursorImage image;
    std::string error;
    ASSERT_TRUE(Read(EncodeCursor({source}), image, error)) << error;
    EXPECT_EQ(Pixel(image, 0, 0), (Rgba{9, 9, 9, 255}));
    EXPECT_EQ(Pixel(image, 1, 0), (Rgba{0, 0, 0, 255}));
}

TEST(CursorFileTest, PicksTheImageNearest32By32)
{
    TestImage small;
    small.width = 16;
    small.height = 16;
    small.values.assign(16 * 16, 0xFF000000);
    TestImage middle = small;
    middle.width = 32;
    middle.height = 32;
    middle.values.assign(32 * 32, 0xFF00FF00);
    middle.hotspotX = 5;
    TestImage large = small;
    large.width = 48;
    large.height = 48;
    large.values.assign(48 * 48, 0xFFFF0000);
    CursorImage image;
    std::string error;
    ASSERT_TRUE(Read(EncodeCursor({small, large, middle}), image, error)) << error;
    EXPECT_EQ(image.width, 32);
    EXPECT_EQ(image.hotspotX, 5);
    EXPECT_EQ(Pixel(image, 31, 31), (Rgba{0, 255, 0, 255}));
}

TEST(CursorFileTest, EveryTruncationIsRefused)
{
    const Bytes whole = EncodeCursor({ThirtyTwoBitImage()});
    for (std::size_t size = 0; size < whole.size(); ++size)
    {
        SCOPED_TRACE(size);
        const Bytes part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        ErrorOf(part);
    }
    CursorImage image;
    std::string error;
    EXPECT_FALSE(Engine::ReadCursor(nullptr, 0, image, error));
}

TEST(CursorFileTest, HeaderOfAnotherTypeOrNoImagesIsRefused)
{
    Bytes icon = EncodeCursor({ThirtyTwoBitImage()});
    Set(icon, 2, 1, 2);
    EXPECT_NE(ErrorOf(icon).find("not a cursor"), std::string::npos);

    Bytes reserved = EncodeCursor({ThirtyTwoBitImage()});
    Set(reserved, 0, 7, 2);
    ErrorOf(reserved);

    Bytes none = EncodeCursor({ThirtyTwoBitImage()});
    Set(none, 4, 0, 2);
    EXPECT_NE(ErrorOf(none).find("no images"), std::string::npos);
}

TEST(CursorFileTest, CountsAndOffsetsOutsideTheFileAreRefused)
{
    const Bytes good = EncodeCursor({ThirtyTwoBitImage()});

    Bytes manyImages = good;
    Set(manyImages, 4, 0xFFFF, 2);
    EXPECT_NE(ErrorOf(manyImages).find("directory"), std::string::npos);

    Bytes farOffset = good;
    Set(farOffset, kEntryOffsetAt, 0xFFFFFFF0u, 4);
    EXPECT_NE(ErrorOf(farOffset).find("past the end"), std::string::npos);

    Bytes longImage = good;
    Set(longImage, kEntryBytesAt, 0xFFFFFFFFu, 4);
    ErrorOf(longImage);

    Bytes shortImage = good;
    Set(shortImage, kEntryBytesAt, 39, 4);
    ErrorOf(shortImage);

    Bytes bigHeader = good;
    Set(bigHeader, kImageAt, 0x7FFFFFFFu, 4);
    ErrorOf(bigHeader);

    Bytes smallHeader = good;
    Set(smallHeader, kImageAt, 12, 4);
    ErrorOf(smallHeader);

    Bytes longPalette = good;
    Set(longPalette, kImageAt + 32, 0x40000000u, 4);
    EXPECT_NE(ErrorOf(longPalette).find("palette"), std::string::npos);
}

TEST(CursorFileTest, HugeOrEmptyImagesAreRefused)
{
    const Bytes good = EncodeCursor({ThirtyTwoBitImage()});
    for (std::uint32_t width : {0u, 257u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu})
    {
        Bytes bytes = good;
        Set(bytes, kImageAt + 4, width, 4);
        SCOPED_TRACE(width);
        ErrorOf(bytes);
    }
    for (std::uint32_t doubleHeight : {0u, 3u, 514u, 0x7FFFFFFEu, 0xFFFFFFFCu})
    {
        Bytes bytes = good;
        Set(bytes, kImageAt + 8, doubleHeight, 4);
        SCOPED_TRACE(doubleHeight);
        ErrorOf(bytes);
    }

    // 256 x 256 is the largest size there is.
    TestImage largest;
    largest.width = 256;
    largest.height = 256;
    largest.values.assign(256 * 256, 0xFF445566);
    CursorImage image;
    std::string error;
    ASSERT_TRUE(Read(EncodeCursor({largest}), image, error)) << error;
    EXPECT_EQ(image.width, 256);
    EXPECT_EQ(image.pixels.size(), 256u * 256u * 4u);
}

TEST(CursorFileTest, OtherDepthsAndCompressionAreRefusedWithTheReason)
{
    const Bytes good = EncodeCursor({ThirtyTwoBitImage()});
    Bytes sixteen = good;
    Set(sixteen, kImageAt + 14, 16, 2);
    EXPECT_NE(ErrorOf(sixteen).find("16 bits per pixel"), std::string::npos);

    Bytes compressed = good;
    Set(compressed, kImageAt + 16, 1, 4);
    EXPECT_NE(ErrorOf(compressed).find("compress"), std::string::npos);
}

TEST(CursorFileTest, PngImagesAreRefusedWithAMessage)
{
    Bytes bytes = EncodeCursor({ThirtyTwoBitImage()});
    const std::uint8_t signature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    std::copy(std::begin(signature), std::end(signature), bytes.begin() + kImageAt);
    EXPECT_NE(ErrorOf(bytes).find("PNG"), std::string::npos);
}

TEST(CursorFileTest, HotspotOutsideTheImageIsRefused)
{
    TestImage source = ThirtyTwoBitImage();
    source.hotspotX = 3;
    EXPECT_NE(ErrorOf(EncodeCursor({source})).find("hotspot"), std::string::npos);
    source.hotspotX = 0;
    source.hotspotY = 2;
    ErrorOf(EncodeCursor({source}));
}

TEST(CursorFileTest, MissingOrOversizedFilesAreRefused)
{
    TempFolder folder;
    CursorImage image;
    std::string error;
    EXPECT_FALSE(Engine::ReadCursorFile(folder.Path() + "missing.cur", image, error));
    EXPECT_NE(error.find("cannot be opened"), std::string::npos);

    const std::string large = folder.Write("large.cur", std::string(Engine::kMaxCursorFileBytes + 1, '\0'));
    EXPECT_FALSE(Engine::ReadCursorFile(large, image, error));
    EXPECT_NE(error.find("larger"), std::string::npos);

    const Bytes good = EncodeCursor({ThirtyTwoBitImage()});
    const std::string path = folder.Write("good.cur", std::string(good.begin(), good.end()));
    EXPECT_TRUE(Engine::ReadCursorFile(path, image, error)) << error;
    EXPECT_EQ(image.width, 3);
}

// The cursor the game ships, drawn by tools/make_cursor.py.
TEST(CursorFileTest, ShippedCursorIsA32By32ArrowPointingFromItsHotspot)
{
    const std::filesystem::path shipped =
        std::filesystem::path(VORN_TEST_DATA_DIR) / ".." / ".." / "Data" / "Emberfallow_Cursor.cur";
    CursorImage image;
    std::string error;
    ASSERT_TRUE(Engine::ReadCursorFile(shipped.string(), image, error)) << error;
    EXPECT_EQ(image.width, 32);
    EXPECT_EQ(image.height, 32);
    EXPECT_EQ(image.hotspotX, 0);
    EXPECT_EQ(image.hotspotY, 0);
    // Dark outline along the left edge, ember fill inside, nothing at the far corner.
    const Rgba edge = Pixel(image, 0, 8);
    EXPECT_EQ(edge[3], 255);
    EXPECT_LT(edge[0], 80);
    const Rgba fill = Pixel(image, 4, 10);
    EXPECT_EQ(fill[3], 255);
    EXPECT_GT(fill[0], 200);
    EXPECT_GT(fill[0], fill[2] + 100);
    EXPECT_EQ(Pixel(image, 31, 31)[3], 0);
    EXPECT_EQ(Pixel(image, 31, 0)[3], 0);
}
