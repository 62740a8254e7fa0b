// Graphics::RenderLists: what one frame draws, rebuilt each frame from the
// spaces' quad trees and the camera. Objects of the deferred pass go into one
// vector per key (model id, program), so that each key is drawn with one
// shader and one geometry; objects whose program asks for the forward pass go
// into a list kept sorted farthest first (equal distances in arrival order).
//
// Building keeps the storage of the last frame: vectors are emptied, not
// released, forward list nodes wait in a spare list, and only keys that
// stayed empty are dropped; a frame like the last one allocates nothing.
// An object whose program did not load is left out of both lists.
#pragma once

#include "Graphics_Engine/DrawRecord.h"
#include "engine/Math/Matrix4.h"
#include "engine/Math/Point3D.h"

#include <list>
#include <map>
#include <memory>
#include <vector>

namespace Graphics
{
class ParticleSystem;
class ShaderLookup;
struct SpaceRenderData;

// The key of a deferred vector: the model identity, then the program.
struct DrawKey
{
    // The component's GetModelId.
    unsigned ModelId = 0;
    // The component's resolved program.
    ShaderProgram* Shader = nullptr;

    bool operator<(const DrawKey& other) const
    {
        return ModelId != other.ModelId ? ModelId < other.ModelId : Shader < other.Shader;
    }
    bool operator==(const DrawKey& other) const { return ModelId == other.ModelId && Shader == other.Shader; }
};

class RenderLists
{
public:
    // Rebuilds every list for a camera with this view-projection matrix and position.
    void Build(const Math::Matrix4& viewProjection, const Math::Point3D& cameraPosition, ShaderLookup& shaders);

    // Lists a space's render data; a space already listed is not listed twice.
    void AddSpace(const std::shared_ptr<SpaceRenderData>& space);
    // Unlists a space's render data.
    void RemoveSpace(const SpaceRenderData* space);

    // The deferred pass, by key.
    std::map<DrawKey, std::vector<DrawRecord>> m_Deferred;
    // The forward pass, farthest first.
    std::list<ForwardRecord> m_Forward;
    // The particle systems of the visible spaces, for this frame.
    std::vector<ParticleSystem*> m_Particles;
    // Every space's render data.
    std::vector<std::shared_ptr<SpaceRenderData>> m_Spaces;

private:
    void AddForward(const ForwardRecord& record);

    // Nodes of earlier frames' forward lists, reused before any new one is made.
    std::list<ForwardRecord> m_SpareForward;
    // The object indices of one space's query, reused from space to space and frame to frame.
    std::vector<int> m_Visible;
};
}
