// Graphics::GraphicsUpdateEvent: sent as "GraphicsUpdate" on a space's table
// at the start of its GraphicsSpace's update, with the frame time.
#pragma once

#include "engine/Event.h"

namespace Graphics
{
class GraphicsUpdateEvent : public Event
{
public:
    GraphicsUpdateEvent() = default;
    explicit GraphicsUpdateEvent(float dt) : m_Dt(dt) {}
    Meta::Data* GetMeta() const override;

    // Frame time in seconds.
    float m_Dt = 0.0f;
};
}
