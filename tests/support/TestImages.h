// Encoded images made in memory for the image and texture tests: PNG files
// written chunk by chunk (with or without an "sRGB" chunk, pixels stored
// uncompressed), an EXIF segment carrying a ColorSpace tag, and its insertion
// into a JPEG. They are built here rather than kept as files so that each test
// shows what its input holds.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <vector>

namespace TestImages
{
using Bytes = std::vector<std::uint8_t>;

// A width x height RGBA image of one colour.
inline Bytes Solid(int width, int height, std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a = 255)
{
    Bytes pixels;
    pixels.reserve(static_cast<std::size_t>(width) * height * 4);
    for (int i = 0; i < width * height; ++i)
        pixels.insert(pixels.end(), {r, g, b, a});
    return pixels;
}

inline void PutU32(Bytes& out, std::uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        out.push_back(static_cast<std::uint8_t>(value >> shift));
}

inline std::uint32_t Crc32(const std::uint8_t* data, std::size_t size)
{
    std::uint32_t crc = 0xFFFFFFFFu;
    for (std::size_t i = 0; i < size; ++i)
    {
        crc ^= data[i];
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return crc ^ 0xFFFFFFFFu;
}

// Appends a PNG chunk: length, type, data, CRC.
inline void PutChunk(Bytes& out, const char* type, const Bytes& data)
{
    PutU32(out, static_cast<std::uint32_t>(data.size()));
    const std::size_t start = out.size();
    out.insert(out.end(), type, type + 4);
    out.insert(out.end(), data.begin(), data.end());
    PutU32(out, Crc32(out.data() + start, out.size() - start));
}

// A zlib stream holding `raw` in stored (uncompressed) blocks.
inline Bytes StoredZlib(const Bytes& raw)
{
    Bytes out = {0x78, 0x01};
    std::size_t offset = 0;
    do
    {
        const std::size_t length = std::min<std::size_t>(raw.size() - offset, 65535);
        const bool last = offset + length == raw.size();
        out.push_back(last ? 1 : 0);
        out.push_back(static_cast<std::uint8_t>(length));
        out.push_back(static_cast<std::uint8_t>(length >> 8));
        out.push_back(static_cast<std::uint8_t>(~length));
        out.push_back(static_cast<std::uint8_t>(~length >> 8));
        out.insert(out.end(), raw.begin() + static_cast<std::ptrdiff_t>(offset),
                   raw.begin() + static_cast<std::ptrdiff_t>(offset + length));
        offset += length;
    } while (offset < raw.size());
    std::uint32_t a = 1;
    std::uint32_t b = 0;
    for (std::uint8_t byte : raw)
    {
        a = (a + byte) % 65521;
        b = (b + a) % 65521;
    }
    PutU32(out, b << 16 | a);
    return out;
}

// An RGBA PNG of the pixels (rows packed, top first); with `srgb`, an sRGB chunk (perceptual intent)
// stands before the pixel data.
inline Bytes Png(int width, int height, const Bytes& rgba, bool srgb)
{
    Bytes out = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    Bytes header;
    PutU32(header, static_cast<std::uint32_t>(width));
    PutU32(header, static_cast<std::uint32_t>(height));
    header.insert(header.end(), {8, 6, 0, 0, 0});
    PutChunk(out, "IHDR", header);
    if (srgb)
        PutChunk(out, "sRGB", {0});
    Bytes raw;
    const std::size_t row = static_cast<std::size_t>(width) * 4;
    for (int y = 0; y < height; ++y)
    {
        raw.push_back(0);
        raw.insert(raw.end(), rgba.begin() + static_cast<std::ptrdiff_t>(y * row),
                   rgba.begin() + static_cast<std::ptrdiff_t>((y + 1) * row));
    }
    PutChunk(out, "IDAT", StoredZlib(raw));
    PutChunk(out, "IEND", {});
    return out;
}

// A small opaque grey PNG.
inline Bytes GreyPng(bool srgb, int width = 4, int height = 4)
{
    return Png(width, height, Solid(width, height, 128, 128, 128), srgb);
}

// The TIFF block of an EXIF segment: IFD0 with only the Exif IFD pointer, and an Exif IFD with ColorSpace
// (0xA001, SHORT) set to `colorSpace`, in big-endian ("MM") or little-endian ("II") order.
inline Bytes ExifTiff(std::uint16_t colorSpace, bool bigEndian)
{
    Bytes out;
    auto u16 = [&](std::uint32_t v) {
        if (bigEndian)
            out.insert(out.end(), {static_cast<std::uint8_t>(v >> 8), static_cast<std::uint8_t>(v)});
        else
            out.insert(out.end(), {static_cast<std::uint8_t>(v), static_cast<std::uint8_t>(v >> 8)});
    };
    auto u32 = [&](std::uint32_t v) {
        if (bigEndian)
        {
            u16(v >> 16);
            u16(v & 0xFFFF);
        }
        else
        {
            u16(v & 0xFFFF);
            u16(v >> 16);
        }
    };
    out.insert(out.end(), bigEndian ? std::initializer_list<std::uint8_t>{'M', 'M'}
                                    : std::initializer_list<std::uint8_t>{'I', 'I'});
    u16(42);
    u32(8);
    // IFD0 at 8: one entry, the Exif IFD pointer (LONG) to offset 26.
    u16(1);
    u16(0x8769);
    u16(4);
    u32(1);
    u32(26);
    u32(0);
    // Exif IFD at 26: ColorSpace (SHORT).
    u16(1);
    u16(0xA001);
    u16(3);
    u32(1);
    u16(colorSpace);
    u16(0);
    u32(0);
    return out;
}

// An APP1 EXIF segment (marker, length, "Exif\0\0", TIFF block).
inline Bytes ExifSegment(const Bytes& tiff)
{
    Bytes out = {0xFF, 0xE1};
    const std::size_t length = 2 + 6 + tiff.size();
    out.push_back(static_cast<std::uint8_t>(length >> 8));
    out.push_back(static_cast<std::uint8_t>(length));
    out.insert(out.end(), {'E', 'x', 'i', 'f', 0, 0});
    out.insert(out.end(), tiff.begin(), tiff.end());
    return out;
}

// The JPEG with a segment inserted right after its start-of-image marker.
inline Bytes WithSegment(const Bytes& jpeg, const Bytes& segment)
{
    Bytes out(jpeg.begin(), jpeg.begin() + 2);
    out.insert(out.end(), segment.begin(), segment.end());
    out.insert(out.end(), jpeg.begin() + 2, jpeg.end());
    return out;
}

// Header segments of a JPEG (start of image, the EXIF segment, start of scan), without picture data.
inline Bytes JpegHeaderWithExif(std::uint16_t colorSpace, bool bigEndian = true)
{
    Bytes jpeg = {0xFF, 0xD8};
    const Bytes exif = ExifSegment(ExifTiff(colorSpace, bigEndian));
    jpeg.insert(jpeg.end(), exif.begin(), exif.end());
    jpeg.insert(jpeg.end(), {0xFF, 0xDA, 0x00, 0x02, 0xFF, 0xD9});
    return jpeg;
}
}
