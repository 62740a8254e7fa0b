// Graphics::GraphicsSpace: a space's part of the renderer. Graphics
// components add themselves here when they start (by their object's id, with
// the object's Transform) and leave when they end; each frame the space copies
// every component's placement and m_Render into its quad tree, resolves shader
// names that changed, updates the current camera into the variable table and
// places moved objects in the tree. The tree and the Visible flag live in a
// SpaceRenderData shared with the engine's visible lists.
//
// Lights take a slot in the engine's LightManager when they start and give it
// back when they end; each frame the space writes every light's record from
// the component, field by field, its type included.
//
// Picking and the ground point turn a screen point into a ray with the
// client size and projection of m_Screen (set by the engine) and the
// current camera's view (none: the identity).
#pragma once

#include "Graphics_Engine/Spaces/ScreenRay.h"
#include "Graphics_Engine/Spaces/SpaceRenderData.h"
#include "engine/GameObject.h"
#include "engine/Math/Color.h"
#include "engine/System.h"

#include <map>
#include <memory>

class Camera;
class Light;
class Transform;

namespace Graphics
{
class BaseGraphicsComponent;
class LightManager;
class RenderLists;
class ShaderManager;
class VariableTable;

// A graphics component as its space holds it.
struct GraphicsRecord
{
    // The owner's Transform; may be null.
    Transform* TransformComponent = nullptr;
    // The component drawn.
    BaseGraphicsComponent* Component = nullptr;
    // The component's object index in the quad tree.
    int TreeIndex = -1;
};

// A light as its space holds it.
struct LightSlot
{
    // The light's record in the light manager; kNoSlot without a manager.
    unsigned Index = 0;
    // The owner's Transform; may be null.
    Transform* TransformComponent = nullptr;
};

class GraphicsSpace : public System
{
public:
    GraphicsSpace();
    ~GraphicsSpace() override;
    GraphicsSpace(const GraphicsSpace&) = delete;
    GraphicsSpace& operator=(const GraphicsSpace&) = delete;

    // Attaches the space to the graphics engine (its lists, managers and screen).
    void Initialize() override;
    // The space's graphics step of a frame (see the class comment).
    void Update(float dt) override;
    Meta::Data* GetMeta() const override;

    // Holds the object's graphics component; a second one on the same object is reported and replaces the first.
    void AddGraphicsComponent(GameObjectId objectId, BaseGraphicsComponent* component, Transform* transform);
    // Lets go of the object's graphics component; with `component` given, only if it is that one.
    void RemoveGraphicsComponent(GameObjectId objectId, const BaseGraphicsComponent* component = nullptr);
    // Lists a light with its Transform and gives it a record in the light manager; a light listed
    // already keeps its record and takes the new Transform.
    void AddLight(Light* light, Transform* transform);
    // Unlists a light and frees its record; one not listed is reported ("Double deleting light").
    void RemoveLight(Light* light);
    // Writes every light's record from its component (the frame's step 6).
    void WriteLightRecords();
    // Hands the space the engine's light manager (null: none); the lights listed so far take records in it.
    void SetLightManager(LightManager* manager);
    // The light manager the records live in, or null.
    LightManager* GetLightManager() const { return m_LightManager; }
    // Makes `camera` the space's current camera (null for none).
    void SetCamera(Camera* camera);
    // The current camera, or null.
    Camera* GetCamera() const { return m_Camera; }

    // The id of the nearest object under the client point (x, y), or 0.
    GameObjectId Pick(float x, float y);
    // Where the ray under (x, y) meets the plane y = height; all coordinates the largest float when it
    // does not (parallel, or behind the camera).
    Math::Point3D GetXZPlaneIntersection(float x, float y, float height);
    // The space's quad tree.
    QuadTree* GetQuadTree() { return &m_RenderData->Tree; }

    // The ambient colour of the space's lighting.
    const Math::Color& GetGlobalAmbient() const { return m_GlobalAmbient; }
    // Sets the ambient colour and writes it to the variable table, when there is one.
    void SetGlobalAmbient(const Math::Color& color);

    // Lists the render data in the engine's visible lists (null: unlists); unlisted when destroyed.
    void SetRenderLists(RenderLists* lists);
    // The render data shared with the visible lists.
    const std::shared_ptr<SpaceRenderData>& GetRenderData() const { return m_RenderData; }

    // The records of the graphics components, by object id.
    std::map<GameObjectId, GraphicsRecord> m_Records;
    // A light's index when the space has no light manager.
    static constexpr unsigned kNoSlot = 0xFFFFFFFFu;
    // The lights, with their slots in the light manager.
    std::map<Light*, LightSlot> m_Lights;
    // Resolves dirty shader names; null skips resolving (set by the engine).
    ShaderManager* m_ShaderManager = nullptr;
    // Receives the camera each frame and the global ambient; null for none (set by the engine).
    VariableTable* m_VariableTable = nullptr;
    // The client size and projection for screen rays (set by the engine).
    ScreenProjection m_Screen;

private:
    bool ScreenRay(float x, float y, Ray& ray) const;

    std::shared_ptr<SpaceRenderData> m_RenderData;
    Camera* m_Camera = nullptr;
    RenderLists* m_Lists = nullptr;
    LightManager* m_LightManager = nullptr;
    Math::Color m_GlobalAmbient{0.0f, 0.0f, 0.0f, 1.0f};
};
}
