#include "Graphics_Engine/PipeLines/PostProcessEffect.h"

#include "Graphics_Engine/PipeLines/FrameContext.h"
#include "Graphics_Engine/PipeLines/FullScreenPass.h"
#include "Graphics_Engine/PipeLines/RenderTarget.h"
#include "Graphics_Engine/PipeLines/ShaderSource.h"

namespace Graphics
{
PostProcessEffect::PostProcessEffect(const std::string& vertex, const std::vector<std::string>& pixels)
{
    for (const std::string& pixel : pixels)
        m_Passes.push_back({vertex, pixel, nullptr});
}

void PostProcessEffect::Initialize(ShaderSource& shaders)
{
    for (Pass& pass : m_Passes)
        pass.Program = shaders.GetProgram(pass.Vertex, "", "", "", pass.Pixel);
}

unsigned PostProcessEffect::Run(FrameContext& frame, RenderTarget& source, RenderTarget& target,
                                RenderTarget& scratch)
{
    m_Source = &source;
    m_Target = &target;
    m_Scratch = &scratch;
    RenderTarget* pair[2] = {&target, &scratch};
    unsigned current = 0;
    const std::size_t count = m_Passes.size();
    if (count == 0)
        return m_Steps = 0;
    if (count != 1)
        RunPass(frame, m_Passes.front(), source, nullptr, *pair[0]);
    for (std::size_t i = 1; count > 2 && i + 1 < count; ++i)
    {
        RunPass(frame, m_Passes[i], *pair[current], nullptr, *pair[(current + 1) % 2]);
        current = (current + 1) % 2;
    }
    if (count == 1)
        RunPass(frame, m_Passes.back(), source, nullptr, *pair[(current + 1) % 2]);
    else
        RunPass(frame, m_Passes.back(), *pair[current], &source, *pair[(current + 1) % 2]);
    return m_Steps = (current + 1) % 2;
}

void PostProcessEffect::RunPass(FrameContext& frame, const Pass& pass, RenderTarget& input, RenderTarget* original,
                                RenderTarget& output)
{
    output.Bind(frame.Device);
    std::vector<std::pair<std::string, ResourceHandle>> textures{{"rt_Texture", input.m_ShaderView.id}};
    if (original != nullptr)
        textures.emplace_back("rt_Orginal", original->m_ShaderView.id);
    DrawFullScreen(frame, pass.Program, textures);
}
}
