// Graphics::GeometryStage: the deferred pass. With the four G-buffer targets
// and depth bound, it sets its state block (no blending, solid, back faces
// culled, depth test LESS with writes) and draws the deferred lists through
// its draw function, which whoever owns the visible lists sets (the batching
// of the deferred map by model and shader). Without one it draws nothing.
#pragma once

#include "Graphics_Engine/RenderStateBlock.h"

#include <functional>

namespace Graphics
{
struct FrameContext;

class GeometryStage
{
public:
    // Draws the deferred lists with the stage's state set.
    using DrawFunction = std::function<void(FrameContext&)>;

    // Creates the state block.
    void Initialize(RenderStateApplier& device);
    // Sets the state block and calls the draw function.
    void Run(FrameContext& frame);
    // The stage's states.
    const RenderStateBlock& States() const { return m_States; }

    // The batching of the deferred lists; empty draws nothing.
    DrawFunction m_DrawDeferred;

private:
    RenderStateBlock m_States;
};
}
