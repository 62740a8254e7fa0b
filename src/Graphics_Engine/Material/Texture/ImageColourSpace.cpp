#include "Graphics_Engine/Material/Texture/ImageColourSpace.h"

#include <cstring>

namespace Graphics
{
namespace
{
// A bounds-checked view of bytes; reads outside it fail instead of reading on.
class ByteReader
{
public:
    ByteReader(const std::uint8_t* data, std::size_t size) : m_Data(data), m_Size(data ? size : 0) {}

    std::size_t Size() const { return m_Size; }
    // True when `count` bytes stand at `offset`.
    bool Has(std::size_t offset, std::size_t count) const { return offset <= m_Size && count <= m_Size - offset; }
    // True when the bytes at `offset` are `text` (without its terminator).
    bool Matches(std::size_t offset, const char* text) const
    {
        const std::size_t length = std::strlen(text);
        return Has(offset, length) && std::memcmp(m_Data + offset, text, length) == 0;
    }
    bool U8(std::size_t offset, std::uint32_t& out) const
    {
        if (!Has(offset, 1))
            return false;
        out = m_Data[offset];
        return true;
    }
    bool U16(std::size_t offset, bool bigEndian, std::uint32_t& out) const
    {
        if (!Has(offset, 2))
            return false;
        const std::uint32_t a = m_Data[offset];
        const std::uint32_t b = m_Data[offset + 1];
        out = bigEndian ? (a << 8 | b) : (b << 8 | a);
        return true;
    }
    bool U32(std::size_t offset, bool bigEndian, std::uint32_t& out) const
    {
        if (!Has(offset, 4))
            return false;
        std::uint32_t value = 0;
        for (int i = 0; i < 4; ++i)
        {
            const std::uint32_t byte = m_Data[offset + (bigEndian ? i : 3 - i)];
            value = value << 8 | byte;
        }
        out = value;
        return true;
    }
    // The bytes from `offset` on, `count` long; the caller checked Has.
    ByteReader Part(std::size_t offset, std::size_t count) const { return {m_Data + offset, count}; }

private:
    const std::uint8_t* m_Data;
    std::size_t m_Size;
};

constexpr std::uint8_t kPngSignature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

constexpr std::uint32_t kExifIfdPointerTag = 0x8769;
constexpr std::uint32_t kColorSpaceTag = 0xA001;
constexpr std::uint32_t kShortType = 3;
// More IFD entries than a real file carries; a count above it is garbage.
constexpr std::uint32_t kMostIfdEntries = 4096;

// Finds a tag in the IFD at `offset` of the TIFF block; gives its entry's offset.
bool FindIfdEntry(const ByteReader& tiff, std::size_t offset, bool bigEndian, std::uint32_t tag, std::size_t& entry)
{
    std::uint32_t count = 0;
    if (!tiff.U16(offset, bigEndian, count) || count > kMostIfdEntries)
        return false;
    for (std::uint32_t i = 0; i < count; ++i)
    {
        const std::size_t at = offset + 2 + std::size_t{i} * 12;
        std::uint32_t entryTag = 0;
        if (!tiff.U16(at, bigEndian, entryTag) || !tiff.Has(at, 12))
            return false;
        if (entryTag == tag)
        {
            entry = at;
            return true;
        }
    }
    return false;
}

// Reads the ColorSpace tag from the TIFF block of an EXIF segment.
bool ExifColorSpaceIsSrgb(const ByteReader& tiff)
{
    bool bigEndian = false;
    if (tiff.Matches(0, "MM"))
        bigEndian = true;
    else if (!tiff.Matches(0, "II"))
        return false;
    std::uint32_t magic = 0;
    std::uint32_t ifd0 = 0;
    if (!tiff.U16(2, bigEndian, magic) || magic != 42 || !tiff.U32(4, bigEndian, ifd0))
        return false;
    std::size_t pointer = 0;
    std::uint32_t exifIfd = 0;
    if (!FindIfdEntry(tiff, ifd0, bigEndian, kExifIfdPointerTag, pointer) || !tiff.U32(pointer + 8, bigEndian, exifIfd))
        return false;
    std::size_t colorSpace = 0;
    std::uint32_t type = 0;
    std::uint32_t value = 0;
    if (!FindIfdEntry(tiff, exifIfd, bigEndian, kColorSpaceTag, colorSpace) ||
        !tiff.U16(colorSpace + 2, bigEndian, type) || type != kShortType || !tiff.U16(colorSpace + 8, bigEndian, value))
        return false;
    return value == 1;
}
}

bool PngHasSrgbChunk(const std::uint8_t* data, std::size_t size)
{
    const ByteReader png(data, size);
    if (!png.Has(0, sizeof(kPngSignature)) || std::memcmp(data, kPngSignature, sizeof(kPngSignature)) != 0)
        return false;
    std::size_t offset = sizeof(kPngSignature);
    std::uint32_t length = 0;
    // Each chunk: length, type, data, CRC.
    while (png.U32(offset, true, length) && png.Has(offset + 4, 4))
    {
        if (length > 0x7FFFFFFFu || !png.Has(offset + 8, length))
            return false;
        if (png.Matches(offset + 4, "sRGB"))
            return true;
        if (png.Matches(offset + 4, "IEND"))
            return false;
        offset += 12 + std::size_t{length};
    }
    return false;
}

bool JpegExifSaysSrgb(const std::uint8_t* data, std::size_t size)
{
    const ByteReader jpeg(data, size);
    std::uint32_t first = 0;
    std::uint32_t second = 0;
    if (!jpeg.U8(0, first) || !jpeg.U8(1, second) || first != 0xFF || second != 0xD8)
        return false;
    std::size_t offset = 2;
    std::uint32_t byte = 0;
    while (jpeg.U8(offset, byte))
    {
        if (byte != 0xFF)
            return false;
        std::uint32_t marker = 0xFF;
        // Markers may be padded with any number of 0xFF bytes.
        while (marker == 0xFF)
            if (!jpeg.U8(++offset, marker))
                return false;
        ++offset;
        if (marker == 0xD8 || marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7))
            continue;
        // The end of the image or the start of the picture data: the metadata is behind us.
        if (marker == 0xD9 || marker == 0xDA)
            return false;
        std::uint32_t length = 0;
        if (!jpeg.U16(offset, true, length) || length < 2 || !jpeg.Has(offset, length))
            return false;
        if (marker == 0xE1 && length >= 8 && jpeg.Matches(offset + 2, "Exif") && jpeg.Has(offset + 6, 2) &&
            data[offset + 6] == 0 && data[offset + 7] == 0)
        {
            if (ExifColorSpaceIsSrgb(jpeg.Part(offset + 8, length - 8)))
                return true;
        }
        offset += length;
    }
    return false;
}

ImageColourSpace DetectColourSpace(const std::uint8_t* data, std::size_t size)
{
    if (PngHasSrgbChunk(data, size) || JpegExifSaysSrgb(data, size))
        return ImageColourSpace::Srgb;
    return ImageColourSpace::Linear;
}
}
