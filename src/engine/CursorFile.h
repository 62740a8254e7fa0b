// CursorFile: a reader of Windows cursor files (".cur"). A cursor file is an
// icon directory of type 2: a six-byte header, one sixteen-byte entry per image
// (size, hotspot, byte count, offset), and each image as a device-independent
// bitmap without a file header: colour ("XOR") rows at 1, 4, 8, 24 or 32 bits
// per pixel, bottom row first, then a 1-bit transparency ("AND") mask. The
// reader picks the image nearest 32x32 and gives it as straight RGBA, top row
// first, with its hotspot. PNG-compressed images are refused, as are images
// larger than 256x256 and every size, count or offset that points outside the
// file: the reason comes back as text, and nothing read is trusted before it
// is checked against the bytes there are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Engine
{
// One cursor image, ready for the platform.
struct CursorImage
{
    // Size in pixels.
    int width = 0;
    int height = 0;
    // The pixel that points, from the top left.
    int hotspotX = 0;
    int hotspotY = 0;
    // width * height pixels of R, G, B, A bytes (alpha not premultiplied), top row first.
    std::vector<std::uint8_t> pixels;
};

// Largest width or height of a cursor image the reader accepts.
inline constexpr int kMaxCursorSize = 256;
// Largest cursor file the reader loads from disk.
inline constexpr std::size_t kMaxCursorFileBytes = 4u << 20;

// Reads a cursor from the bytes of a ".cur" file. False, with the reason in `error`, if they hold none.
bool ReadCursor(const std::uint8_t* data, std::size_t size, CursorImage& image, std::string& error);

// Reads a cursor from a ".cur" file on disk. False, with the reason in `error`, if there is none.
bool ReadCursorFile(const std::string& path, CursorImage& image, std::string& error);
}
