#include "model_convert/AssimpImport.h"

#include <assimp/config.h>
#include <assimp/postprocess.h>

#include <exception>

namespace ModelTools
{
unsigned ImportFlags()
{
    return aiProcess_Triangulate | aiProcess_JoinIdenticalVertices | aiProcess_GenSmoothNormals |
           aiProcess_CalcTangentSpace | aiProcess_LimitBoneWeights | aiProcess_SortByPType | aiProcess_FlipUVs |
           aiProcess_ValidateDataStructure;
}

const aiScene* ImportScene(Assimp::Importer& importer, const std::string& path, std::string& error)
{
    // Points and lines are dropped; the engine draws triangles.
    importer.SetPropertyInteger(AI_CONFIG_PP_SBP_REMOVE, aiPrimitiveType_POINT | aiPrimitiveType_LINE);
    importer.SetPropertyInteger(AI_CONFIG_PP_LBW_MAX_WEIGHTS, 4);
    const aiScene* scene = nullptr;
    try
    {
        scene = importer.ReadFile(path, ImportFlags());
    }
    catch (const std::exception& exception)
    {
        error = exception.what();
        return nullptr;
    }
    catch (...)
    {
        error = "the importer failed";
        return nullptr;
    }
    if (!scene)
    {
        error = importer.GetErrorString();
        if (error.empty())
            error = "the importer read nothing";
        return nullptr;
    }
    if (scene->mFlags & AI_SCENE_FLAGS_INCOMPLETE || !scene->mRootNode)
    {
        error = "the file holds no complete scene";
        return nullptr;
    }
    return scene;
}
}
