#include "Graphics_Engine/PipeLines/InstanceBuffer/InstanceBuffer.h"

#include "Graphics_Engine/GraphicsDevice.h"
#include "Graphics_Engine/ShaderProgram.h"
#include "engine/Log.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace Graphics
{
InstanceBuffer::InstanceBuffer(GraphicsDevice& device, bool discardInstanceBuffer)
    : CanNoOverwrite(!discardInstanceBuffer), m_Device(device)
{
}

InstanceBuffer::~InstanceBuffer()
{
    if (Buffer)
        m_Device.DestroyBuffer(Buffer);
}

void InstanceBuffer::BuildBuffer()
{
    if (Buffer)
        m_Device.DestroyBuffer(Buffer);
    BufferDesc desc;
    desc.size = static_cast<std::uint32_t>(BufferCapacity * sizeof(InstanceRow));
    desc.kind = BufferKind::ShaderStorage;
    desc.usage = BufferUsage::Dynamic;
    Buffer = m_Device.CreateBuffer(desc);
    if (!Buffer)
        FATAL_ERROR_IN("Graphics::InstanceBuffer::BuildBuffer", "Failed To Create Instance Buffer");
}

void InstanceBuffer::WriteRow(const InstanceRow& row)
{
    Staging.push_back(row);
}

void InstanceBuffer::WriteMatrix(const Math::Matrix4& matrix)
{
    for (const auto& row : matrix.m)
        Staging.push_back({row[0], row[1], row[2], row[3]});
}

void InstanceBuffer::CloseInstance()
{
    const auto rows = static_cast<unsigned>(Staging.size());
    if (PendingRows + rows > BatchCapacity || Cursor + PendingRows + rows > BufferCapacity)
    {
        if (PendingInstances > 0)
        {
            FlushAfterDraw = true;
            return;
        }
        Cursor = 0;
        DiscardNext = true;
    }
    Pending.insert(Pending.end(), Staging.begin(), Staging.end());
    Staging.clear();
    PendingRows += rows;
    ++PendingInstances;
}

void InstanceBuffer::Upload()
{
    MapMode mode = MapMode::WriteNoOverwrite;
    if (DiscardNext || !CanNoOverwrite)
    {
        Cursor = 0;
        DiscardNext = false;
        mode = MapMode::WriteDiscard;
    }
    if (Buffer)
    {
        if (auto* memory = static_cast<InstanceRow*>(m_Device.Map(Buffer, mode)))
        {
            const std::size_t room = Cursor < BufferCapacity ? BufferCapacity - Cursor : 0;
            const std::size_t rows = std::min<std::size_t>(Pending.size(), room);
            if (rows > 0)
                std::memcpy(memory + Cursor, Pending.data(), rows * sizeof(InstanceRow));
            m_Device.Unmap(Buffer);
        }
    }
    Pending.clear();
}

void InstanceBuffer::Draw(unsigned count, unsigned rowsPerInstance, ShaderProgram* program, unsigned drawMode)
{
    Upload();
    if (program)
    {
        program->SetTexture("b_Instanced", Buffer.id);
        program->SetVariable("i_InstanceStart", static_cast<std::int32_t>(Cursor));
        program->SetVariable("i_InstanceSize", static_cast<std::int32_t>(rowsPerInstance));
        program->Apply();
    }
    const bool instanced = PendingInstances >= 2;
    if (drawMode == 0)
    {
        if (instanced)
            m_Device.DrawIndexedInstanced(count, PendingInstances, 0, 0, 0);
        else
            m_Device.DrawIndexed(count, 0, 0);
    }
    else
    {
        if (instanced)
            m_Device.DrawInstanced(count, PendingInstances, 0, 0);
        else
            m_Device.Draw(count, 0);
    }
    Cursor += PendingRows;
    PendingRows = 0;
    PendingInstances = 0;
    if (FlushAfterDraw)
    {
        FlushAfterDraw = false;
        CloseInstance();
    }
}

unsigned InstanceBuffer::RowsPerInstance() const
{
    return PendingInstances > 0 ? PendingRows / PendingInstances : 0;
}
}
