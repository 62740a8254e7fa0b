// Graphics::GraphicsEngine: the deferred renderer as an engine system. Not built
// yet: it draws nothing. It already follows the window: it listens to
// "WindowResize" and "WindowFocus" on the global event table and keeps the
// size and focus that the renderer will need.
#pragma once

#include "engine/System.h"

class Event;

namespace Graphics
{
class GraphicsEngine : public System
{
public:
    // The one graphics engine.
    static GraphicsEngine& Get();

    void Update(float dt) override {}
    Meta::Data* GetMeta() const override;
    // Shuts the graphics device down, before the rest of the engine goes.
    void ShutdownDevice() {}

    // Handler of "WindowResize": keeps the new size.
    void OnWindowResize(Event* event);
    // Handler of "WindowFocus": keeps the focus.
    void OnWindowFocus(Event* event);

    // Size of the window's client area, from the last WindowResize.
    unsigned m_Width = 0;
    unsigned m_Height = 0;
    // Whether the window has focus, from the last WindowFocus.
    bool m_Focused = true;
};
}
