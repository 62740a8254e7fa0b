// Fuzz target of the kba animation-set reader: arbitrary bytes go to ReadKba.
// The reader must neither crash, hang nor read past the bytes it is given; a
// failed read must leave no animations; and what it holds must stay within a
// small multiple of the file's size. Build with ./setup.sh fuzz.

#include "ModelFootprint.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // A copy of exactly `size` bytes, so that AddressSanitizer sees any read past the end.
    const std::vector<std::uint8_t> bytes(data, data + size);
    std::vector<Graphics::Animation> animations;
    std::string error;
    const bool read = Graphics::ReadKba(bytes.empty() ? nullptr : bytes.data(), bytes.size(), animations, error);
    if (ModelFuzz::Footprint(animations) > ModelFuzz::Allowed(size))
        std::abort();
    if (!read && (!animations.empty() || error.empty()))
        std::abort();
    return 0;
}
