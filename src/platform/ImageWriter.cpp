#include "platform/ImageWriter.h"

// The writer's functions stay private to this file, so that another user of the header links too.
#define STB_IMAGE_WRITE_STATIC
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image_write.h>

namespace Platform
{
bool WritePng(const std::string& path, const std::vector<std::uint8_t>& rgba, int width, int height)
{
    if (width <= 0 || height <= 0 ||
        rgba.size() != static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4u)
        return false;
    return stbi_write_png(path.c_str(), width, height, 4, rgba.data(), width * 4) != 0;
}
}
