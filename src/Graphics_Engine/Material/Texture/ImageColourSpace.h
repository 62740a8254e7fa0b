// ImageColourSpace: decides, from an encoded image's own bytes, whether its
// colours are sRGB-encoded, so that the texture is made in an sRGB format and
// sampling yields linear values. The rule: a PNG is sRGB when its chunks hold
// an "sRGB" chunk (the rendering intent); a JPEG is sRGB when its EXIF data
// carries the ColorSpace tag (0xA001) with the value 1; every other image is
// linear. Every read is bounds-checked: truncated or garbage bytes answer
// linear and never read past the end.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Graphics
{
// How an image's colour values are encoded.
enum class ImageColourSpace
{
    Linear,
    Srgb,
};

// True when the bytes are a PNG whose chunks, walked from the signature up to IEND, hold an "sRGB" chunk.
bool PngHasSrgbChunk(const std::uint8_t* data, std::size_t size);
// True when the bytes are a JPEG with an EXIF segment whose ColorSpace tag (0xA001) is 1.
bool JpegExifSaysSrgb(const std::uint8_t* data, std::size_t size);
// The colour space of an encoded image by the rule above.
ImageColourSpace DetectColourSpace(const std::uint8_t* data, std::size_t size);
}
