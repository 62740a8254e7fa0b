// Graphics::ForwardStage: the forward pass, drawn into the lighting target and
// rt_Material with depth tested but not written. Its blending writes the lit
// colour over what lies behind (ONE, INV_SRC_ALPHA; alpha by MAX) into target
// 0 and replaces target 1 (ONE, ZERO); the two targets blend independently
// when lighting is the compute pass. The forward records are drawn, farthest
// first, through the draw function that whoever owns the visible lists sets.
#pragma once

#include "Graphics_Engine/RenderStateBlock.h"

#include <functional>

namespace Graphics
{
struct FrameContext;

class ForwardStage
{
public:
    // Draws the forward list; it applies the stage's states before each record (ApplyStates).
    using DrawFunction = std::function<void(FrameContext&, ForwardStage&)>;

    // Creates the state block; IndependentBlendEnable follows `computeLighting`.
    void Initialize(RenderStateApplier& device, bool computeLighting);
    // Calls the draw function, if any.
    void Run(FrameContext& frame);
    // Sets the stage's state block.
    void ApplyStates(FrameContext& frame) const;
    // The stage's states.
    const RenderStateBlock& States() const { return m_States; }

    // The drawing of the forward records; empty draws nothing.
    DrawFunction m_DrawForward;

private:
    RenderStateBlock m_States;
};
}
