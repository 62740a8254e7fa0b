#include "Graphics_Engine/PipeLines/LightStage.h"

#include "Graphics_Engine/GraphicsDevice.h"
#include "Graphics_Engine/Lights/LightManager.h"
#include "Graphics_Engine/Model/Model.h"
#include "Graphics_Engine/PipeLines/FrameContext.h"
#include "Graphics_Engine/PipeLines/RenderTarget.h"
#include "Graphics_Engine/PipeLines/ShaderSource.h"
#include "Graphics_Engine/PipeLines/StageStates.h"
#include "Graphics_Engine/ShaderProgram.h"
#include "Graphics_Engine/VariableTable.h"

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
    if (m_Compute)
        RunCompute(frame, lighting);
    else
        RunVolumes(frame);
}

void LightStage::RunCompute(FrameContext& frame, RenderTarget& lighting)
{
    // 1. The lights that are on, then the sentinel.
    unsigned count = 0;
    if (frame.Lights != nullptr)
    {
        frame.Lights->Upload();
        count = frame.Lights->ActiveLights;
    }
    // 2. The pass's variables (sb_lights and t3D_LightList are shared variables the engine set).
    const int lightCount = static_cast<int>(count);
    m_Program->SetVariable("i_lightCount", lightCount);
    if (frame.Lights != nullptr)
    {
        m_Program->SetUnordered("rwt_LightList", frame.Lights->GetLightList().id);
    }
    m_Program->SetUnordered("rwt_Output", lighting.m_UnorderedView.id);
    // 3. Bind and apply; 4. one group per tile; 5. unbind.
    m_Program->Bind();
    m_Program->Apply();
    frame.Device.Dispatch(LightManager::TileCount(lighting.m_Width), LightManager::TileCount(lighting.m_Height), 1);
    frame.Device.Barrier();
    m_Program->Unbind();
}

void LightStage::RunVolumes(FrameContext& frame)
{
    // 1. Block A.
    m_StatesA.Apply(frame.States);
    // 2. to 4. The three lists.
    if (frame.Lights != nullptr)
    {
        const Math::Matrix4 viewPerspective = frame.Table.m_View * frame.Table.m_Perspective;
        BuildLightVolumes(frame.Lights->m_Records, viewPerspective, frame.Table.m_CameraPosition, m_Lists);
    }
    // 5. The outside list: "lightsphere", back faces culled (block B).
    m_Program->Bind();
    if (frame.LightSphere != nullptr)
    {
        const auto sphereIndices = static_cast<unsigned>(frame.LightSphere->Indices.size());
        frame.LightSphere->Bind(frame.Device);
        m_StatesB.ApplyRasterizerAndDepthState(frame.States);
        DrawList(frame, m_Lists.Outside, sphereIndices);
        // 6. The inside list: front faces culled (block A).
        m_StatesA.ApplyRasterizerAndDepthState(frame.States);
        DrawList(frame, m_Lists.Inside, sphereIndices);
    }
    // 7. The directional list over "FullScreenQuad", which faces the camera: block B's rasterizer, so that
    //    the front-face culling of the inside list does not take the quad away.
    if (frame.FullScreenQuad != nullptr)
    {
        frame.FullScreenQuad->Bind(frame.Device);
        m_StatesB.ApplyRasterizerAndDepthState(frame.States);
        DrawList(frame, m_Lists.Directional, static_cast<unsigned>(frame.FullScreenQuad->Indices.size()));
    }
    m_Program->Unbind();
    // 8. Empty the lists.
    m_Lists.Clear();
}

void LightStage::DrawList(FrameContext& frame, const std::vector<LightVolume>& list, unsigned indexCount)
{
    for (const LightVolume& volume : list)
    {
        m_Program->SetVariable("m_WorldViewPerspective", volume.WorldViewPerspective, sizeof(volume.WorldViewPerspective));
        m_Program->SetVariable("s_Light", volume.Record, sizeof(s_Light));
        m_Program->Apply();
        frame.Device.DrawIndexed(indexCount, 0, 0);
    }
}
}
