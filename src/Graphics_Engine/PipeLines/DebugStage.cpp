#include "Graphics_Engine/PipeLines/DebugStage.h"

#include "Graphics_Engine/PipeLines/ShaderSource.h"
#include "Graphics_Engine/PipeLines/StageStates.h"

namespace Graphics
{
void DebugStage::Initialize(RenderStateApplier& device, ShaderSource& shaders)
{
    CreateStateBlock(m_States, device, DebugStates());
    m_LineProgram = shaders.GetProgram("lineVertex", "", "", "", "linearColor");
    m_ThickLineProgram = shaders.GetProgram("thickLineVertex", "lineGeo", "", "", "linearColor");
    m_WireFrameProgram = shaders.GetProgram("wireFrameVertex", "", "", "", "linearColor");
}

void DebugStage::Run(FrameContext&)
{
}
}
