#include "Graphics_Engine/Components/BaseGraphicsComponent.h"

#include "Components/Transform/Transform.h"
#include "Graphics_Engine/GraphicsDevice.h"
#include "Graphics_Engine/Spaces/GraphicsSpace.h"
#include "engine/GameObject.h"
#include "engine/Space.h"
#include "utilities/Meta/Registration.h"

META_REGISTER_NS(Graphics, BaseGraphicsComponent)
{
    DERIVE(Component);
    DESCRIPTION("The base of every component the renderer draws.");
}

namespace Graphics
{
Meta::Data* BaseGraphicsComponent::GetMeta() const
{
    return Meta::Get<BaseGraphicsComponent>();
}

void BaseGraphicsComponent::Initialize()
{
    m_Transform = m_Owner ? m_Owner->GetComponent<Transform>() : nullptr;
    Engine::Space* space = GetSpace();
    if (GraphicsSpace* graphics = space ? space->GetSystem<GraphicsSpace>() : nullptr)
        graphics->AddGraphicsComponent(m_Owner->GetId(), this, m_Transform);
}

void BaseGraphicsComponent::Uninitialize()
{
    Engine::Space* space = GetSpace();
    if (GraphicsSpace* graphics = space ? space->GetSystem<GraphicsSpace>() : nullptr)
        graphics->RemoveGraphicsComponent(m_Owner->GetId(), this);
    m_Transform = nullptr;
}

void BaseGraphicsComponent::Bind(GraphicsDevice& device)
{
    device.SetPrimitiveTopology(static_cast<PrimitiveTopology>(m_Topology));
}

bool BaseGraphicsComponent::Pick(float& distance, bool, const Math::Point3D& origin, const Math::Vector3D&)
{
    if (!m_Transform)
        return false;
    distance = (m_Transform->m_Position - origin).Length();
    return true;
}

void BaseGraphicsComponent::WriteInstance(const Math::Matrix4&, ShaderProgram*, InstanceBuffer&)
{
}
}
