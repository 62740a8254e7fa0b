// make_font_image: draws the GUI's font atlas by the recipe of
// src/Graphics_Engine/Material/Texture/GuiFontAtlas.h and writes it as a PNG
// file (RGBA, white with the glyph coverage in alpha, no sRGB chunk). The build
// runs it and embeds the file into the program.
//
//   make_font_image OUTPUT.png
#include "Graphics_Engine/Material/Texture/GuiFontAtlas.h"

#include <stb/stb_image_write.h>

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 2)
    {
        std::fprintf(stderr, "usage: make_font_image OUTPUT.png\n");
        return 2;
    }
    ImFontAtlas atlas;
    Graphics::BuildGuiFontAtlas(atlas);
    unsigned char* pixels = nullptr;
    int width = 0;
    int height = 0;
    atlas.GetTexDataAsRGBA32(&pixels, &width, &height);
    if (pixels == nullptr || width <= 0 || height <= 0)
    {
        std::fprintf(stderr, "make_font_image: the font atlas could not be built\n");
        return 1;
    }
    if (stbi_write_png(argv[1], width, height, 4, pixels, width * 4) == 0)
    {
        std::fprintf(stderr, "make_font_image: cannot write %s\n", argv[1]);
        return 1;
    }
    return 0;
}
