// An imported scene as one engine model. Every triangle mesh of the scene is
// merged into the one vertex and index list. A scene without bones gives a
// static model, each mesh placed by its node's rest transform. A scene whose
// meshes carry bones gives a skinned model: the skinned meshes keep their own
// space (their nodes' transforms are not applied, as glTF asks), each vertex
// gets up to four bone indices and weights as the engine's vertex lays them
// out, and the meshes without bones are fixed rigidly to the bone of their
// nearest ancestor node. Tangents that the importer could not make (a mesh
// without texture coordinates) are taken perpendicular to the normal.
#pragma once

#include "Graphics_Engine/Model/ModelFile.h"

#include <assimp/scene.h>

#include <string>
#include <vector>

namespace ModelTools
{
struct ConvertOptions
{
    // Ignore bones and write a static model at the rest pose.
    bool Static = false;
    // Keep the scene's animation clips in a skinned model.
    bool Animations = true;
};

// Converts the scene; false with a reason in `error` when it holds nothing to
// write. Things left out on the way are described in `notes`.
bool ConvertScene(const aiScene& scene, const ConvertOptions& options, Graphics::ModelFile& model,
                  std::vector<std::string>& notes, std::string& error);
}
