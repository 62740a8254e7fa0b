#include "engine/CursorFile.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>

namespace Engine
{
namespace
{
constexpr std::size_t kHeaderBytes = 6;
constexpr std::size_t kEntryBytes = 16;
constexpr std::size_t kInfoHeaderBytes = 40;
constexpr std::uint16_t kCursorType = 2;
constexpr std::uint32_t kUncompressed = 0;
constexpr std::array<std::uint8_t, 8> kPngSignature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

// Little-endian reads; callers have checked that the bytes are there.
std::uint16_t U16(const std::uint8_t* p)
{
    return static_cast<std::uint16_t>(p[0] | (p[1] << 8));
}

std::uint32_t U32(const std::uint8_t* p)
{
    return static_cast<std::uint32_t>(p[0]) | (static_cast<std::uint32_t>(p[1]) << 8) |
           (static_cast<std::uint32_t>(p[2]) << 16) | (static_cast<std::uint32_t>(p[3]) << 24);
}

std::int32_t I32(const std::uint8_t* p)
{
    return static_cast<std::int32_t>(U32(p));
}

// What the directory says of one image.
struct Entry
{
    int width = 0;  // 0 in the file means 256
    int height = 0;
    int hotspotX = 0;
    int hotspotY = 0;
    std::uint32_t bytes = 0;
    std::uint32_t offset = 0;
};

Entry ReadEntry(const std::uint8_t* p)
{
    Entry entry;
    entry.width = p[0] == 0 ? 256 : p[0];
    entry.height = p[1] == 0 ? 256 : p[1];
    entry.hotspotX = U16(p + 4);
    entry.hotspotY = U16(p + 6);
    entry.bytes = U32(p + 8);
    entry.offset = U32(p + 12);
    return entry;
}

// The entry whose size is nearest 32x32; the first of equals.
std::size_t PickEntry(const std::vector<Entry>& entries)
{
    std::size_t best = 0;
    int bestDistance = 1 << 30;
    for (std::size_t i = 0; i < entries.size(); ++i)
    {
        const int distance = std::abs(entries[i].width - 32) + std::abs(entries[i].height - 32);
        if (distance < bestDistance)
        {
            best = i;
            bestDistance = distance;
        }
    }
    return best;
}

// Bytes of one bitmap row: whole 32-bit words.
std::size_t RowBytes(int width, int bitsPerPixel)
{
    return ((static_cast<std::size_t>(width) * static_cast<std::size_t>(bitsPerPixel) + 31) / 32) * 4;
}

// The palette index or bit of pixel x in a row of 1, 4 or 8 bits per pixel.
unsigned PackedValue(const std::uint8_t* row, int x, int bitsPerPixel)
{
    const std::size_t bit = static_cast<std::size_t>(x) * static_cast<std::size_t>(bitsPerPixel);
    const unsigned byte = row[bit / 8];
    const unsigned shift = 8 - bitsPerPixel - static_cast<unsigned>(bit % 8);
    return (byte >> shift) & ((1u << bitsPerPixel) - 1);
}

// The layout of one bitmap image, checked against the bytes it has.
struct Dib
{
    int width = 0;
    int height = 0;
    int bitsPerPixel = 0;
    const std::uint8_t* palette = nullptr;
    std::size_t paletteSize = 0;
    const std::uint8_t* colour = nullptr;
    std::size_t colourStride = 0;
    const std::uint8_t* mask = nullptr;  // null when a 32-bit image leaves it out
    std::size_t maskStride = 0;
};

bool ReadDibLayout(const std::uint8_t* data, std::size_t size, Dib& dib, std::string& error)
{
    if (size < kInfoHeaderBytes)
    {
        error = "the image is shorter than its bitmap header";
        return false;
    }
    const std::uint32_t headerBytes = U32(data);
    if (headerBytes < kInfoHeaderBytes || headerBytes > size)
    {
        error = "the bitmap header size " + std::to_string(headerBytes) + " is not valid";
        return false;
    }
    const std::int32_t width = I32(data + 4);
    const std::int32_t doubleHeight = I32(data + 8);
    const int bitsPerPixel = U16(data + 14);
    const std::uint32_t compression = U32(data + 16);
    const std::uint32_t coloursUsed = U32(data + 32);
    if (width <= 0 || width > kMaxCursorSize || doubleHeight <= 0 || doubleHeight > 2 * kMaxCursorSize ||
        doubleHeight % 2 != 0)
    {
        error = "the image size " + std::to_string(width) + " x " + std::to_string(doubleHeight) +
                "/2 is not one of 1 to " + std::to_string(kMaxCursorSize) + " pixels a side";
        return false;
    }
    if (bitsPerPixel != 1 && bitsPerPixel != 4 && bitsPerPixel != 8 && bitsPerPixel != 24 && bitsPerPixel != 32)
    {
        error = std::to_string(bitsPerPixel) + " bits per pixel are not read (1, 4, 8, 24 and 32 are)";
        return false;
    }
    if (compression != kUncompressed)
    {
        error = "compressed bitmaps (compression " + std::to_string(compression) + ") are not read";
        return false;
    }
    dib.width = width;
    dib.height = doubleHeight / 2;
    dib.bitsPerPixel = bitsPerPixel;

    const std::size_t fullPalette = bitsPerPixel <= 8 ? (std::size_t{1} << bitsPerPixel) : 0;
    const std::size_t paletteSize = coloursUsed == 0 ? fullPalette : coloursUsed;
    if (paletteSize > 256 || (bitsPerPixel <= 8 && paletteSize > fullPalette))
    {
        error = "the palette of " + std::to_string(coloursUsed) + " colours is too long";
        return false;
    }
    dib.colourStride = RowBytes(dib.width, bitsPerPixel);
    dib.maskStride = RowBytes(dib.width, 1);
    const std::size_t paletteAt = headerBytes;
    const std::size_t colourAt = paletteAt + paletteSize * 4;
    const std::size_t maskAt = colourAt + dib.colourStride * static_cast<std::size_t>(dib.height);
    const std::size_t end = maskAt + dib.maskStride * static_cast<std::size_t>(dib.height);
    if (maskAt > size || (end > size && bitsPerPixel != 32))
    {
        error = "the image needs " + std::to_string(end) + " bytes and has " + std::to_string(size);
        return false;
    }
    dib.palette = bitsPerPixel <= 8 ? data + paletteAt : nullptr;
    dib.paletteSize = bitsPerPixel <= 8 ? paletteSize : 0;
    dib.colour = data + colourAt;
    dib.mask = end <= size ? data + maskAt : nullptr;
    return true;
}

// Writes straight RGBA, top row first, from the bottom-up colour rows and mask.
void DecodeDib(const Dib& dib, CursorImage& image)
{
    image.width = dib.width;
    image.height = dib.height;
    image.pixels.assign(static_cast<std::size_t>(dib.width) * static_cast<std::size_t>(dib.height) * 4, 0);
    bool anyAlpha = false;
    for (int y = 0; y < dib.height; ++y)
    {
        const std::size_t fileRow = static_cast<std::size_t>(dib.height - 1 - y);
        const std::uint8_t* colourRow = dib.colour + fileRow * dib.colourStride;
        const std::uint8_t* maskRow = dib.mask != nullptr ? dib.mask + fileRow * dib.maskStride : nullptr;
        for (int x = 0; x < dib.width; ++x)
        {
            std::uint8_t* out = &image.pixels[(static_cast<std::size_t>(y) * dib.width + x) * 4];
            const bool masked = maskRow != nullptr && PackedValue(maskRow, x, 1) != 0;
            if (dib.bitsPerPixel <= 8)
            {
                const unsigned index = PackedValue(colourRow, x, dib.bitsPerPixel);
                if (index < dib.paletteSize)
                {
                    const std::uint8_t* bgr = dib.palette + index * 4;
                    out[0] = bgr[2];
                    out[1] = bgr[1];
                    out[2] = bgr[0];
                }
                out[3] = masked ? 0 : 255;
                continue;
            }
            const std::size_t pixelBytes = static_cast<std::size_t>(dib.bitsPerPixel / 8);
            const std::uint8_t* bgr = colourRow + static_cast<std::size_t>(x) * pixelBytes;
            out[0] = bgr[2];
            out[1] = bgr[1];
            out[2] = bgr[0];
            if (dib.bitsPerPixel == 32)
            {
                out[3] = bgr[3];
                anyAlpha = anyAlpha || bgr[3] != 0;
            }
            else
            {
                out[3] = masked ? 0 : 255;
            }
        }
    }
    // A 32-bit image whose alpha is all zero was written for the mask alone.
    if (dib.bitsPerPixel == 32 && !anyAlpha)
    {
        for (int y = 0; y < dib.height; ++y)
        {
            const std::size_t fileRow = static_cast<std::size_t>(dib.height - 1 - y);
            for (int x = 0; x < dib.width; ++x)
            {
                const bool masked = dib.mask != nullptr && PackedValue(dib.mask + fileRow * dib.maskStride, x, 1) != 0;
                image.pixels[(static_cast<std::size_t>(y) * dib.width + x) * 4 + 3] = masked ? 0 : 255;
            }
        }
    }
}
}

bool ReadCursor(const std::uint8_t* data, std::size_t size, CursorImage& image, std::string& error)
{
    image = CursorImage{};
    if (data == nullptr || size < kHeaderBytes)
    {
        error = "the file is shorter than a cursor header";
        return false;
    }
    if (U16(data) != 0 || U16(data + 2) != kCursorType)
    {
        error = "the file is not a cursor (its header is not that of type 2)";
        return false;
    }
    const std::size_t count = U16(data + 4);
    if (count == 0)
    {
        error = "the cursor holds no images";
        return false;
    }
    if (kHeaderBytes + count * kEntryBytes > size)
    {
        error = "the directory of " + std::to_string(count) + " images runs past the end of the file";
        return false;
    }
    std::vector<Entry> entries;
    entries.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        entries.push_back(ReadEntry(data + kHeaderBytes + i * kEntryBytes));
    const Entry& entry = entries[PickEntry(entries)];
    if (std::uint64_t{entry.offset} + entry.bytes > size)
    {
        error = "the image at offset " + std::to_string(entry.offset) + " with " + std::to_string(entry.bytes) +
                " bytes runs past the end of the file";
        return false;
    }
    const std::uint8_t* imageData = data + entry.offset;
    if (entry.bytes >= kPngSignature.size() && std::equal(kPngSignature.begin(), kPngSignature.end(), imageData))
    {
        error = "PNG-compressed cursor images are not read; save the cursor as a bitmap";
        return false;
    }
    Dib dib;
    if (!ReadDibLayout(imageData, entry.bytes, dib, error))
        return false;
    if (entry.hotspotX >= dib.width || entry.hotspotY >= dib.height)
    {
        error = "the hotspot (" + std::to_string(entry.hotspotX) + ", " + std::to_string(entry.hotspotY) +
                ") lies outside the " + std::to_string(dib.width) + " x " + std::to_string(dib.height) + " image";
        return false;
    }
    DecodeDib(dib, image);
    image.hotspotX = entry.hotspotX;
    image.hotspotY = entry.hotspotY;
    return true;
}

bool ReadCursorFile(const std::string& path, CursorImage& image, std::string& error)
{
    image = CursorImage{};
    std::ifstream file(path, std::ios::binary);
    if (!file)
    {
        error = "the file cannot be opened";
        return false;
    }
    std::vector<std::uint8_t> bytes;
    std::array<char, 4096> block{};
    while (file.read(block.data(), block.size()) || file.gcount() > 0)
    {
        bytes.insert(bytes.end(), block.begin(), block.begin() + file.gcount());
        if (bytes.size() > kMaxCursorFileBytes)
        {
            error = "the file is larger than " + std::to_string(kMaxCursorFileBytes) + " bytes";
            return false;
        }
    }
    return ReadCursor(bytes.data(), bytes.size(), image, error);
}
}
