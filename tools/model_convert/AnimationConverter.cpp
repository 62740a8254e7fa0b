#include "model_convert/AnimationConverter.h"

#include <map>

namespace ModelTools
{
namespace
{
// assimp's own default when a file gives no rate.
constexpr double kDefaultTicksPerSecond = 25.0;
}

std::vector<Graphics::KeyFrame> MergeKeys(const aiNodeAnim& channel, double secondsPerTick)
{
    std::map<double, Graphics::KeyFrame> byTime;
    auto keyAt = [&](double ticks) -> Graphics::KeyFrame& {
        Graphics::KeyFrame& key = byTime[ticks];
        key.Time = static_cast<float>(ticks * secondsPerTick);
        return key;
    };
    for (unsigned i = 0; i < channel.mNumPositionKeys; ++i)
    {
        const aiVectorKey& source = channel.mPositionKeys[i];
        Graphics::KeyFrame& key = keyAt(source.mTime);
        key.Position = Math::Point3D(source.mValue.x, source.mValue.y, source.mValue.z);
        key.Sets.set(Graphics::kKeyPosition);
    }
    for (unsigned i = 0; i < channel.mNumScalingKeys; ++i)
    {
        const aiVectorKey& source = channel.mScalingKeys[i];
        Graphics::KeyFrame& key = keyAt(source.mTime);
        key.Scale = Math::Vector3D(source.mValue.x, source.mValue.y, source.mValue.z);
        key.Sets.set(Graphics::kKeyScale);
    }
    for (unsigned i = 0; i < channel.mNumRotationKeys; ++i)
    {
        const aiQuatKey& source = channel.mRotationKeys[i];
        Graphics::KeyFrame& key = keyAt(source.mTime);
        key.Rotation = Math::Quaternion(source.mValue.x, source.mValue.y, source.mValue.z, source.mValue.w);
        key.Sets.set(Graphics::kKeyRotation);
    }
    std::vector<Graphics::KeyFrame> keys;
    keys.reserve(byTime.size());
    for (auto& [ticks, key] : byTime)
        keys.push_back(key);
    return keys;
}

std::vector<Graphics::Animation> ConvertAnimations(const aiScene& scene, const Skeleton& skeleton,
                                                   std::vector<std::string>& notes)
{
    std::vector<Graphics::Animation> animations;
    for (unsigned a = 0; a < scene.mNumAnimations; ++a)
    {
        const aiAnimation& source = *scene.mAnimations[a];
        Graphics::Animation& animation = animations.emplace_back();
        animation.Name = source.mName.length ? source.mName.C_Str() : "Animation" + std::to_string(a);
        const double ticksPerSecond = source.mTicksPerSecond > 0.0 ? source.mTicksPerSecond : kDefaultTicksPerSecond;
        for (unsigned c = 0; c < source.mNumChannels; ++c)
        {
            const aiNodeAnim& channel = *source.mChannels[c];
            const auto bone = skeleton.IndexByName.find(channel.mNodeName.C_Str());
            if (bone == skeleton.IndexByName.end())
            {
                notes.push_back("animation \"" + animation.Name + "\" moves node \"" + channel.mNodeName.C_Str() +
                                "\", which is no bone; its keys are left out");
                continue;
            }
            Graphics::AnimationTrack& track = animation.Tracks.emplace_back();
            track.BoneIndex = bone->second;
            track.BoneName = bone->first;
            track.Keys = MergeKeys(channel, 1.0 / ticksPerSecond);
        }
    }
    return animations;
}
}
