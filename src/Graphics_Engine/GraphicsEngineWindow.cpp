// The graphics engine and the window: going full screen (a popup over the
// monitor, not quite covering it) and windowed (1024 by 576 inside the frame,
// centred), and following the window's size and focus messages.
#include "Graphics_Engine/GraphicsEngine.h"

#include "Graphics_Engine/Resolution.h"
#include "engine/Window.h"
#include "platform/NativeWindow.h"

namespace Graphics
{
void GraphicsEngine::GoFullscreen()
{
    if (m_Window == nullptr)
        return;
    Platform::DisplayRect monitor = m_Window->GetMonitorRect();
    // The window does not quite cover the monitor.
    monitor.width = monitor.left + monitor.width - 2;
    monitor.left = 2;
    m_MonitorWidth = monitor.width;
    m_MonitorHeight = monitor.height;
    m_Window->SetPopup(monitor);
}

void GraphicsEngine::GoWindowed()
{
    if (m_Window != nullptr)
        m_Window->SetWindowed(kResolutions[0].width, kResolutions[0].height);
}

void GraphicsEngine::SetFullscreen(bool fullscreen)
{
    Fullscreen = fullscreen;
    if (!Initialized)
        return;
    if (fullscreen)
        GoFullscreen();
    else
        GoWindowed();
}

void GraphicsEngine::OnWindowResize(Event* event)
{
    auto* resize = static_cast<WindowResize*>(event);
    m_Width = resize->m_Width;
    m_Height = resize->m_Height;
    if (!Initialized)
        return;
    switch (resize->m_Mode)
    {
    case ScreenMode::Fullscreen:
        SetFullscreen(true);
        break;
    case ScreenMode::Windowed:
        SetFullscreen(false);
        break;
    case ScreenMode::Toggle:
        SetFullscreen(!Fullscreen);
        break;
    case ScreenMode::Keep:
    default:
        Resize(static_cast<int>(resize->m_Width), static_cast<int>(resize->m_Height));
        break;
    }
}

void GraphicsEngine::OnWindowFocus(Event* event)
{
    m_Focused = static_cast<WindowFocus*>(event)->m_Focused;
    if (!Initialized || !Fullscreen || m_Window == nullptr)
        return;
    if (m_Focused)
    {
        GoFullscreen();
        m_Window->Restore();
    }
    else
        m_Window->Minimize();
}
}
