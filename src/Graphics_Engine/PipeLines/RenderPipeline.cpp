#include "Graphics_Engine/PipeLines/RenderPipeline.h"

#include "Graphics_Engine/GraphicsDevice.h"
#include "Graphics_Engine/PipeLines/FrameContext.h"
#include "Graphics_Engine/VariableTable.h"

namespace Graphics
{
namespace
{
constexpr std::array<float, 4> kZero{0.0f, 0.0f, 0.0f, 0.0f};

Viewport Whole(int width, int height)
{
    return {0.0f, 0.0f, static_cast<float>(width), static_cast<float>(height), 0.0f, 1.0f};
}
}

RenderPipeline::RenderPipeline(GraphicsDevice* device) : m_Device(device)
{
}

RenderPipeline::~RenderPipeline()
{
    ReleaseTargets();
}

void RenderPipeline::Build(ShaderSource& shaders, RenderStateApplier& states, const PipelineOptions& options)
{
    m_ComputeLighting = options.ComputeLighting;
    m_Effects.clear();
    m_GeometryStage.Initialize(states);
    // 1. The light pass.
    m_LightStage.Initialize(states, shaders, options.ComputeLighting);
    // 2. The particle stage's states.
    m_ParticleStage.Initialize(states, options.ComputeLighting);
    // 3. The GUI stage.
    m_ImGuiStage.Initialize(states, shaders);
    // 4. The debug stage and its three programs.
    m_DebugStage.Initialize(states, shaders);
    // 5. The forward stage's states.
    m_ForwardStage.Initialize(states, options.ComputeLighting);
    // 6. Without compute lighting, the lit image is finished by a post pass.
    if (!options.ComputeLighting)
        m_Effects.push_back(std::make_unique<PostProcessEffect>("PostProcessVertex", std::vector<std::string>{"PostLighting"}));
    // 7. The glow effect (skipped by no-post) is not built yet; it is left out either way, so that the ring
    //    never upscales a target nobody wrote.
    // 8. Each effect's Initialize.
    for (const auto& effect : m_Effects)
        effect->Initialize(shaders);
    m_FinalStage.Initialize(states, shaders);
}

bool RenderPipeline::CreateTargets(int renderWidth, int renderHeight, int clientWidth, int clientHeight,
                                   VariableTable& table)
{
    ReleaseTargets();
    m_RenderViewport = Whole(renderWidth, renderHeight);
    m_WindowViewport = Whole(clientWidth, clientHeight);
    m_BackBuffer.WrapWindow(clientWidth, clientHeight);
    if (m_Device == nullptr)
        return false;
    GraphicsDevice& device = *m_Device;
    bool made = m_Normal.Create(device, renderWidth, renderHeight, Format::R10G10B10A2_UNORM);
    made = m_Diffuse.Create(device, renderWidth, renderHeight, Format::R8G8B8A8_UNORM) && made;
    made = m_Specular.Create(device, renderWidth, renderHeight, Format::R8G8B8A8_UNORM) && made;
    made = m_Material.Create(device, renderWidth, renderHeight, Format::R8G8B8A8_UNORM) && made;
    made = m_Lighting.Create(device, renderWidth, renderHeight, Format::R8G8B8A8_UNORM, BindUnorderedAccess) && made;
    made = m_Depth.CreateDepth(device, renderWidth, renderHeight) && made;
    made = m_FinalStage.CreateTargets(device, renderWidth, renderHeight) && made;
    table.SetResource("rt_Normal", m_Normal.m_ShaderView.id);
    table.SetResource("rt_Diffuse", m_Diffuse.m_ShaderView.id);
    table.SetResource("rt_Specular", m_Specular.m_ShaderView.id);
    table.SetResource("rt_Material", m_Material.m_ShaderView.id);
    table.SetResource("rt_Depth", m_Depth.m_ShaderView.id);
    return made;
}

void RenderPipeline::ReleaseTargets()
{
    if (m_Device == nullptr)
        return;
    GraphicsDevice& device = *m_Device;
    device.BindRenderTarget({});
    for (const auto& [key, target] : m_Combined)
        device.DestroyRenderTarget(target);
    m_Combined.clear();
    for (RenderTarget* target : {&m_Normal, &m_Diffuse, &m_Specular, &m_Material, &m_Lighting, &m_BackBuffer, &m_Depth})
        target->Release(device);
    m_FinalStage.ReleaseTargets(device);
}

RenderTargetHandle RenderPipeline::Combined(const std::vector<const RenderTarget*>& colours, const RenderTarget* depth)
{
    std::vector<std::uint32_t> key;
    RenderTargetDesc desc;
    for (const RenderTarget* colour : colours)
    {
        key.push_back(colour->m_Texture.id);
        desc.colours.push_back(colour->m_Texture);
    }
    key.push_back(depth ? depth->m_Texture.id : 0);
    desc.depth = depth ? depth->m_Texture : TextureHandle{};
    auto found = m_Combined.find(key);
    if (found != m_Combined.end())
        return found->second;
    const RenderTargetHandle made = m_Device->CreateRenderTarget(desc);
    m_Combined.emplace(key, made);
    return made;
}

void RenderPipeline::Run(FrameContext& frame)
{
    if (m_Device == nullptr || !m_Lighting.IsValid())
        return;
    GraphicsDevice& device = frame.Device;
    const RenderTargetHandle gBuffer = Combined({&m_Normal, &m_Diffuse, &m_Specular, &m_Material}, &m_Depth);
    // 1. Clears.
    device.BindRenderTarget(gBuffer);
    for (std::uint32_t i = 0; i < 4; ++i)
        device.ClearColor(i, kZero);
    device.ClearDepth(1.0f);
    if (!m_ComputeLighting)
    {
        m_Lighting.Bind(device);
        device.ClearColor(0, kZero);
    }
    // 2. The G-buffer with depth, over the render viewport.
    device.BindRenderTarget(gBuffer);
    device.SetViewport(m_RenderViewport);
    // 3. The deferred objects.
    m_GeometryStage.Run(frame);
    // 4. Lighting: a compute pass with nothing bound, or a pass drawn into the lighting target.
    device.BindRenderTarget({});
    if (!m_ComputeLighting)
    {
        m_Lighting.Bind(device);
        device.SetViewport(m_RenderViewport);
    }
    m_LightStage.Run(frame, m_Lighting);
    // 5. The lighting target and rt_Material with depth.
    device.BindRenderTarget(Combined({&m_Lighting, &m_Material}, &m_Depth));
    device.SetViewport(m_RenderViewport);
    // 6. to 8. Forward objects, particles, debug drawing.
    m_ForwardStage.Run(frame);
    m_ParticleStage.Run(frame);
    m_DebugStage.Run(frame);
    // 9. The lighting target alone, then the effects and the upscale.
    m_Lighting.Bind(device);
    m_LastUpscaled = m_FinalStage.Run(frame, m_Lighting, m_Effects, m_BackBuffer, m_WindowViewport);
}
}
