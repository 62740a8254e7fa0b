#include "Graphics_Engine/PipeLines/ImGuiStage.h"

#include "Graphics_Engine/PipeLines/ShaderSource.h"
#include "Graphics_Engine/PipeLines/StageStates.h"

namespace Graphics
{
void ImGuiStage::Initialize(RenderStateApplier& device, ShaderSource& shaders)
{
    CreateStateBlock(m_States, device, ImGuiStates());
    m_Program = shaders.GetProgram("imGuiVertex", "", "", "", "imGuiPixel");
}

void ImGuiStage::Run(FrameContext&)
{
}
}
