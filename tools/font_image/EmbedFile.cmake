# Writes a C++ source that holds the bytes of a file, for the GUI font image
# built into the program:
#   cmake -DINPUT=font.png -DOUTPUT=GuiFontImage.cpp -P EmbedFile.cmake
file(READ "${INPUT}" hex HEX)
string(LENGTH "${hex}" length)
if(length EQUAL 0)
  message(FATAL_ERROR "EmbedFile: ${INPUT} is empty")
endif()
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
# Sixteen bytes a line.
string(REPEAT "0x[0-9a-f][0-9a-f]," 16 line)
string(REGEX REPLACE "(${line})" "\\1\n    " bytes "${bytes}")
file(WRITE "${OUTPUT}.tmp" "// Generated at build time by tools/font_image/EmbedFile.cmake from the GUI font image; do not edit.
#include \"Graphics_Engine/Material/Texture/GuiFontImage.h\"

namespace Graphics
{
namespace
{
const std::uint8_t kGuiFontImage[] = {
    ${bytes}
};
}

std::span<const std::uint8_t> GuiFontImage()
{
    return kGuiFontImage;
}
}
")
file(COPY_FILE "${OUTPUT}.tmp" "${OUTPUT}" ONLY_IF_DIFFERENT)
file(REMOVE "${OUTPUT}.tmp")
