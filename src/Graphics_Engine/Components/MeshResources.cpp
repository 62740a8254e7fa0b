#include "Graphics_Engine/Components/MeshResources.h"

namespace Graphics
{
namespace
{
ModelManager* g_Models = nullptr;
TextureManager* g_Textures = nullptr;
}

void SetMeshModels(ModelManager* models)
{
    g_Models = models;
}

ModelManager* GetMeshModels()
{
    return g_Models;
}

void SetMeshTextures(TextureManager* textures)
{
    g_Textures = textures;
}

TextureManager* GetMeshTextures()
{
    return g_Textures;
}
}
