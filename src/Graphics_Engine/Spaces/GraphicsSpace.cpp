#include "Graphics_Engine/Spaces/GraphicsSpace.h"

#include "Components/Camera/Camera/Camera.h"
#include "Components/Light/Light.h"
#include "Components/Transform/Transform.h"
#include "Graphics_Engine/Components/BaseGraphicsComponent.h"
#include "Graphics_Engine/GraphicsEngine.h"
#include "Graphics_Engine/Lights/LightManager.h"
#include "Graphics_Engine/RenderLists.h"
#include "Graphics_Engine/ShaderManager.h"
#include "Graphics_Engine/Spaces/GraphicsUpdateEvent.h"
#include "Graphics_Engine/VariableTable.h"
#include "engine/Log.h"
#include "engine/Space.h"
#include "utilities/Meta/Registration.h"

#include <cfloat>
#include <cmath>

META_REGISTER_NS(Graphics, GraphicsSpace)
{
    DERIVE(System);
    DESCRIPTION("An interface to the graphics engine through a space");
    PROPERTY(GlobalAmbient, GetGlobalAmbient, SetGlobalAmbient, "The ambient colour of the space's lighting.");
    HELP("The id of the nearest object under the screen point (x, y), or 0.");
    METHOD(Pick);
    HELP("Where the ray under the screen point (x, y) meets the plane y = height.");
    METHOD(GetXZPlaneIntersection);
    HELP("The space's quad tree.");
    METHOD(GetQuadTree);
}

