// GuiFontAtlas: the one recipe of the GUI's font atlas, shared by the build
// tool that draws the font image built into the program
// (tools/font_image/make_font_image.cpp) and by the GUI stage, which rebuilds
// the same atlas at start-up to learn each glyph's place in it. Both must
// follow this recipe exactly, with the same Dear ImGui (1.86, Debian's
// libimgui-dev): then the glyph coordinates the GUI computes fall on the
// pixels of the built-in image that the texture manager loaded, and the
// image never has to be uploaded from ImGui's own buffer.
//
// The recipe: ImGui's built-in default font (ProggyClean, 13 pixels), added
// with a default ImFontConfig; no atlas flags (the mouse cursors and baked
// lines are in it, and the height is rounded up to a power of two); the
// texture width left to ImGui (TexDesiredWidth 0); one pixel of padding
// between glyphs (TexGlyphPadding 1). The pixels are taken with
// GetTexDataAsRGBA32: white, with the coverage in alpha.
#pragma once

#include <imgui.h>

namespace Graphics
{
// Fills an empty atlas with the GUI font by the recipe above and builds it.
inline void BuildGuiFontAtlas(ImFontAtlas& atlas)
{
    atlas.Clear();
    atlas.Flags = ImFontAtlasFlags_None;
    atlas.TexDesiredWidth = 0;
    atlas.TexGlyphPadding = 1;
    atlas.AddFontDefault();
    atlas.Build();
}
}
