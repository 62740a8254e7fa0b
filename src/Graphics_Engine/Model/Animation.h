// Animation data of skinned models: key frames grouped into tracks, one track
// per animated bone, and tracks into named animations. A track read from a kbm
// file names its bone by index into the model's bones; a track read from a
// kba animation set names it by the bone's name, so that one set can drive
// any model whose bones carry those names.
#pragma once

#include "engine/Math/Point3D.h"
#include "engine/Math/Quaternion.h"
#include "engine/Math/Vector3D.h"

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Graphics
{
// The bits of KeyFrame::Sets: which parts a key sets.
inline constexpr std::size_t kKeyPosition = 0;
inline constexpr std::size_t kKeyScale = 1;
inline constexpr std::size_t kKeyRotation = 2;

// One key of a track: what it sets, at what time.
struct KeyFrame
{
    // Seconds from the start of the animation.
    float Time = 0.0f;
    Math::Point3D Position{0.0f, 0.0f, 0.0f};
    Math::Vector3D Scale{1.0f, 1.0f, 1.0f};
    Math::Quaternion Rotation;
    // Bits kKeyPosition, kKeyScale and kKeyRotation: whether the key sets that part.
    std::bitset<3> Sets;
};

// The keys of one bone.
struct AnimationTrack
{
    // The bone, by index into the model's bones (kbm tracks).
    std::uint32_t BoneIndex = 0;
    // The bone, by name (kba tracks).
    std::string BoneName;
    std::vector<KeyFrame> Keys;
};

// A named clip: one track per animated bone.
struct Animation
{
    std::string Name;
    std::vector<AnimationTrack> Tracks;
};
}
