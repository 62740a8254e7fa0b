// ImageWriter: writes pictures to disk for people to look at (saved frames,
// bug reports). Pixels are RGBA8, rows packed, top row first.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Platform
{
// Writes `rgba` (width * height * 4 bytes) as a PNG file at `path`; false when the size does not
// match or the file cannot be written.
bool WritePng(const std::string& path, const std::vector<std::uint8_t>& rgba, int width, int height);
}
