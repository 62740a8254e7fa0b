// Graphics::ImGuiStage: the immediate-mode GUI, drawn last over the window's
// picture with alpha blending and the scissor on, by "imGuiVertex" and
// "imGuiPixel". The GUI is not built yet: it holds its states and program and
// draws nothing.
#pragma once

#include "Graphics_Engine/RenderStateBlock.h"

namespace Graphics
{
struct FrameContext;
class ShaderProgram;
class ShaderSource;

class ImGuiStage
{
public:
    // Creates the state block and fetches the program.
    void Initialize(RenderStateApplier& device, ShaderSource& shaders);
    // Draws the GUI's lists: none yet.
    void Run(FrameContext& frame);
    // The stage's states.
    const RenderStateBlock& States() const { return m_States; }

    // The program; null when absent.
    ShaderProgram* m_Program = nullptr;

private:
    RenderStateBlock m_States;
};
}
