// Graphics::FrameContext: what the pipeline's stages draw with during one
// frame: the device, the state applier, the variable table, the full-screen
// quad and whether lighting runs as a compute pass.
#pragma once

namespace Graphics
{
class GraphicsDevice;
class Model;
class RenderStateApplier;
class VariableTable;

struct FrameContext
{
    // The device drawn on.
    GraphicsDevice& Device;
    // Sets the stages' state blocks on the device.
    RenderStateApplier& States;
    // The shared variables.
    VariableTable& Table;
    // The model "FullScreenQuad", or null when there is none.
    Model* FullScreenQuad = nullptr;
    // Lighting is the compute pass.
    bool ComputeLighting = true;
};
}
