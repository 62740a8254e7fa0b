#include "platform/ImageDecoder.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>

// stb_image and stb_image_resize are compiled here with every function static.
#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_RESIZE_STATIC
#define STB_IMAGE_RESIZE_IMPLEMENTATION
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"
#pragma GCC diagnostic ignored "-Wsign-compare"
#pragma GCC diagnostic ignored "-Wimplicit-fallthrough"
#include <stb/stb_image.h>
#include <stb/stb_image_resize.h>
#pragma GCC diagnostic pop

namespace Platform
{
namespace
{
DecodedImage Failed(std::string reason)
{
    DecodedImage image;
    image.error = std::move(reason);
    return image;
}
}

DecodedImage DecodeImage(const std::uint8_t* data, std::size_t size)
{
    if (data == nullptr || size == 0)
        return Failed("no bytes");
    if (size > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        return Failed("too many bytes");
    const int length = static_cast<int>(size);
    int width = 0;
    int height = 0;
    int channels = 0;
    if (stbi_info_from_memory(data, length, &width, &height, &channels) == 0)
        return Failed(stbi_failure_reason() ? stbi_failure_reason() : "unknown format");
    if (width <= 0 || height <= 0 || std::int64_t{width} * height > kLargestDecodedPixels)
        return Failed("image too large");

    stbi_uc* pixels = stbi_load_from_memory(data, length, &width, &height, &channels, 4);
    if (pixels == nullptr)
        return Failed(stbi_failure_reason() ? stbi_failure_reason() : "cannot decode");
    DecodedImage image;
    image.width = width;
    image.height = height;
    image.pixels.assign(pixels, pixels + static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
    stbi_image_free(pixels);
    return image;
}

DecodedImage DecodeImageFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return Failed("cannot open file");
    const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    return DecodeImage(bytes.data(), bytes.size());
}

DecodedImage FitImage(DecodedImage image, bool srgb, int largestSide)
{
    const int longest = std::max(image.width, image.height);
    if (!image.Valid() || largestSide <= 0 || longest <= largestSide)
        return image;
    const double scale = static_cast<double>(largestSide) / longest;
    const auto side = [&](int size) {
        return std::clamp(static_cast<int>(std::lround(size * scale)), 1, largestSide);
    };
    DecodedImage fitted;
    fitted.width = side(image.width);
    fitted.height = side(image.height);
    fitted.pixels.resize(static_cast<std::size_t>(fitted.width) * static_cast<std::size_t>(fitted.height) * 4);
    const int done = stbir_resize_uint8_generic(image.pixels.data(), image.width, image.height, image.width * 4,
                                                fitted.pixels.data(), fitted.width, fitted.height, fitted.width * 4,
                                                4, 3, 0, STBIR_EDGE_CLAMP, STBIR_FILTER_DEFAULT,
                                                srgb ? STBIR_COLORSPACE_SRGB : STBIR_COLORSPACE_LINEAR, nullptr);
    if (done == 0)
        return Failed("cannot scale the image down");
    return fitted;
}
}
