// Graphics::FinalStage: the post-effects and the upscale to the window. It
// owns two targets in B8G8R8A8_UNORM of the render size, which with the
// lighting target make a ring of three: lighting, second, third. The current
// index starts at 0; each effect runs as Run(ring[current], ring[current+1],
// ring[current+2]) (indices modulo 3) and current becomes (current + 1 +
// its result) modulo 3. With no effects the lighting target itself is
// upscaled. The upscale draws the ring's current texture into the window
// through "baseLightVertex" and "UpScale" over the window viewport, then
// unbinds what that program holds.
#pragma once

#include "Graphics_Engine/DeviceTypes.h"
#include "Graphics_Engine/PipeLines/RenderTarget.h"
#include "Graphics_Engine/RenderStateBlock.h"

#include <array>
#include <functional>
#include <memory>
#include <vector>

namespace Graphics
{
struct FrameContext;
class PostProcessEffect;
class ShaderSource;

class FinalStage
{
public:
    // Runs one effect over (source, target, scratch) and gives its extra ring steps.
    using EffectRunner = std::function<unsigned(std::size_t effect, unsigned source, unsigned target, unsigned scratch)>;

    // The ring index holding the picture after `effectCount` effects, each run through `run` with the
    // ring indices of its three arguments.
    static unsigned RunRing(std::size_t effectCount, const EffectRunner& run);

    // Creates the state block and keeps where the upscale program is fetched from.
    void Initialize(RenderStateApplier& device, ShaderSource& shaders);
    // Makes the two ring targets of the render size.
    bool CreateTargets(GraphicsDevice& device, int width, int height);
    // Gives the two ring targets back.
    void ReleaseTargets(GraphicsDevice& device);
    // Runs the effects over the ring and upscales the result into `window` over `windowViewport`;
    // gives the ring index that was upscaled.
    unsigned Run(FrameContext& frame, RenderTarget& lighting, const std::vector<std::unique_ptr<PostProcessEffect>>& effects,
                 RenderTarget& window, const Viewport& windowViewport);
    // The stage's states.
    const RenderStateBlock& States() const { return m_States; }

    // The second and third members of the ring.
    RenderTarget m_Second;
    RenderTarget m_Third;

private:
    RenderStateBlock m_States;
    ShaderSource* m_Shaders = nullptr;
};
}
