// Graphics::ModelManager: every model of the game, by lower-case name. At
// start-up it makes the built-in shapes, in this order and under these keys:
// the unit cube ("default" and "box"; it is also the default model),
// "FullScreenQuad", the sphere ("lightsphere" and "sphere") and "skybox"; ids
// count from 0 in that order. Then it reads the data folder's "Models/": each
// `.kbm` file is a model named by its lower-case stem, each `.kba` file an
// animation set so named. A kbm file that cannot be read is logged as a
// WARNING and stored under its name with no geometry, as the failed file
// would have left it.
//
// Names are looked up lower-cased. An unknown name given to GetModel is
// entered with the default model, so that a file added later can take its
// place through ReloadModel. Models live until RemoveModel or the manager's
// end; generated meshes make theirs with CreateModel.
//
//   Graphics::ModelManager models(device);
//   models.Initialize(Util::GetDataDirectory());
//   Graphics::Model* crate = models.GetModel("Crate");
#pragma once

#include "Graphics_Engine/Model/Animation.h"
#include "Graphics_Engine/Model/Model.h"
#include "Graphics_Engine/Model/Vertex.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace Graphics
{
class GraphicsDevice;

class ModelManager
{
public:
    // A manager making its buffers on `device`, which must outlive it; nothing is made before Initialize.
    explicit ModelManager(GraphicsDevice& device);
    ~ModelManager();
    ModelManager(const ModelManager&) = delete;
    ModelManager& operator=(const ModelManager&) = delete;

    // Makes the built-in models, then reads every model and animation set of dataDir + "Models/".
    void Initialize(const std::string& dataDir);
    // The model of that name in any letter case; an unknown name is entered with the default model
    // (null before Initialize, and nothing entered).
    Model* GetModel(const std::string& name);
    // Removes the name and destroys its model, unless the default model or another name still uses
    // it; an unknown name is reported ("invalid map<K, T> key") and nothing happens.
    void RemoveModel(const std::string& name);
    // Makes a model of copies of the two arrays, with its buffers, and enters it under the name.
    Model* CreateModel(const std::string& name, const std::vector<Vertex>& vertices,
                       const std::vector<std::uint32_t>& indices);
    // The animation set read from the kba file of that name in any letter case, or null.
    const std::vector<Animation>* GetAnimationSet(const std::string& name) const;
    // Reads one kbm file again into the model of its name, so pointers to it stay valid (a name
    // without a model read from a file gets a new one); a failed read keeps the old geometry.
    Model* ReloadModel(const std::string& path);

    // The unit cube, which unknown names resolve to; null before Initialize.
    Model* GetDefaultModel() const { return m_DefaultModel; }
    // True when a model is entered under the name in any letter case.
    bool HasModel(const std::string& name) const;
    // Models made so far, removed ones excepted.
    std::size_t ModelCount() const { return m_Models.size(); }

private:
    // A new, empty model with the next id.
    Model* NewModel();
    // A built-in model entered under each of `names`.
    Model* AddBuiltIn(const std::vector<std::string>& names, const std::vector<Vertex>& vertices,
                      const std::vector<std::uint32_t>& indices);
    // Reads a kbm file into `model` and makes its buffers; false (logged) when it does not read.
    bool ReadModelFile(const std::string& path, Model& model, bool clearOnFailure);
    // Reads a kba file into the animation sets.
    void ReadAnimationSet(const std::string& path);

    GraphicsDevice& m_Device;
    // Every model, owned.
    std::vector<std::unique_ptr<Model>> m_Models;
    // Lower-case name to model; several names may share one model.
    std::unordered_map<std::string, Model*> m_ModelMap;
    // The unit cube.
    Model* m_DefaultModel = nullptr;
    // The id of the next model made.
    unsigned m_NextId = 0;
    // Lower-case name to the animations of a kba file.
    std::unordered_map<std::string, std::vector<Animation>> m_AnimationSets;
    // Lower-case name to the model a kbm file of that name was read into, for reloads.
    std::unordered_map<std::string, Model*> m_FileModels;
};
}
