// A graphics component for tests: a chosen model id, and picking that hits at
// a chosen distance (or misses), with no geometry and no GL context.
#pragma once

#include "Graphics_Engine/Components/BaseGraphicsComponent.h"

class TestGraphicsComponent : public Graphics::BaseGraphicsComponent
{
public:
    explicit TestGraphicsComponent(unsigned modelId = 1) : m_ModelId(modelId) {}
    Component* Clone() const override { return new TestGraphicsComponent(m_ModelId); }
    unsigned GetModelId() const override { return m_ModelId; }
    bool Pick(float& distance, bool dummy, const Math::Point3D& origin, const Math::Vector3D& direction) override
    {
        ++m_PickCalls;
        if (m_PickDistance < 0.0f)
            return BaseGraphicsComponent::Pick(distance, dummy, origin, direction);
        distance = m_PickDistance;
        return true;
    }

    // The model id reported.
    unsigned m_ModelId;
    // Distance reported by Pick; negative uses the base class's answer.
    float m_PickDistance = -1.0f;
    // How many times Pick was asked.
    int m_PickCalls = 0;
};
