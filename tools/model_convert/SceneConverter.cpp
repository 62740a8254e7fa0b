#include "model_convert/SceneConverter.h"

#include "model_convert/AnimationConverter.h"
#include "model_convert/AssimpMath.h"
#include "model_convert/Skeleton.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace ModelTools
{
namespace
{
struct MeshInstance
{
    const aiMesh* Mesh;
    const aiNode* Node;
};

bool IsTriangleMesh(const aiMesh& mesh)
{
    return (mesh.mPrimitiveTypes & aiPrimitiveType_TRIANGLE) && mesh.mNumVertices > 0 && mesh.mNumFaces > 0;
}

void CollectInstances(const aiScene& scene, const aiNode* node, std::vector<MeshInstance>& instances)
{
    for (unsigned i = 0; i < node->mNumMeshes; ++i)
        if (node->mMeshes[i] < scene.mNumMeshes && IsTriangleMesh(*scene.mMeshes[node->mMeshes[i]]))
            instances.push_back({scene.mMeshes[node->mMeshes[i]], node});
    for (unsigned i = 0; i < node->mNumChildren; ++i)
        CollectInstances(scene, node->mChildren[i], instances);
}

aiVector3D AnyPerpendicular(const aiVector3D& normal)
{
    const aiVector3D axis = std::fabs(normal.y) < 0.99f ? aiVector3D(0, 1, 0) : aiVector3D(1, 0, 0);
    aiVector3D tangent = axis ^ normal;
    return tangent.Length() > 0.0f ? tangent.Normalize() : aiVector3D(1, 0, 0);
}

// The tangent made unit length and perpendicular to the normal; any perpendicular when it has no direction.
aiVector3D CleanTangent(aiVector3D tangent, const aiVector3D& normal)
{
    tangent -= normal * (tangent * normal);
    const float length = tangent.Length();
    if (!(length > 1e-6f) || !std::isfinite(length))
        return AnyPerpendicular(normal);
    return tangent / length;
}

// The four strongest influences, normalised, as the vertex lays them out.
Graphics::SkinData PackWeights(std::vector<std::pair<std::uint32_t, float>> influences)
{
    std::sort(influences.begin(), influences.end(),
              [](const auto& a, const auto& b) { return a.second > b.second; });
    if (influences.size() > 4)
        influences.resize(4);
    float sum = 0.0f;
    for (const auto& influence : influences)
        sum += influence.second;
    Graphics::SkinData skin;
    for (std::size_t i = 0; i < influences.size(); ++i)
    {
        skin.boneIndices[i] = influences[i].first;
        if (i < 3)
            skin.weights[i] = influences[i].second / sum;
    }
    return skin;
}

// Appends one mesh: vertices through `transform`, skin data from `skins` (or none), indices after the last.
void AppendMesh(const aiMesh& mesh, const Math::Matrix4& transform, const std::vector<Graphics::SkinData>* skins,
                Graphics::ModelFile& model)
{
    const auto base = static_cast<std::uint32_t>(model.Vertices.size());
    const bool identity = IsIdentity(transform);
    for (unsigned i = 0; i < mesh.mNumVertices; ++i)
    {
        Graphics::Vertex vertex;
        aiVector3D position = mesh.mVertices[i];
        aiVector3D normal = mesh.mNormals ? mesh.mNormals[i] : aiVector3D(0, 1, 0);
        aiVector3D tangent = mesh.mTangents ? mesh.mTangents[i] : aiVector3D(0, 0, 0);
        if (!identity)
        {
            position = TransformPoint(position, transform);
            normal = TransformNormal(normal, transform);
            tangent = TransformDirection(tangent, transform);
        }
        if (normal.Length() > 0.0f)
            normal.Normalize();
        tangent = CleanTangent(tangent, normal);
        for (int k = 0; k < 3; ++k)
        {
            vertex.position[k] = position[k];
            vertex.normal[k] = normal[k];
            vertex.tangent[k] = tangent[k];
        }
        if (mesh.mTextureCoords[0])
        {
            vertex.uv[0] = mesh.mTextureCoords[0][i].x;
            vertex.uv[1] = mesh.mTextureCoords[0][i].y;
        }
        if (skins)
            vertex.skin = (*skins)[i];
        model.Vertices.push_back(vertex);
    }
    // A mirroring transform turns the winding; swapping two corners turns it back.
    const bool flip = LinearDeterminant(transform) < 0.0f;
    for (unsigned f = 0; f < mesh.mNumFaces; ++f)
    {
        const aiFace& face = mesh.mFaces[f];
        if (face.mNumIndices != 3)
            continue;
        model.Indices.push_back(base + face.mIndices[0]);
        model.Indices.push_back(base + face.mIndices[flip ? 2 : 1]);
        model.Indices.push_back(base + face.mIndices[flip ? 1 : 2]);
    }
}

std::vector<Graphics::SkinData> SkinOf(const aiMesh& mesh, const Skeleton& skeleton, std::size_t& unweighted)
{
    std::vector<std::vector<std::pair<std::uint32_t, float>>> influences(mesh.mNumVertices);
    for (unsigned b = 0; b < mesh.mNumBones; ++b)
    {
        const aiBone& bone = *mesh.mBones[b];
        const std::uint32_t index = skeleton.IndexByName.at(bone.mName.C_Str());
        for (unsigned w = 0; w < bone.mNumWeights; ++w)
            if (bone.mWeights[w].mVertexId < mesh.mNumVertices && bone.mWeights[w].mWeight > 0.0f)
                influences[bone.mWeights[w].mVertexId].emplace_back(index, bone.mWeights[w].mWeight);
    }
    std::vector<Graphics::SkinData> skins(mesh.mNumVertices);
    for (unsigned i = 0; i < mesh.mNumVertices; ++i)
    {
        if (influences[i].empty())
        {
            // Follows the root bone.
            ++unweighted;
            skins[i].weights[0] = 1.0f;
            continue;
        }
        skins[i] = PackWeights(std::move(influences[i]));
    }
    return skins;
}
}

bool ConvertScene(const aiScene& scene, const ConvertOptions& options, Graphics::ModelFile& model,
                  std::vector<std::string>& notes, std::string& error)
{
    model = Graphics::ModelFile{};
    std::vector<MeshInstance> instances;
    CollectInstances(scene, scene.mRootNode, instances);
    if (instances.empty())
    {
        error = "the file holds no triangle meshes";
        return false;
    }

    std::vector<const aiMesh*> skinnedMeshes;
    if (!options.Static)
        for (const MeshInstance& instance : instances)
            if (instance.Mesh->mNumBones > 0 &&
                std::find(skinnedMeshes.begin(), skinnedMeshes.end(), instance.Mesh) == skinnedMeshes.end())
                skinnedMeshes.push_back(instance.Mesh);

    if (skinnedMeshes.empty())
    {
        for (const MeshInstance& instance : instances)
            AppendMesh(*instance.Mesh, NodeToScene(instance.Node), nullptr, model);
        if (scene.mNumAnimations > 0 && !options.Static)
            notes.push_back("the model has no bones, so its animations are left out");
        return true;
    }

    Skeleton skeleton;
    if (!BuildSkeleton(scene, skinnedMeshes, skeleton, error))
        return false;
    model.Type = Graphics::ModelType::Skinned;
    model.GlobalTransform = skeleton.GlobalTransform;
    model.Bones = skeleton.Bones;

    std::set<const aiMesh*> written;
    std::size_t unweighted = 0;
    const Math::Matrix4 sceneToModel = skeleton.ModelToScene.Inverse();
    for (const MeshInstance& instance : instances)
    {
        if (instance.Mesh->mNumBones > 0)
        {
            // A skinned mesh is placed by its bones, not by its node: once, however many nodes use it.
            if (!written.insert(instance.Mesh).second)
                continue;
            const std::vector<Graphics::SkinData> skins = SkinOf(*instance.Mesh, skeleton, unweighted);
            AppendMesh(*instance.Mesh, SkinnedMeshToModel(scene, *instance.Mesh, skeleton), &skins, model);
            continue;
        }
        Graphics::SkinData rigid;
        rigid.boneIndices[0] = BoneOfNode(instance.Node, skeleton);
        rigid.weights[0] = 1.0f;
        const std::vector<Graphics::SkinData> skins(instance.Mesh->mNumVertices, rigid);
        AppendMesh(*instance.Mesh, NodeToScene(instance.Node) * sceneToModel, &skins, model);
    }
    if (unweighted > 0)
        notes.push_back(std::to_string(unweighted) + " vertices carry no bone weight and follow the root bone");
    if (options.Animations)
        model.Animations = ConvertAnimations(scene, skeleton, notes);
    return true;
}
}
