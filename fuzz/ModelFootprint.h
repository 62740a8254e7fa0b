// What a read model or animation set holds in memory, for the fuzz targets of
// the model readers: everything the reader allocated is kept in its result,
// so the footprint bounds what reading a file of a given size can cost.
#pragma once

#include "Graphics_Engine/Model/ModelFile.h"

#include <cstddef>

namespace ModelFuzz
{
// Bytes held by the animations and everything under them.
inline std::size_t Footprint(const std::vector<Graphics::Animation>& animations)
{
    std::size_t bytes = animations.capacity() * sizeof(Graphics::Animation);
    for (const Graphics::Animation& animation : animations)
    {
        bytes += animation.Name.capacity() + animation.Tracks.capacity() * sizeof(Graphics::AnimationTrack);
        for (const Graphics::AnimationTrack& track : animation.Tracks)
            bytes += track.BoneName.capacity() + track.Keys.capacity() * sizeof(Graphics::KeyFrame);
    }
    return bytes;
}

// Bytes held by a read model file.
inline std::size_t Footprint(const Graphics::ModelFile& file)
{
    std::size_t bytes = file.Vertices.capacity() * sizeof(Graphics::Vertex) +
                        file.Indices.capacity() * sizeof(std::uint32_t) +
                        file.Bones.capacity() * sizeof(Graphics::ModelFileBone);
    for (const Graphics::ModelFileBone& bone : file.Bones)
        bytes += bone.Name.capacity();
    return bytes + Footprint(file.Animations);
}

// The most a file of `size` bytes may cost: each record of the file is at least 8 bytes and
// none takes more than 16 times its file bytes in memory, plus small strings' own room.
inline std::size_t Allowed(std::size_t size)
{
    return 16 * size + 4096;
}
}
