#include "Graphics_Engine/PipeLines/ParticleStage.h"

#include "Graphics_Engine/PipeLines/StageStates.h"

namespace Graphics
{
void ParticleStage::Initialize(RenderStateApplier& device, bool computeLighting)
{
    CreateStateBlock(m_States, device, ParticleStates(computeLighting));
}

void ParticleStage::Run(FrameContext&)
{
}
}
