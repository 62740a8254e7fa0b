#include "Graphics_Engine/RenderLists.h"

#include "Graphics_Engine/Components/BaseGraphicsComponent.h"
#include "Graphics_Engine/Frustum.h"
#include "Graphics_Engine/ShaderLookup.h"
#include "Graphics_Engine/Spaces/SpaceRenderData.h"
#include "Graphics_Engine/WorldMatrix.h"

#include <algorithm>

namespace Graphics
{
void RenderLists::AddSpace(const std::shared_ptr<SpaceRenderData>& space)
{
    if (space && std::find(m_Spaces.begin(), m_Spaces.end(), space) == m_Spaces.end())
        m_Spaces.push_back(space);
}

void RenderLists::RemoveSpace(const SpaceRenderData* space)
{
    m_Spaces.erase(std::remove_if(m_Spaces.begin(), m_Spaces.end(),
                                  [space](const std::shared_ptr<SpaceRenderData>& listed) { return listed.get() == space; }),
                   m_Spaces.end());
}

void RenderLists::AddForward(const ForwardRecord& record)
{
    // Before the first entry strictly nearer: farthest first, ties in arrival order.
    auto position = m_Forward.begin();
    while (position != m_Forward.end() && !(position->DistanceSquared < record.DistanceSquared))
        ++position;
    if (m_SpareForward.empty())
    {
        m_Forward.insert(position, record);
        return;
    }
    auto node = m_SpareForward.begin();
    *node = record;
    m_Forward.splice(position, m_SpareForward, node);
}

void RenderLists::Build(const Math::Matrix4& viewProjection, const Math::Point3D& cameraPosition,
                        ShaderLookup& shaders)
{
    const Frustum frustum(viewProjection);

    for (auto& entry : m_Deferred)
        entry.second.clear();
    m_SpareForward.splice(m_SpareForward.end(), m_Forward);
    m_Particles.clear();

    for (const std::shared_ptr<SpaceRenderData>& space : m_Spaces)
    {
        if (!space || !space->Visible)
            continue;
        m_Visible.clear();
        space->Tree.GetVisibleObjects(frustum, m_Visible);
        for (int index : m_Visible)
        {
            const QuadTreeObject& object = space->Tree.GetObject(index);
            BaseGraphicsComponent* component = object.Component;
            if (!component)
                continue;
            ShaderProgram* shader = shaders.Resolve(component->m_ShaderComponent);
            if (!shaders.IsLoaded(shader))
                continue;
            const Math::Matrix4 world = MakeWorldMatrix(object.Position, object.Scale, object.Rotation);
            if (!shaders.IsForward(shader))
            {
                m_Deferred[DrawKey{component->GetModelId(), shader}].push_back(DrawRecord{world, component});
                continue;
            }
            ForwardRecord record;
            record.World = world;
            record.DistanceSquared = object.Position.DistanceSquared(cameraPosition);
            record.Component = component;
            record.Shader = shader;
            AddForward(record);
        }
        m_Particles.insert(m_Particles.end(), space->ParticleSystems.begin(), space->ParticleSystems.end());
    }

    for (auto entry = m_Deferred.begin(); entry != m_Deferred.end();)
        entry = entry->second.empty() ? m_Deferred.erase(entry) : std::next(entry);
}
}
