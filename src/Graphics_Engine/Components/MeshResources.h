// The managers that graphics components look their content up in: the model
// manager (meshes resolve their model names through it) and the texture
// manager (textured meshes and billboards find their textures in it). The
// graphics engine hands them over once it has made them and takes them back
// (null) before it destroys them; until then meshes have no model and bind no
// texture, and nothing else changes.
#pragma once

namespace Graphics
{
class ModelManager;
class TextureManager;

// Sets the model manager meshes resolve their models through; null for none.
void SetMeshModels(ModelManager* models);
// The model manager meshes resolve their models through, or null.
ModelManager* GetMeshModels();
// Sets the texture manager components take their textures from; null for none.
void SetMeshTextures(TextureManager* textures);
// The texture manager components take their textures from, or null.
TextureManager* GetMeshTextures();
}
