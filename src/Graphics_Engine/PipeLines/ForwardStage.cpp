#include "Graphics_Engine/PipeLines/ForwardStage.h"

#include "Graphics_Engine/PipeLines/FrameContext.h"
#include "Graphics_Engine/PipeLines/StageStates.h"

namespace Graphics
{
void ForwardStage::Initialize(RenderStateApplier& device, bool computeLighting)
{
    CreateStateBlock(m_States, device, ForwardStates(computeLighting));
}

void ForwardStage::ApplyStates(FrameContext& frame) const
{
    m_States.Apply(frame.States);
}

void ForwardStage::Run(FrameContext& frame)
{
    if (m_DrawForward)
        m_DrawForward(frame, *this);
}
}
