// GuiFontImage: the GUI font image built into the program, as PNG bytes. At
// build time tools/font_image/make_font_image draws the atlas of
// GuiFontAtlas.h and writes it as a PNG (linear, no sRGB chunk); CMake turns
// the file into a generated source that defines these bytes, so the program
// needs no font file on disk. The texture manager decodes them into the font's
// own texture.
#pragma once

#include <cstdint>
#include <span>

namespace Graphics
{
// The PNG bytes of the GUI font atlas.
std::span<const std::uint8_t> GuiFontImage();
}
