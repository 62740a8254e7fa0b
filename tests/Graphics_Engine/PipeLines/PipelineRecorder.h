// PipelineRecorder: a shader source and a state applier without a device for
// the pipeline's tests. It writes every program asked for and every state
// created into one list, in order, and gives no programs.
#pragma once

#include "Graphics_Engine/PipeLines/ShaderSource.h"
#include "Graphics_Engine/RenderStateApplier.h"

#include <string>
#include <vector>

class PipelineRecorder final : public Graphics::ShaderSource, public Graphics::RenderStateApplier
{
public:
    Graphics::ShaderProgram* GetProgram(const std::string& vertex, const std::string& geometry, const std::string& hull,
                                        const std::string& domain, const std::string& pixel) override
    {
        std::string entry = "program " + vertex;
        for (const std::string* name : {&geometry, &hull, &domain, &pixel})
            if (!name->empty())
                entry += " " + *name;
        Log.push_back(entry);
        return nullptr;
    }
    Graphics::ShaderProgram* GetCompute(const std::string& name) override
    {
        Log.push_back("compute " + name);
        return nullptr;
    }
    bool CreateBlendState(const Graphics::BlendDescription&) override
    {
        Log.push_back("states");
        return true;
    }
    bool CreateRasterizerState(const Graphics::RasterizerDescription&) override { return true; }
    bool CreateDepthStencilState(const Graphics::DepthStencilDescription&) override { return true; }
    void SetTopology(Graphics::PrimitiveTopology) override {}
    void SetBlendState(const Graphics::BlendDescription&, const float[4], unsigned) override {}
    void SetDepthStencilState(const Graphics::DepthStencilDescription&, unsigned) override {}
    void SetRasterizerState(const Graphics::RasterizerDescription&) override {}

    // Programs asked for ("program v [g] p", "compute name") and state blocks created ("states"), in order.
    std::vector<std::string> Log;
};
