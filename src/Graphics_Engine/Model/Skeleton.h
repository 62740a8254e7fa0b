// Building a model's bones from the bones of its file. Each bone gets its
// name and offset matrix, a pointer to its parent and a place in its parent's
// children (in file order; the reader has made sure parents come first), and
// its rest pose: the local position and rotation relative to its parent that
// the offset matrices imply, which also start as the bone's animated local
// position and rotation.
#pragma once

#include "Graphics_Engine/Model/Bone.h"
#include "Graphics_Engine/Model/ModelFile.h"

#include <vector>

namespace Graphics
{
// Fills `bones` (replacing what was there) from the file's bones, pointers linked.
void BuildBones(const std::vector<ModelFileBone>& fileBones, std::vector<Bone>& bones);

// The rotation of a row-vector matrix's upper 3 by 3 part, its rows normalised first.
Math::Quaternion RotationOf(const Math::Matrix4& matrix);
}
