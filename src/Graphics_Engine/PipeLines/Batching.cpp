#include "Graphics_Engine/PipeLines/Batching.h"

#include "Graphics_Engine/Components/BaseGraphicsComponent.h"
#include "Graphics_Engine/PipeLines/InstanceBuffer/InstanceBuffer.h"
#include "Graphics_Engine/ShaderProgram.h"

namespace Graphics
{
namespace
{
// Draws what is pending with the component's count and mode.
void Flush(const BaseGraphicsComponent& component, ShaderProgram* program, InstanceBuffer& instances)
{
    instances.Draw(component.m_ElementCount, instances.RowsPerInstance(), program, component.m_DrawMode);
}

// The program of a component, resolved when its names changed; null when none can draw.
ShaderProgram* ProgramOf(BaseGraphicsComponent& component, ShaderManager* shaders)
{
    ShaderComponent& names = component.m_ShaderComponent;
    ShaderProgram* program = names.m_Dirty && shaders ? names.Resolve(*shaders) : names.m_Shader;
    return program && program->Loaded ? program : nullptr;
}
}

void DrawDeferredKey(const std::vector<DrawRecord>& records, ShaderManager* shaders, GraphicsDevice& device,
                     InstanceBuffer& instances)
{
    if (records.empty() || !records.front().Component)
        return;
    BaseGraphicsComponent& first = *records.front().Component;
    ShaderProgram* program = ProgramOf(first, shaders);
    if (!program)
        return;
    program->Bind();

    if (first.GetModelId() == 0)
    {
        for (const DrawRecord& record : records)
        {
            if (!record.Component)
                continue;
            record.Component->WriteInstance(record.World, program, instances);
            record.Component->Bind(device);
            Flush(*record.Component, program, instances);
        }
        return;
    }

    first.Bind(device);
    for (const DrawRecord& record : records)
    {
        if (!record.Component)
            continue;
        record.Component->WriteInstance(record.World, program, instances);
        if (instances.PendingRows >= instances.BatchCapacity ||
            instances.Cursor + instances.PendingRows >= instances.BufferCapacity || instances.FlushAfterDraw)
            Flush(first, program, instances);
    }
    if (instances.PendingInstances > 0)
        Flush(first, program, instances);
}

void DrawForwardRecord(const ForwardRecord& record, GraphicsDevice& device, InstanceBuffer& instances)
{
    if (!record.Component || !record.Shader || !record.Shader->Loaded)
        return;
    record.Shader->Bind();
    record.Component->Bind(device);
    record.Component->WriteInstance(record.World, record.Shader, instances);
    Flush(*record.Component, record.Shader, instances);
}
}
