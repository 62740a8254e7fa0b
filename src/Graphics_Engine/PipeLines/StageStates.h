// The fixed-function states of the pipeline's stages, as plain descriptions:
// every rasterizer state has FrontCounterClockwise and DepthClipEnable on.
//
//   stage              blend                                  fill, cull          depth
//   geometry           none                                   solid, back         test LESS, write on
//   light, block A     ONE, ONE, ADD (colour and alpha)       solid, front        off
//   light, block B     as A                                   solid, back         off
//   forward, particles two-target blending (below)            solid, none         test LESS, write off
//   debug              none                                   wireframe, back     default
//   GUI                SRC_ALPHA, INV_SRC_ALPHA, ADD;         solid, none,        off
//                      alpha ONE, ONE, ADD                    scissor on
//   final (upscale)    none                                   solid, none         off
//
// Forward and particle blending: target 0 ONE, INV_SRC_ALPHA, ADD, alpha ONE, ONE, MAX; target 1 the
// same with destination ZERO, alpha destination ZERO and alpha ADD; all four channels written;
// IndependentBlendEnable follows ComputeLighting.
#pragma once

#include "Graphics_Engine/RenderStateApplier.h"
#include "Graphics_Engine/RenderStateBlock.h"
#include "Graphics_Engine/RenderStates.h"

namespace Graphics
{
// The three descriptions of one state block.
struct StageStateDescriptions
{
    BlendDescription Blend;
    RasterizerDescription Rasterizer;
    DepthStencilDescription DepthStencil;
};

StageStateDescriptions GeometryStates();
StageStateDescriptions LightStatesA();
StageStateDescriptions LightStatesB();
StageStateDescriptions ForwardStates(bool computeLighting);
StageStateDescriptions ParticleStates(bool computeLighting);
StageStateDescriptions DebugStates();
StageStateDescriptions ImGuiStates();
StageStateDescriptions FinalStates();

// Creates the block's three states on `device` (each kept in the block even when refused).
void CreateStateBlock(RenderStateBlock& block, RenderStateApplier& device, const StageStateDescriptions& states);
}
