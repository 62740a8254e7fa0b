// Fuzz target of the kbm model reader: arbitrary bytes go to ReadKbm as the
// contents of a model file. The reader must neither crash, hang nor read past
// the bytes it is given; a failed read must leave no geometry; a model it
// accepts must have every index inside its vertices and every bone's parent
// before it; and what it holds must stay within a small multiple of the
// file's size (a count of 0xFFFFFFFF must not allocate gigabytes). Build with
// ./setup.sh fuzz.

#include "ModelFootprint.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // A copy of exactly `size` bytes, so that AddressSanitizer sees any read past the end.
    const std::vector<std::uint8_t> bytes(data, data + size);
    Graphics::ModelFile file;
    std::string error;
    const bool read = Graphics::ReadKbm(bytes.empty() ? nullptr : bytes.data(), bytes.size(), file, error);
    if (ModelFuzz::Footprint(file) > ModelFuzz::Allowed(size))
        std::abort();
    if (!read)
    {
        if (!file.Vertices.empty() || !file.Indices.empty() || !file.Bones.empty() || error.empty())
            std::abort();
        return 0;
    }
    for (std::uint32_t index : file.Indices)
        if (index >= file.Vertices.size())
            std::abort();
    for (std::size_t i = 0; i < file.Bones.size(); ++i)
        if (file.Bones[i].ParentIndex < -1 || file.Bones[i].ParentIndex >= static_cast<std::int32_t>(i))
            std::abort();
    // A static model writes back to the very bytes it was read from (up to what follows it);
    // skinned ones may differ where matrix values were snapped or key masks had higher bits.
    if (file.Type == Graphics::ModelType::Static)
    {
        const std::vector<std::uint8_t> written = Graphics::WriteKbm(file);
        if (written.size() > bytes.size() || !std::equal(written.begin(), written.end(), bytes.begin()))
            std::abort();
    }
    return 0;
}
