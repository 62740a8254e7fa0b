#include "Components/Light/Light.h"

#include "Components/Transform/Transform.h"
#include "Graphics_Engine/Spaces/GraphicsSpace.h"
#include "engine/GameObject.h"
#include "engine/Space.h"
#include "utilities/Meta/Registration.h"

META_REGISTER_ENUM(LightType, {{"None", 0}, {"Point", 1}, {"Direction", 2}, {"Spot", 3}});

META_REGISTER(Light)
{
    DERIVE(Component);
    DESCRIPTION("A light: point, directional or spot, at the object's Transform plus Offset. Needs a Transform.");
    DEPENDENCY(Transform);
    MEMBER(Ambient, "Ambient term.");
    MEMBER(Diffuse, "Diffuse term.");
    MEMBER(Specular, "Specular term.");
    MEMBER(Range, "Radius of effect.");
    MEMBER(Direction, "Direction of Direction and Spot lights.");
    MEMBER(SpotPrams, "Inner angle, outer angle (radians) and falloff of a Spot light.");
    MEMBER(Attenuation, "Constant, linear and quadratic attenuation.");
    MEMBER(Offset, "Added to the Transform's position.");
    MEMBER(LightType, "The kind of light; None switches it off.");
}

Meta::Data* Light::GetMeta() const
{
    return Meta::Get<Light>();
}

namespace
{
Graphics::GraphicsSpace* GraphicsOf(const Component& component)
{
    Engine::Space* space = component.GetSpace();
    return space ? space->GetSystem<Graphics::GraphicsSpace>() : nullptr;
}
}

void Light::Initialize()
{
    m_Transform = m_Owner ? m_Owner->GetComponent<Transform>() : nullptr;
    if (m_Added)
        return;
    if (Graphics::GraphicsSpace* graphics = GraphicsOf(*this))
    {
        graphics->AddLight(this, m_Transform);
        m_Added = true;
    }
}

void Light::Uninitialize()
{
    if (m_Added)
    {
        if (Graphics::GraphicsSpace* graphics = GraphicsOf(*this))
            graphics->RemoveLight(this);
        m_Added = false;
    }
    m_Transform = nullptr;
}
