// Graphics::RenderPipeline: the targets, stages and post-effects of a frame.
// It owns, in this order: the normal (R10G10B10A2_UNORM, rt_Normal), diffuse,
// specular and material (R8G8B8A8_UNORM, rt_Diffuse, rt_Specular,
// rt_Material) targets, the lighting target (R8G8B8A8_UNORM with unordered
// access), the back-buffer target (the window), the depth buffer (rt_Depth),
// the render and window viewports, the stages (geometry, light, GUI, debug,
// particles, forward, final) and the post-effects.
//
// Build makes the stages in this order: the light stage ("LightCompute", or
// "baseLightVertex" with "baseLightPixel"), the particle states, the GUI stage,
// the debug stage, the forward states, the "PostLighting" effect (with
// "PostProcessVertex") when lighting is not the compute pass, then each
// effect's Initialize. The glow effect is not built yet, so `no-post` and a
// plain run give the same list. The geometry stage's states come first and the
// final stage's last.
//
// Run draws one frame: clear the four G-buffer targets (and, without compute
// lighting, the lighting target) and depth; the geometry stage into the
// G-buffer with depth over the render viewport; the light stage; the forward
// stage into the lighting target and rt_Material with depth; particles;
// debug; the final stage from the lighting target to the window.
#pragma once

#include "Graphics_Engine/PipeLines/DebugStage.h"
#include "Graphics_Engine/PipeLines/FinalStage.h"
#include "Graphics_Engine/PipeLines/ForwardStage.h"
#include "Graphics_Engine/PipeLines/GeometryStage.h"
#include "Graphics_Engine/PipeLines/ImGuiStage.h"
#include "Graphics_Engine/PipeLines/LightStage.h"
#include "Graphics_Engine/PipeLines/ParticleStage.h"
#include "Graphics_Engine/PipeLines/PostProcessEffect.h"
#include "Graphics_Engine/PipeLines/RenderTarget.h"

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace Graphics
{
class VariableTable;

// What decides the pipeline's make-up.
struct PipelineOptions
{
    // Lighting is the compute pass.
    bool ComputeLighting = true;
    // The command-line switch no-post: no glow effect.
    bool NoPost = false;
};

class RenderPipeline
{
public:
    // A pipeline on `device` (null: no device; it holds no targets and draws nothing).
    explicit RenderPipeline(GraphicsDevice* device);
    ~RenderPipeline();
    RenderPipeline(const RenderPipeline&) = delete;
    RenderPipeline& operator=(const RenderPipeline&) = delete;

    // Makes the stages and effects in their construction order.
    void Build(ShaderSource& shaders, RenderStateApplier& states, const PipelineOptions& options);
    // Makes every target at the render size, wraps the window at the client size, sets both viewports and
    // publishes the targets' views in `table`; false when a target could not be made.
    bool CreateTargets(int renderWidth, int renderHeight, int clientWidth, int clientHeight, VariableTable& table);
    // Gives every target and view back.
    void ReleaseTargets();
    // Draws one frame into the window.
    void Run(FrameContext& frame);

    // The stages and effects, for the engine and for tests.
    GeometryStage& Geometry() { return m_GeometryStage; }
    LightStage& Light() { return m_LightStage; }
    ImGuiStage& ImGui() { return m_ImGuiStage; }
    DebugStage& Debug() { return m_DebugStage; }
    ParticleStage& Particles() { return m_ParticleStage; }
    ForwardStage& Forward() { return m_ForwardStage; }
    FinalStage& Final() { return m_FinalStage; }
    const std::vector<std::unique_ptr<PostProcessEffect>>& Effects() const { return m_Effects; }
    // The ring index upscaled in the last frame.
    unsigned LastUpscaled() const { return m_LastUpscaled; }

    RenderTarget m_Normal;
    RenderTarget m_Diffuse;
    RenderTarget m_Specular;
    RenderTarget m_Material;
    RenderTarget m_Lighting;
    RenderTarget m_BackBuffer;
    RenderTarget m_Depth;
    Viewport m_RenderViewport;
    Viewport m_WindowViewport;

private:
    // The device target drawing into these colour targets (and depth), made once per set.
    RenderTargetHandle Combined(const std::vector<const RenderTarget*>& colours, const RenderTarget* depth);

    GraphicsDevice* m_Device;
    GeometryStage m_GeometryStage;
    LightStage m_LightStage;
    ImGuiStage m_ImGuiStage;
    DebugStage m_DebugStage;
    ParticleStage m_ParticleStage;
    ForwardStage m_ForwardStage;
    FinalStage m_FinalStage;
    std::vector<std::unique_ptr<PostProcessEffect>> m_Effects;
    bool m_ComputeLighting = true;
    unsigned m_LastUpscaled = 0;
    std::map<std::vector<std::uint32_t>, RenderTargetHandle> m_Combined;
};
}
