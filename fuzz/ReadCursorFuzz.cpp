// Fuzz target of the cursor reader: arbitrary bytes go to ReadCursor as the
// contents of a ".cur" file. The reader must neither crash, hang nor read past
// the bytes it is given, whatever the input; an image it accepts must hold
// exactly width x height RGBA pixels with the hotspot inside. Build with
// ./setup.sh fuzz.

#include "engine/CursorFile.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // A copy of exactly `size` bytes, so that AddressSanitizer sees any read past the end.
    const std::vector<std::uint8_t> bytes(data, data + size);
    Engine::CursorImage image;
    std::string error;
    if (!Engine::ReadCursor(bytes.empty() ? nullptr : bytes.data(), bytes.size(), image, error))
        return 0;
    const bool sane = image.width > 0 && image.width <= Engine::kMaxCursorSize && image.height > 0 &&
                      image.height <= Engine::kMaxCursorSize &&
                      image.pixels.size() == static_cast<std::size_t>(image.width) * image.height * 4 &&
                      image.hotspotX >= 0 && image.hotspotX < image.width && image.hotspotY >= 0 &&
                      image.hotspotY < image.height;
    if (!sane)
        std::abort();
    return 0;
}
