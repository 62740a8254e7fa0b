// Reading a model file through the Open Asset Import Library with the
// processing the converter relies on: triangles only, identical vertices
// joined, normals made where the file has none, tangents made where it has none
// (from the texture coordinates), at most four bone weights a vertex,
// normalised, and texture coordinates with their origin at the top left, as
// the engine samples them.
#pragma once

#include <assimp/Importer.hpp>
#include <assimp/scene.h>

#include <string>

namespace ModelTools
{
// The aiProcess flags of every import.
unsigned ImportFlags();

// Reads `path` into `importer`; the scene, or null with assimp's reason in `error`.
// Never throws.
const aiScene* ImportScene(Assimp::Importer& importer, const std::string& path, std::string& error);
}