namespace Graphics
{
namespace
{
// The point that stands for "no intersection".
const Math::Point3D kNoPoint(FLT_MAX, FLT_MAX, FLT_MAX);
// Directions whose dot product with the plane's normal is below this are parallel to it.
constexpr float kParallelEpsilon = 1.1920929e-07f;

Math::Point3D WorldPosition(const Transform& transform)
{
    return transform.m_Position + transform.m_Offset;
}
}

Meta::Data* GraphicsSpace::GetMeta() const
{
    return Meta::Get<GraphicsSpace>();
}

GraphicsSpace::GraphicsSpace() : m_RenderData(std::make_shared<SpaceRenderData>())
{
    m_RenderData->Owner = this;
}

GraphicsSpace::~GraphicsSpace()
{
    SetLightManager(nullptr);
    SetRenderLists(nullptr);
    m_RenderData->Owner = nullptr;
}

void GraphicsSpace::Initialize()
{
    GraphicsEngine::Get().AttachSpace(*this);
}

void GraphicsSpace::SetRenderLists(RenderLists* lists)
{
    if (m_Lists)
        m_Lists->RemoveSpace(m_RenderData.get());
    m_Lists = lists;
    if (m_Lists)
        m_Lists->AddSpace(m_RenderData);
}

void GraphicsSpace::AddGraphicsComponent(GameObjectId objectId, BaseGraphicsComponent* component,
                                         Transform* transform)
{
    if (!component)
        return;
    QuadTree& tree = m_RenderData->Tree;
    auto existing = m_Records.find(objectId);
    if (existing != m_Records.end())
    {
        ERROR_REPORT("There is a object with two meshes. Something is very wrong.");
        tree.RemoveObject(existing->second.TreeIndex);
        m_Records.erase(existing);
    }
    GraphicsRecord record;
    record.TransformComponent = transform;
    record.Component = component;
    record.TreeIndex = transform ? tree.AddObject(component, WorldPosition(*transform), transform->m_Scale,
                                                  transform->m_Rotation)
                                 : tree.AddObject(component, Math::Point3D(), Math::Vector3D(1, 1, 1),
                                                  Math::Quaternion());
    tree.GetObject(record.TreeIndex).Visible = component->m_Render;
    m_Records[objectId] = record;
}

void GraphicsSpace::RemoveGraphicsComponent(GameObjectId objectId, const BaseGraphicsComponent* component)
{
    auto found = m_Records.find(objectId);
    if (found == m_Records.end() || (component && found->second.Component != component))
        return;
    m_RenderData->Tree.RemoveObject(found->second.TreeIndex);
    m_Records.erase(found);
}

void GraphicsSpace::AddLight(Light* light, Transform* transform)
{
    if (!light)
        return;
    auto found = m_Lights.find(light);
    if (found != m_Lights.end())
    {
        found->second.TransformComponent = transform;
        return;
    }
    LightSlot slot;
    slot.Index = m_LightManager ? m_LightManager->AddLight() : kNoSlot;
    slot.TransformComponent = transform;
    m_Lights[light] = slot;
}

void GraphicsSpace::RemoveLight(Light* light)
{
    auto found = m_Lights.find(light);
    if (found == m_Lights.end())
    {
        ERROR_REPORT("Double deleting light");
        return;
    }
    if (m_LightManager && found->second.Index != kNoSlot)
        m_LightManager->FreeLight(found->second.Index);
    m_Lights.erase(found);
}

void GraphicsSpace::SetLightManager(LightManager* manager)
{
    if (manager == m_LightManager)
        return;
    for (auto& [light, slot] : m_Lights)
    {
        if (m_LightManager && slot.Index != kNoSlot)
            m_LightManager->FreeLight(slot.Index);
        slot.Index = manager ? manager->AddLight() : kNoSlot;
    }
    m_LightManager = manager;
}

namespace
{
void CopyColor(float (&to)[4], const Math::Color& from)
{
    to[0] = from.r;
    to[1] = from.g;
    to[2] = from.b;
    to[3] = from.a;
}

void CopyVector(float (&to)[3], float x, float y, float z)
{
    to[0] = x;
    to[1] = y;
    to[2] = z;
}
}

void GraphicsSpace::WriteLightRecords()
{
    if (!m_LightManager)
        return;
    std::vector<s_Light>& records = m_LightManager->m_Records;
    for (const auto& [light, slot] : m_Lights)
    {
        if (slot.Index >= records.size())
            continue;
        s_Light& record = records[slot.Index];
        // Transform position plus its offset plus the light's Offset, written out so that it stays inline.
        float x = light->Offset.x;
        float y = light->Offset.y;
        float z = light->Offset.z;
        if (const Transform* transform = slot.TransformComponent)
        {
            x += transform->m_Position.x + transform->m_Offset.x;
            y += transform->m_Position.y + transform->m_Offset.y;
            z += transform->m_Position.z + transform->m_Offset.z;
        }
        CopyColor(record.Ambient, light->Ambient);
        CopyColor(record.Diffuse, light->Diffuse);
        CopyColor(record.Specular, light->Specular);
        CopyVector(record.Position, x, y, z);
        record.Range = light->Range;
        CopyVector(record.Direction, light->Direction.x, light->Direction.y, light->Direction.z);
        CopyVector(record.SpotPrams, light->SpotPrams.x, light->SpotPrams.y, light->SpotPrams.z);
        CopyVector(record.Attenuation, light->Attenuation.x, light->Attenuation.y, light->Attenuation.z);
        record.LightType = static_cast<std::uint32_t>(light->LightType);
    }
}

void GraphicsSpace::SetCamera(Camera* camera)
{
    m_Camera = camera;
}

void GraphicsSpace::SetGlobalAmbient(const Math::Color& color)
{
    m_GlobalAmbient = color;
    if (m_VariableTable)
        m_VariableTable->SetVariable("f4_GlobaAmbient", Math::Vector4D(color.r, color.g, color.b, color.a));
}

void GraphicsSpace::Update(float dt)
{
    // 1. Tell the space's receivers that the graphics update starts.
    if (m_Space)
    {
        GraphicsUpdateEvent event(dt);
        m_Space->BroadcastEvent("GraphicsUpdate", &event);
    }

    // 2. Particle systems are updated here once particles exist.
    // 3. Particle systems queued for deletion are deleted here once particles exist.

    // 4. Copy every component's placement and m_Render into the tree; resolve changed shader names.
    QuadTree& tree = m_RenderData->Tree;
    for (auto& [id, record] : m_Records)
    {
        if (record.TransformComponent)
            tree.UpdateObject(record.TreeIndex, WorldPosition(*record.TransformComponent),
                              record.TransformComponent->m_Scale, record.TransformComponent->m_Rotation);
        if (tree.IsLive(record.TreeIndex))
            tree.GetObject(record.TreeIndex).Visible = record.Component->m_Render;
        if (m_ShaderManager && record.Component->m_ShaderComponent.m_Dirty)
            record.Component->m_ShaderComponent.Resolve(*m_ShaderManager);
    }

    // 5. The UI lists and renderables are ticked here once the UI exists.
    // 6. Each light's record, from its component.
    WriteLightRecords();

    // 7. The camera's view, and the variable table's copy of it.
    if (m_Camera)
    {
        m_Camera->Update();
        if (m_VariableTable)
            m_VariableTable->SetCamera(m_Camera->GetState());
    }

    // 8. Place the moved objects.
    tree.Update();
}

bool GraphicsSpace::ScreenRay(float x, float y, Ray& ray) const
{
    const Math::Matrix4 inverseView = m_Camera ? m_Camera->m_View.Inverse() : Math::Matrix4::Identity();
    return MakeScreenRay(x, y, m_Screen, inverseView, ray);
}

GameObjectId GraphicsSpace::Pick(float x, float y)
{
    Ray ray;
    if (!ScreenRay(x, y, ray))
        return 0;
    float best = FLT_MAX;
    GameObjectId bestId = 0;
    for (auto& [id, record] : m_Records)
    {
        if (!record.TransformComponent)
            continue;
        const Math::Point3D center = WorldPosition(*record.TransformComponent);
        const Math::Vector3D toObject = center - ray.Origin;
        const float t = toObject.DotProduct(ray.Direction);
        if (t < 0.0f)
            continue;
        const Math::Vector3D& scale = record.TransformComponent->m_Scale;
        const float radiusSquared = 0.25f * (scale.x * scale.x + scale.y * scale.y + scale.z * scale.z);
        const float toRaySquared = toObject.LengthSquare() - t * t;
        if (toRaySquared > radiusSquared)
            continue;
        if (toObject.LengthSquare() > best * best)
            continue;
        float distance = 0.0f;
        if (record.Component->Pick(distance, false, ray.Origin, ray.Direction) && distance < best)
        {
            best = distance;
            bestId = id;
        }
    }
    return bestId;
}

Math::Point3D GraphicsSpace::GetXZPlaneIntersection(float x, float y, float height)
{
    Ray ray;
    if (!ScreenRay(x, y, ray))
        return kNoPoint;
    // The plane's normal is +y, so the dot product with the direction is its y.
    const float along = ray.Direction.y;
    if (std::fabs(along) < kParallelEpsilon)
        return kNoPoint;
    const float t = (height - ray.Origin.y) / along;
    if (t < 0.0f)
        return kNoPoint;
    return ray.Origin + ray.Direction * t;
}
}
