// Graphics::Bone: one joint of a skinned model's skeleton, built when the model
// is read. Bones point at their parent and children inside the model's own
// bone list (a model never reorders or resizes that list after building it, so
// the pointers stay valid). The local position, scale and rotation are what
// the skinned animation changes each frame; Pose is the bone's transform into
// model space that it composes from them. The rest pose, the bone's local
// position and rotation when no clip moves it, is kept in RestPosition and
// RestRotation, so the animation can fall back to it (and blend towards it)
// for bones no clip drives. OffsetMatrix takes model space into the bone's
// space in that rest pose, as the file stores it.
#pragma once

#include "engine/Math/Matrix4.h"
#include "engine/Math/Point3D.h"
#include "engine/Math/Quaternion.h"
#include "engine/Math/Vector3D.h"

#include <string>
#include <vector>

namespace Graphics
{
struct Bone
{
    // The bone this one hangs from; null for a root.
    Bone* Parent = nullptr;
    // The bones hanging from this one, in file order.
    std::vector<Bone*> Children;
    // Position relative to the parent, as animated.
    Math::Point3D LocalPosition{0.0f, 0.0f, 0.0f};
    // Scale relative to the parent, as animated.
    Math::Vector3D LocalScale{1.0f, 1.0f, 1.0f};
    // Rotation relative to the parent, as animated.
    Math::Quaternion LocalRotation;
    // The bone's transform into model space (row vectors), identity until posed.
    Math::Matrix4 Pose;
    // Rotation relative to the parent in the rest pose; named for what the animation reads it as.
    Math::Quaternion RestRotation;
    // The bone's name, by which kba animation sets find it.
    std::string Name;
    // Position relative to the parent in the rest pose; named for what the animation reads it as.
    Math::Point3D RestPosition{0.0f, 0.0f, 0.0f};
    // From model space into the bone's space in the rest pose.
    Math::Matrix4 OffsetMatrix;
};
}
