// Graphics::LightStage: lights the G-buffer into the lighting target. When
// lighting is the compute pass it runs "LightCompute" in groups of 16 by 16
// pixels, reading the targets (rt_Depth, rt_Normal, rt_Diffuse, rt_Specular,
// rt_Material) and writing rwt_Output; otherwise the caller has bound the
// lighting target and it draws with "baseLightVertex" and "baseLightPixel",
// adding into the target (block B: back faces culled, for the full-screen
// pass; block A culls front faces, for light volumes the camera stands in).
// Until lights exist, both light with the global ambient only.
#pragma once

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

private:
    RenderStateBlock m_StatesA;
    RenderStateBlock m_StatesB;
};
}
