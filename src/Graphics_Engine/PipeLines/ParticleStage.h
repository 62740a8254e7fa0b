// Graphics::ParticleStage: the particles, after the forward pass, with the
// forward pass's blending and depth tested but not written. The particle
// systems are not built yet: it holds its states and draws nothing.
#pragma once

#include "Graphics_Engine/RenderStateBlock.h"

namespace Graphics
{
struct FrameContext;

class ParticleStage
{
public:
    // Creates the state block; IndependentBlendEnable follows `computeLighting`.
    void Initialize(RenderStateApplier& device, bool computeLighting);
    // Draws the frame's particle systems: none yet.
    void Run(FrameContext& frame);
    // The stage's states.
    const RenderStateBlock& States() const { return m_States; }

private:
    RenderStateBlock m_States;
};
}
