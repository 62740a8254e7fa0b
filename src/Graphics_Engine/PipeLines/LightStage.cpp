#include "Graphics_Engine/PipeLines/LightStage.h"

#include "Graphics_Engine/GraphicsDevice.h"
#include "Graphics_Engine/PipeLines/FrameContext.h"
#include "Graphics_Engine/PipeLines/FullScreenPass.h"
#include "Graphics_Engine/PipeLines/RenderTarget.h"
#include "Graphics_Engine/PipeLines/ShaderSource.h"
#include "Graphics_Engine/PipeLines/StageStates.h"
#include "Graphics_Engine/ShaderProgram.h"

namespace Graphics
{
void LightStage::Initialize(RenderStateApplier& device, ShaderSource& shaders, bool computeLighting)
{
    m_Compute = computeLighting;
    CreateStateBlock(m_StatesA, device, LightStatesA());
    CreateStateBlock(m_StatesB, device, LightStatesB());
    m_Program = computeLighting ? shaders.GetCompute("LightCompute")
                                : shaders.GetProgram("baseLightVertex", "", "", "", "baseLightPixel");
}

void LightStage::Run(FrameContext& frame, RenderTarget& lighting)
{
    if (m_Program == nullptr || !m_Program->Loaded)
        return;
    if (!m_Compute)
    {
        m_StatesB.Apply(frame.States);
        DrawFullScreen(frame, m_Program, {});
        return;
    }
    m_Program->Bind();
    m_Program->SetUnordered("rwt_Output", lighting.m_UnorderedView.id);
    m_Program->Apply();
    const auto groups = [](int pixels) { return (static_cast<unsigned>(pixels) + kTileSize - 1) / kTileSize; };
    frame.Device.Dispatch(groups(lighting.m_Width), groups(lighting.m_Height), 1);
    frame.Device.Barrier();
    m_Program->Unbind();
}
}
