// Graphics::FrameContext: what the pipeline's stages draw with during one
// frame: the device, the state applier, the variable table, the full-screen
// quad, whether lighting runs as a compute pass, the light manager and the
// light volume model.
#pragma once

namespace Graphics
{
class GraphicsDevice;
class LightManager;
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
    // The lights' records (and, with compute lighting, sb_lights and the light list); null for none.
    LightManager* Lights = nullptr;
    // The model "lightsphere", or null when there is none.
    Model* LightSphere = nullptr;
};
}
