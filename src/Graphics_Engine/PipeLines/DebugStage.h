// Graphics::DebugStage: the debug lines, thick lines and wireframes, after the
// particles. It holds its wireframe state block and its three programs:
// "lineVertex" with "linearColor", "thickLineVertex" with geometry "lineGeo"
// and "linearColor", "wireFrameVertex" with "linearColor". The debug drawing
// records are not built yet: it draws nothing.
#pragma once

#include "Graphics_Engine/RenderStateBlock.h"

namespace Graphics
{
struct FrameContext;
class ShaderProgram;
class ShaderSource;

class DebugStage
{
public:
    // Creates the state block and fetches the three programs.
    void Initialize(RenderStateApplier& device, ShaderSource& shaders);
    // Draws the debug records: none yet.
    void Run(FrameContext& frame);
    // The stage's states.
    const RenderStateBlock& States() const { return m_States; }

    // Whether the vertex buffer was made.
    bool m_Created = false;
    // Vertices per draw.
    unsigned m_BatchSize = 1024;
    // The three programs; null when absent.
    ShaderProgram* m_LineProgram = nullptr;
    ShaderProgram* m_ThickLineProgram = nullptr;
    ShaderProgram* m_WireFrameProgram = nullptr;

private:
    RenderStateBlock m_States;
};
}
