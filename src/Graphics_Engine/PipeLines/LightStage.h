// Graphics::LightStage: lights the G-buffer into the lighting target.
//
// Compute path: uploads the lights that are on to sb_lights, sets
// i_lightCount, the light list (rwt_LightList) and the lighting target
// (rwt_Output), and runs "LightCompute" in groups of 16 by 16 pixels, one
// per tile (one more on an axis whose size is no multiple of 16).
//
// Volume path (the caller has bound the lighting target): block A, then the
// lights sorted into three lists (LightVolumes.h); the outside list is drawn
// as "lightsphere" volumes with block B's rasterizer and depth (back faces
// culled), the inside list with block A's (front faces culled), the
// directional list as "FullScreenQuad", each draw with its record as s_Light
// and its m_WorldViewPerspective, through "baseLightVertex" and
// "baseLightPixel". Blending is additive and depth is off in both blocks, so
// the order does not matter; the lists are emptied at the end. The ambient
// term is added afterwards by the "PostLighting" effect.
#pragma once

#include "Graphics_Engine/PipeLines/LightVolumes.h"
#include "Graphics_Engine/RenderStateBlock.h"

namespace Graphics
{
struct FrameContext;
class RenderTarget;
class ShaderProgram;
class ShaderSource;

class LightStage
{
public:
    // Pixels a side of one compute group.
    static constexpr unsigned kTileSize = 16;

    // Creates both blocks and fetches the compute program or the vertex and pixel program.
    void Initialize(RenderStateApplier& device, ShaderSource& shaders, bool computeLighting);
    // Lights the frame into `lighting`.
    void Run(FrameContext& frame, RenderTarget& lighting);
    // Block A: front faces culled.
    const RenderStateBlock& StatesA() const { return m_StatesA; }
    // Block B: back faces culled.
    const RenderStateBlock& StatesB() const { return m_StatesB; }

    // The program that lights: "LightCompute", or "baseLightVertex" with "baseLightPixel"; null when absent.
    ShaderProgram* m_Program = nullptr;
    // True when m_Program is the compute pass.
    bool m_Compute = true;
    // The volume path's lists, empty between frames.
    LightVolumeLists m_Lists;

private:
    void RunCompute(FrameContext& frame, RenderTarget& lighting);
    void RunVolumes(FrameContext& frame);
    void DrawList(FrameContext& frame, const std::vector<LightVolume>& list, unsigned indexCount);

    RenderStateBlock m_StatesA;
    RenderStateBlock m_StatesB;
};
}
