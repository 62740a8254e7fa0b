// The bone hierarchy of a skinned model, taken from an imported scene: every
// node that weights a vertex, and every node between those and their lowest
// common ancestor, which becomes the root bone. Bones are listed parents
// first (depth first from the root, children in scene order).
//
// Model space is the space of the first skinned mesh: its bones' offset
// matrices (model space to bone space at rest) are the file's own; the offsets
// of bones that weight nothing, and the placement of other meshes, are derived
// from the rest pose so that all of them agree. The model's global transform is
// the rest transform of the nodes above the root bone, which the bone chain
// does not include.
#pragma once

#include "Graphics_Engine/Model/ModelFile.h"
#include "engine/Math/Matrix4.h"

#include <assimp/scene.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace ModelTools
{
struct Skeleton
{
    // The bones as the kbm file stores them.
    std::vector<Graphics::ModelFileBone> Bones;
    // The scene node of each bone.
    std::vector<const aiNode*> Nodes;
    // Bone index by bone name.
    std::map<std::string, std::uint32_t> IndexByName;
    // The rest transform of the nodes above the root bone (row vectors).
    Math::Matrix4 GlobalTransform;
    // From model space into scene space at rest.
    Math::Matrix4 ModelToScene;
};

// The rest transform of a node from its own space into the scene's (row vectors).
Math::Matrix4 NodeToScene(const aiNode* node);

// Builds the skeleton of the meshes that carry bones; false with a reason when
// a bone names no node of the scene.
bool BuildSkeleton(const aiScene& scene, const std::vector<const aiMesh*>& skinnedMeshes, Skeleton& skeleton,
                   std::string& error);

// From a skinned mesh's own space into model space (the identity for the first).
Math::Matrix4 SkinnedMeshToModel(const aiScene& scene, const aiMesh& mesh, const Skeleton& skeleton);

// The bone a node's rigid mesh follows: its nearest ancestor (or itself) among the bones, else the root.
std::uint32_t BoneOfNode(const aiNode* node, const Skeleton& skeleton);
}
