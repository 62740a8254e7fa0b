#include "Graphics_Engine/Material/Texture/TextureManager.h"

#include "Graphics_Engine/Material/Texture/GuiFontImage.h"
#include "Graphics_Engine/Material/Texture/ImageColourSpace.h"
#include "engine/Files.h"
#include "engine/Log.h"
#include "platform/ImageDecoder.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>

namespace Graphics
{
namespace
{
std::string Lower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

bool ReadFileBytes(const std::string& path, std::vector<std::uint8_t>& bytes)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return false;
    bytes.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    return !file.bad();
}

std::string CouldNotRead(const std::string& name)
{
    return "File \"" + name + "\" could not be read into a texture.";
}
}

TextureManager::TextureManager(GraphicsDevice& device) : m_Device(device) {}

TextureManager::~TextureManager()
{
    for (TextureSlot& slot : m_Textures)
        Release(slot);
    Release(m_Font);
}

void TextureManager::Release(TextureSlot& slot)
{
    if (slot.owned && slot.texture)
        m_Device.DestroyTexture(slot.texture);
    slot = {};
}

void TextureManager::InitTextureManager(const std::string& dataDirectory)
{
    for (TextureSlot& slot : m_Textures)
        Release(slot);
    Release(m_Font);
    m_Textures.clear();
    m_Names.clear();

    m_Folder = dataDirectory;
    if (!m_Folder.empty() && m_Folder.back() != '/' && m_Folder.back() != '\\')
        m_Folder += '/';
    m_Folder += kFolder;

    TextureSlot missing = ReadTextureFile(m_Folder + kMissingTexture);
    if (!missing.texture)
    {
        ERROR_REPORT(CouldNotRead(kMissingTexture));
        missing.owned = false;
    }
    Enter(Lower(kMissingTexture), missing);

    const std::span<const std::uint8_t> font = GuiFontImage();
    m_Font = MakeTexture(font.data(), font.size());
    if (!m_Font.texture)
        ERROR_REPORT(CouldNotRead("ImGui"));

    std::vector<std::string> files;
    Util::ListFiles(m_Folder, files, false);
    for (const std::string& file : files)
    {
        // The missing texture is index 0 already; every file is read once.
        if (Lower(file) == Lower(kMissingTexture))
            continue;
        LoadTexture(file, m_Folder + file);
    }
}

unsigned TextureManager::GetTexture(const std::string& name) const
{
    const auto found = m_Names.find(Lower(name));
    return found == m_Names.end() ? 0 : found->second;
}

TextureViewHandle TextureManager::GetView(unsigned index) const
{
    if (index < m_Textures.size())
        return m_Textures[index].view;
    return m_Textures.empty() ? TextureViewHandle{} : m_Textures.front().view;
}

unsigned TextureManager::LoadTexture(const std::string& name, const std::string& path)
{
    return Enter(Lower(name), LoadTextureFormFile(name, path));
}

TextureSlot TextureManager::LoadTextureFormFile(const std::string& name, const std::string& path)
{
    TextureSlot slot = ReadTextureFile(path);
    if (slot.texture)
        return slot;
    ERROR_REPORT(CouldNotRead(name));
    // The failed name gets a slot of its own that shows the missing texture.
    TextureSlot substitute;
    if (!m_Textures.empty())
    {
        substitute.texture = m_Textures.front().texture;
        substitute.view = m_Textures.front().view;
    }
    substitute.owned = false;
    return substitute;
}

TextureSlot TextureManager::ReadTextureFile(const std::string& path)
{
    std::vector<std::uint8_t> bytes;
    if (!ReadFileBytes(path, bytes))
        return {};
    return MakeTexture(bytes.data(), bytes.size());
}

TextureSlot TextureManager::MakeTexture(const std::uint8_t* data, std::size_t size)
{
    const bool srgb = DetectColourSpace(data, size) == ImageColourSpace::Srgb;
    const Platform::DecodedImage image = Platform::FitImage(Platform::DecodeImage(data, size), srgb);
    if (!image.Valid())
        return {};
    TextureDesc desc;
    desc.width = static_cast<std::uint32_t>(image.width);
    desc.height = static_cast<std::uint32_t>(image.height);
    // The full mip chain, filled from level 0 by the device (which draws into the lower levels).
    desc.mipLevels = 0;
    desc.format = srgb ? Format::R8G8B8A8_UNORM_SRGB : Format::R8G8B8A8_UNORM;
    desc.bindFlags = BindShaderResource | BindRenderTarget;
    TextureSlot slot;
    slot.texture = m_Device.CreateTexture2D(desc, image.pixels.data());
    if (!slot.texture)
        return {};
    m_Device.GenerateMips(slot.texture);
    slot.view = m_Device.DefaultView(slot.texture);
    return slot;
}

unsigned TextureManager::Enter(const std::string& name, const TextureSlot& slot)
{
    const auto index = static_cast<unsigned>(m_Textures.size());
    m_Textures.push_back(slot);
    m_Names[name] = index;
    return index;
}
}
