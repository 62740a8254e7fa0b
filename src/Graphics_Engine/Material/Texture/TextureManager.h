// Graphics::TextureManager: every texture of the game, handed out by name.
// InitTextureManager loads, from "3DTextures/" under the data directory:
// "MISSING_TEXTURE.png" as index 0 (the picture shown for any name that is not
// a texture); the GUI font image built into the program, into its own
// texture; then every other file of the folder, in name order, under its
// lower-case file name ("Stone.PNG" is "stone.png"). Each image is decoded to
// RGBA, scaled down to fit 16384 texels on its longest side, and made with its
// full mip chain, filled by the device; an sRGB-encoded image (see
// ImageColourSpace.h) is made in R8G8B8A8_UNORM_SRGB, so that sampling yields
// linear values, and any other in R8G8B8A8_UNORM.
//
// A file that cannot be read into a texture is reported and is still entered
// under its name: it gets a slot of its own, the last one, which shows the
// missing texture through that texture's view (shared, not owned). The manager
// destroys the textures it owns when it ends.
#pragma once

#include "Graphics_Engine/GraphicsDevice.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace Graphics
{
// One texture with the view that shaders read it through.
struct TextureSlot
{
    TextureHandle texture;
    TextureViewHandle view;
    // False for a slot that shows another slot's texture (a file that failed).
    bool owned = true;
};

class TextureManager
{
public:
    // The folder under the data directory that holds the textures.
    static constexpr const char* kFolder = "3DTextures/";
    // The file loaded as index 0 and shown in place of what cannot be found.
    static constexpr const char* kMissingTexture = "MISSING_TEXTURE.png";

    // A manager making its textures on `device`; empty until InitTextureManager.
    explicit TextureManager(GraphicsDevice& device);
    ~TextureManager();
    TextureManager(const TextureManager&) = delete;
    TextureManager& operator=(const TextureManager&) = delete;

    // Loads the missing texture, the GUI font image and every file of "3DTextures/" under `dataDirectory`
    // (which ends in '/'); failures are reported and the rest loads.
    void InitTextureManager(const std::string& dataDirectory);
    // The index of the texture of that name, in any letter case; 0 (the missing texture) when unknown.
    unsigned GetTexture(const std::string& name) const;
    // The view of the texture at `index`; the missing texture's view for an index out of range.
    TextureViewHandle GetView(unsigned index) const;
    // Reads the image file at `path` into a new slot entered under the lower-cased `name` (replacing an
    // earlier entry of that name) and gives the slot's index; a failure is reported and the slot shows
    // the missing texture.
    unsigned LoadTexture(const std::string& name, const std::string& path);

    // Every slot, index 0 first.
    const std::vector<TextureSlot>& Slots() const { return m_Textures; }
    // The GUI font image's texture, empty when it could not be made.
    TextureHandle FontTexture() const { return m_Font.texture; }
    // The GUI font image's view, empty when it could not be made.
    TextureViewHandle FontView() const { return m_Font.view; }
    // The folder InitTextureManager read, ending in '/'.
    const std::string& Folder() const { return m_Folder; }

private:
    // Reads and decodes an image file and makes its texture; an empty slot when that fails.
    TextureSlot ReadTextureFile(const std::string& path);
    // Decodes encoded image bytes and makes their texture; an empty slot when that fails.
    TextureSlot MakeTexture(const std::uint8_t* data, std::size_t size);
    // Loads one file for LoadTexture, reporting a failure (named as the engine's messages name it).
    TextureSlot LoadTextureFormFile(const std::string& name, const std::string& path);
    // Adds a slot and enters it under `name`; gives its index.
    unsigned Enter(const std::string& name, const TextureSlot& slot);
    // Destroys an owned slot's texture.
    void Release(TextureSlot& slot);

    GraphicsDevice& m_Device;
    std::string m_Folder;
    std::vector<TextureSlot> m_Textures;
    std::unordered_map<std::string, unsigned> m_Names;
    TextureSlot m_Font;
};
}
