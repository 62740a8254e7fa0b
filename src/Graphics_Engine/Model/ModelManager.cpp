#include "Graphics_Engine/Model/ModelManager.h"

#include "Graphics_Engine/GraphicsDevice.h"
#include "Graphics_Engine/Model/BuiltInModels.h"
#include "Graphics_Engine/Model/ModelFile.h"
#include "engine/Files.h"
#include "engine/Log.h"

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

// The file's name without its folder and its last extension, lower-cased.
std::string LowerStem(const std::string& path)
{
    std::string name = path;
    const std::size_t separator = name.find_last_of("/\\");
    if (separator != std::string::npos)
        name.erase(0, separator + 1);
    const std::size_t dot = name.rfind('.');
    if (dot != std::string::npos)
        name.erase(dot);
    return Lower(name);
}

bool ReadBytes(const std::string& path, std::vector<std::uint8_t>& bytes)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return false;
    bytes.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    return !file.bad();
}
}

ModelManager::ModelManager(GraphicsDevice& device) : m_Device(device) {}

ModelManager::~ModelManager() = default;

Model* ModelManager::NewModel()
{
    auto model = std::make_unique<Model>();
    model->Id = m_NextId++;
    m_Models.push_back(std::move(model));
    return m_Models.back().get();
}

Model* ModelManager::AddBuiltIn(const std::vector<std::string>& names, const std::vector<Vertex>& vertices,
                                const std::vector<std::uint32_t>& indices)
{
    Model* model = NewModel();
    model->SetGeometry(vertices, indices);
    model->CreateBuffers(m_Device);
    for (const std::string& name : names)
        m_ModelMap[Lower(name)] = model;
    return model;
}

void ModelManager::Initialize(const std::string& dataDir)
{
    const ModelGeometry cube = MakeCube();
    m_DefaultModel = AddBuiltIn({"default", "box"}, cube.vertices, cube.indices);
    const ModelGeometry quad = MakeFullScreenQuad();
    AddBuiltIn({"FullScreenQuad"}, quad.vertices, quad.indices);
    const ModelGeometry sphere = MakeSphere();
    AddBuiltIn({"lightsphere", "sphere"}, sphere.vertices, sphere.indices);
    const ModelGeometry skybox = MakeSkybox();
    AddBuiltIn({"skybox"}, skybox.vertices, skybox.indices);

    std::string folder = Util::NormalizePath(dataDir);
    if (!folder.empty() && folder.back() != '/')
        folder += '/';
    std::vector<std::string> files;
    Util::ListFiles(folder + "Models/", files, true);
    for (const std::string& path : files)
    {
        const std::string extension = Lower(Util::GetExtension(path));
        if (extension == ".kbm")
        {
            Model* model = NewModel();
            ReadModelFile(path, *model, true);
            const std::string name = LowerStem(path);
            m_ModelMap[name] = model;
            m_FileModels[name] = model;
        }
        else if (extension == ".kba")
            ReadAnimationSet(path);
    }
}

bool ModelManager::ReadModelFile(const std::string& path, Model& model, bool clearOnFailure)
{
    std::vector<std::uint8_t> bytes;
    ModelFile file;
    std::string error = "the file cannot be read";
    if (ReadBytes(path, bytes) && ReadKbm(bytes.data(), bytes.size(), file, error))
    {
        model.SetFromFile(std::move(file));
        model.CreateBuffers(m_Device);
        return true;
    }
    LOG("WARNING", "Model file \"" + path + "\" could not be read: " + error);
    if (clearOnFailure)
    {
        model.DestroyBuffers();
        model.SetGeometry({}, {});
    }
    return false;
}

void ModelManager::ReadAnimationSet(const std::string& path)
{
    std::vector<std::uint8_t> bytes;
    std::vector<Animation> animations;
    std::string error = "the file cannot be read";
    if (ReadBytes(path, bytes) && ReadKba(bytes.data(), bytes.size(), animations, error))
        m_AnimationSets[LowerStem(path)] = std::move(animations);
    else
        LOG("WARNING", "Animation file \"" + path + "\" could not be read: " + error);
}

Model* ModelManager::GetModel(const std::string& name)
{
    const std::string key = Lower(name);
    const auto found = m_ModelMap.find(key);
    if (found != m_ModelMap.end())
        return found->second;
    // Before Initialize there is no default model to enter.
    if (!m_DefaultModel)
        return nullptr;
    m_ModelMap.emplace(key, m_DefaultModel);
    return m_DefaultModel;
}

bool ModelManager::HasModel(const std::string& name) const
{
    return m_ModelMap.count(Lower(name)) != 0;
}

void ModelManager::RemoveModel(const std::string& name)
{
    const std::string key = Lower(name);
    const auto found = m_ModelMap.find(key);
    if (found == m_ModelMap.end())
    {
        ERROR_REPORT("invalid map<K, T> key");
        return;
    }
    Model* model = found->second;
    m_ModelMap.erase(found);
    if (model == m_DefaultModel)
        return;
    for (const auto& [other, shared] : m_ModelMap)
        if (shared == model)
            return;
    std::erase_if(m_FileModels, [model](const auto& entry) { return entry.second == model; });
    std::erase_if(m_Models, [model](const std::unique_ptr<Model>& owned) { return owned.get() == model; });
}

Model* ModelManager::CreateModel(const std::string& name, const std::vector<Vertex>& vertices,
                                 const std::vector<std::uint32_t>& indices)
{
    Model* model = NewModel();
    model->SetGeometry(vertices, indices);
    model->CreateBuffers(m_Device);
    m_ModelMap[Lower(name)] = model;
    return model;
}

const std::vector<Animation>* ModelManager::GetAnimationSet(const std::string& name) const
{
    const auto found = m_AnimationSets.find(Lower(name));
    return found == m_AnimationSets.end() ? nullptr : &found->second;
}

Model* ModelManager::ReloadModel(const std::string& path)
{
    const std::string name = LowerStem(path);
    const auto known = m_FileModels.find(name);
    if (known != m_FileModels.end())
    {
        ReadModelFile(path, *known->second, false);
        m_ModelMap[name] = known->second;
        return known->second;
    }
    Model* model = NewModel();
    ReadModelFile(path, *model, true);
    m_ModelMap[name] = model;
    m_FileModels[name] = model;
    return model;
}
}
