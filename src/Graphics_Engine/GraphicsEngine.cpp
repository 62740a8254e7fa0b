#include "Graphics_Engine/GraphicsEngine.h"

#include "engine/Window.h"
#include "utilities/Meta/Registration.h"

META_REGISTER_NS(Graphics, GraphicsEngine)
{
    DERIVE(System);
}

namespace Graphics
{
GraphicsEngine& GraphicsEngine::Get()
{
    static GraphicsEngine* engine = new GraphicsEngine();
    return *engine;
}

Meta::Data* GraphicsEngine::GetMeta() const
{
    return Meta::Get<GraphicsEngine>();
}

void GraphicsEngine::OnWindowResize(Event* event)
{
    auto* resize = static_cast<WindowResize*>(event);
    m_Width = resize->m_Width;
    m_Height = resize->m_Height;
}

void GraphicsEngine::OnWindowFocus(Event* event)
{
    m_Focused = static_cast<WindowFocus*>(event)->m_Focused;
}
}
