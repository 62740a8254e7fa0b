#include "Graphics_Engine/PipeLines/GeometryStage.h"

#include "Graphics_Engine/PipeLines/FrameContext.h"
#include "Graphics_Engine/PipeLines/StageStates.h"

namespace Graphics
{
void GeometryStage::Initialize(RenderStateApplier& device)
{
    CreateStateBlock(m_States, device, GeometryStates());
}

void GeometryStage::Run(FrameContext& frame)
{
    m_States.Apply(frame.States);
    if (m_DrawDeferred)
        m_DrawDeferred(frame);
}
}
