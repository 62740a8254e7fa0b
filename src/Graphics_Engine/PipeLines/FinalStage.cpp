#include "Graphics_Engine/PipeLines/FinalStage.h"

#include "Graphics_Engine/GraphicsDevice.h"
#include "Graphics_Engine/PipeLines/FrameContext.h"
#include "Graphics_Engine/PipeLines/FullScreenPass.h"
#include "Graphics_Engine/PipeLines/PostProcessEffect.h"
#include "Graphics_Engine/PipeLines/ShaderSource.h"
#include "Graphics_Engine/PipeLines/StageStates.h"
#include "Graphics_Engine/ShaderProgram.h"

namespace Graphics
{
unsigned FinalStage::RunRing(std::size_t effectCount, const EffectRunner& run)
{
    unsigned current = 0;
    for (std::size_t i = 0; i < effectCount; ++i)
    {
        const unsigned steps = run(i, current, (current + 1) % 3, (current + 2) % 3);
        current = (current + 1 + steps) % 3;
    }
    return current;
}

void FinalStage::Initialize(RenderStateApplier& device, ShaderSource& shaders)
{
    CreateStateBlock(m_States, device, FinalStates());
    m_Shaders = &shaders;
}

bool FinalStage::CreateTargets(GraphicsDevice& device, int width, int height)
{
    const bool second = m_Second.Create(device, width, height, Format::B8G8R8A8_UNORM);
    const bool third = m_Third.Create(device, width, height, Format::B8G8R8A8_UNORM);
    return second && third;
}

void FinalStage::ReleaseTargets(GraphicsDevice& device)
{
    m_Second.Release(device);
    m_Third.Release(device);
}

unsigned FinalStage::Run(FrameContext& frame, RenderTarget& lighting,
                         const std::vector<std::unique_ptr<PostProcessEffect>>& effects, RenderTarget& window,
                         const Viewport& windowViewport)
{
    m_States.Apply(frame.States);
    const std::array<RenderTarget*, 3> ring{&lighting, &m_Second, &m_Third};
    const unsigned current = RunRing(effects.size(), [&](std::size_t effect, unsigned source, unsigned target,
                                                          unsigned scratch) {
        return effects[effect]->Run(frame, *ring[source], *ring[target], *ring[scratch]);
    });
    frame.Device.SetViewport(windowViewport);
    ShaderProgram* upscale = m_Shaders ? m_Shaders->GetProgram("baseLightVertex", "", "", "", "UpScale") : nullptr;
    if (upscale != nullptr && upscale->Loaded)
    {
        m_States.Apply(frame.States);
        window.Bind(frame.Device);
        DrawFullScreen(frame, upscale, {{"rt_Texture", ring[current]->m_ShaderView.id}});
    }
    return current;
}
}
