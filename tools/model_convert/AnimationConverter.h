// The animation clips of an imported scene as the engine's animations: one
// track per animated bone, its position, scale and rotation keys merged by
// time into key frames that set the parts keyed at that time. Times are in
// seconds (assimp's ticks divided by the clip's ticks per second, 25 when the
// file gives none). Tracks carry both the bone's index (for kbm files) and its
// name (for kba sets).
#pragma once

#include "Graphics_Engine/Model/Animation.h"
#include "model_convert/Skeleton.h"

#include <assimp/scene.h>

#include <string>
#include <vector>

namespace ModelTools
{
// The scene's clips over the skeleton's bones. Channels of nodes that are no
// bone are left out, each named in `notes`.
std::vector<Graphics::Animation> ConvertAnimations(const aiScene& scene, const Skeleton& skeleton,
                                                   std::vector<std::string>& notes);

// A clip's channel merged by time into key frames of the given times per tick.
std::vector<Graphics::KeyFrame> MergeKeys(const aiNodeAnim& channel, double secondsPerTick);
}
