// Graphics::PostProcessEffect: a chain of full-screen passes run by the final
// stage over its ring of three targets. Run(source, target, scratch) with n
// passes: unless n is 1, the first pass reads `source` into the first of the
// pair (target, scratch); the middle passes go from the pair's current member
// to the other; the last pass reads the pair's current member as rt_Texture
// and `source` as rt_Orginal (with n = 1 it reads `source` alone) and writes
// the other member. It returns how many extra ring steps it took: (c + 1)
// modulo 2, c being the index of the member last read.
#pragma once

#include <string>
#include <vector>

namespace Graphics
{
struct FrameContext;
class RenderTarget;
class ShaderProgram;
class ShaderSource;

class PostProcessEffect
{
public:
    // One pass: a pixel shader run with the effect's vertex shader.
    struct Pass
    {
        std::string Vertex;
        std::string Pixel;
        // The program, fetched at Initialize; null when absent.
        ShaderProgram* Program = nullptr;
    };

    PostProcessEffect() = default;
    // An effect of these passes, each pixel shader with `vertex`.
    PostProcessEffect(const std::string& vertex, const std::vector<std::string>& pixels);
    virtual ~PostProcessEffect() = default;

    // Fetches each pass's program.
    virtual void Initialize(ShaderSource& shaders);
    // Runs the passes (see above); gives the extra ring steps taken.
    virtual unsigned Run(FrameContext& frame, RenderTarget& source, RenderTarget& target, RenderTarget& scratch);

    // The passes, in order.
    std::vector<Pass> m_Passes;
    // The arguments of the current run.
    RenderTarget* m_Source = nullptr;
    RenderTarget* m_Target = nullptr;
    RenderTarget* m_Scratch = nullptr;
    // The ring steps of the last run.
    unsigned m_Steps = 0;

private:
    void RunPass(FrameContext& frame, const Pass& pass, RenderTarget& input, RenderTarget* original,
                 RenderTarget& output);
};
}
