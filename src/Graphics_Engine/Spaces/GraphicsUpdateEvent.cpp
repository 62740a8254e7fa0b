#include "Graphics_Engine/Spaces/GraphicsUpdateEvent.h"

#include "utilities/Meta/Registration.h"

META_REGISTER_NS(Graphics, GraphicsUpdateEvent)
{
    DERIVE(Event);
    DESCRIPTION("Sent to a space as \"GraphicsUpdate\" when its graphics update starts.");
    MEMBER(m_Dt, "Frame time in seconds.");
}

Meta::Data* Graphics::GraphicsUpdateEvent::GetMeta() const
{
    return Meta::Get<Graphics::GraphicsUpdateEvent>();
}
