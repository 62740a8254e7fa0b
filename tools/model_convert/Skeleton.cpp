#include "model_convert/Skeleton.h"

#include "model_convert/AssimpMath.h"

#include <algorithm>
#include <set>

namespace ModelTools
{
namespace
{
std::vector<const aiNode*> PathFromRoot(const aiNode* node)
{
    std::vector<const aiNode*> path;
    for (; node; node = node->mParent)
        path.push_back(node);
    std::reverse(path.begin(), path.end());
    return path;
}

// Depth first from `node`, parents before children, through the nodes of `members`.
void ListBones(const aiNode* node, int parent, const std::set<const aiNode*>& members, Skeleton& skeleton)
{
    if (!members.count(node))
        return;
    const int index = static_cast<int>(skeleton.Bones.size());
    Graphics::ModelFileBone& bone = skeleton.Bones.emplace_back();
    bone.Name = node->mName.C_Str();
    bone.ParentIndex = parent;
    skeleton.Nodes.push_back(node);
    skeleton.IndexByName.emplace(bone.Name, static_cast<std::uint32_t>(index));
    for (unsigned i = 0; i < node->mNumChildren; ++i)
        ListBones(node->mChildren[i], index, members, skeleton);
}

// From the mesh's space into scene space, from its first bone: offset times the bone's rest transform.
bool MeshToScene(const aiScene& scene, const aiMesh& mesh, Math::Matrix4& meshToScene)
{
    for (unsigned b = 0; b < mesh.mNumBones; ++b)
        if (const aiNode* node = scene.mRootNode->FindNode(mesh.mBones[b]->mName))
        {
            meshToScene = ToEngine(mesh.mBones[b]->mOffsetMatrix) * NodeToScene(node);
            return true;
        }
    return false;
}
}

Math::Matrix4 NodeToScene(const aiNode* node)
{
    Math::Matrix4 result;
    for (; node; node = node->mParent)
        result = result * ToEngine(node->mTransformation);
    return result;
}

bool BuildSkeleton(const aiScene& scene, const std::vector<const aiMesh*>& skinnedMeshes, Skeleton& skeleton,
                   std::string& error)
{
    skeleton = Skeleton{};
    std::vector<const aiNode*> boneNodes;
    for (const aiMesh* mesh : skinnedMeshes)
        for (unsigned b = 0; b < mesh->mNumBones; ++b)
        {
            const aiNode* node = scene.mRootNode->FindNode(mesh->mBones[b]->mName);
            if (!node)
            {
                error = "bone \"" + std::string(mesh->mBones[b]->mName.C_Str()) + "\" is no node of the scene";
                return false;
            }
            boneNodes.push_back(node);
        }
    if (boneNodes.empty())
    {
        error = "the skinned meshes have no bones";
        return false;
    }

    // The lowest common ancestor: the longest path from the scene root shared by every bone.
    std::vector<const aiNode*> common = PathFromRoot(boneNodes.front());
    for (const aiNode* node : boneNodes)
    {
        const std::vector<const aiNode*> path = PathFromRoot(node);
        std::size_t shared = 0;
        while (shared < common.size() && shared < path.size() && common[shared] == path[shared])
            ++shared;
        common.resize(shared);
    }
    const aiNode* root = common.back();

    std::set<const aiNode*> members;
    for (const aiNode* node : boneNodes)
        for (; node && node != root; node = node->mParent)
            members.insert(node);
    members.insert(root);
    ListBones(root, -1, members, skeleton);

    skeleton.GlobalTransform = root->mParent ? NodeToScene(root->mParent) : Math::Matrix4::Identity();
    MeshToScene(scene, *skinnedMeshes.front(), skeleton.ModelToScene);

    // Offsets: the first skinned mesh's own where it has the bone, otherwise from the rest pose.
    const aiMesh& first = *skinnedMeshes.front();
    for (std::size_t i = 0; i < skeleton.Bones.size(); ++i)
    {
        Graphics::ModelFileBone& bone = skeleton.Bones[i];
        bone.OffsetMatrix = skeleton.ModelToScene * NodeToScene(skeleton.Nodes[i]).Inverse();
        for (unsigned b = 0; b < first.mNumBones; ++b)
            if (bone.Name == first.mBones[b]->mName.C_Str())
            {
                bone.OffsetMatrix = ToEngine(first.mBones[b]->mOffsetMatrix);
                break;
            }
    }
    return true;
}

Math::Matrix4 SkinnedMeshToModel(const aiScene& scene, const aiMesh& mesh, const Skeleton& skeleton)
{
    Math::Matrix4 meshToScene;
    if (!MeshToScene(scene, mesh, meshToScene))
        return Math::Matrix4::Identity();
    const Math::Matrix4 result = meshToScene * skeleton.ModelToScene.Inverse();
    return IsIdentity(result) ? Math::Matrix4::Identity() : result;
}

std::uint32_t BoneOfNode(const aiNode* node, const Skeleton& skeleton)
{
    for (; node; node = node->mParent)
    {
        const auto found = std::find(skeleton.Nodes.begin(), skeleton.Nodes.end(), node);
        if (found != skeleton.Nodes.end())
            return static_cast<std::uint32_t>(found - skeleton.Nodes.begin());
    }
    return 0;
}
}
