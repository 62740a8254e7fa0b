#include "Graphics_Engine/PipeLines/FullScreenPass.h"

#include "Graphics_Engine/Model/Model.h"
#include "Graphics_Engine/PipeLines/FrameContext.h"
#include "Graphics_Engine/ShaderProgram.h"
#include "engine/Math/Matrix4.h"

namespace Graphics
{
void DrawFullScreen(FrameContext& frame, ShaderProgram* program,
                    const std::vector<std::pair<std::string, ResourceHandle>>& textures)
{
    if (program == nullptr || !program->Loaded || frame.FullScreenQuad == nullptr)
        return;
    program->Bind();
    frame.FullScreenQuad->Bind(frame.Device);
    float identity[16];
    Math::Matrix4::Identity().Std140Layout(identity);
    program->SetVariable("m_WorldViewPerspective", identity, sizeof(identity));
    for (const auto& [name, view] : textures)
        program->SetTexture(name, view);
    program->Apply();
    frame.Device.DrawIndexed(6, 0, 0);
    program->Unbind();
}
}
