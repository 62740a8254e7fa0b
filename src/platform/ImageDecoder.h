// ImageDecoder: turns encoded image files (PNG, JPEG, BMP, TGA, GIF, PSD, HDR,
// PIC, PNM) into 32-bit RGBA pixels, and scales an image down so that it fits
// the largest texture side. Decoding is stb_image's; its implementation is
// compiled privately (static) into this one file, so it never clashes with
// another copy of stb in the same program. Bad bytes never crash: they give an
// empty image and the decoder's reason. Images over kLargestDecodedPixels
// pixels are refused before any pixel is decoded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Platform
{
// The longest side a texture may have; larger images are scaled down to it.
inline constexpr int kLargestTextureSide = 16384;
// The most pixels a decoded image may hold (1 GiB of RGBA).
inline constexpr std::int64_t kLargestDecodedPixels = std::int64_t{1} << 28;

// RGBA pixels, four bytes each, rows packed, top row first.
struct DecodedImage
{
    int width = 0;
    int height = 0;
    // width * height * 4 bytes; empty when decoding failed.
    std::vector<std::uint8_t> pixels;
    // Why decoding failed; empty on success.
    std::string error;
    // True when the image holds pixels.
    bool Valid() const { return width > 0 && height > 0 && !pixels.empty(); }
};

// Decodes an encoded image held in memory to RGBA.
DecodedImage DecodeImage(const std::uint8_t* data, std::size_t size);
// Reads and decodes an image file to RGBA.
DecodedImage DecodeImageFile(const std::string& path);
// Scales the image down, keeping its aspect, so its longest side is at most `largestSide`; a smaller image
// comes back as it is. Colours are filtered as sRGB when `srgb` is set, as linear values otherwise.
DecodedImage FitImage(DecodedImage image, bool srgb, int largestSide = kLargestTextureSide);
}
