// The instance buffer's rules without a GL context: closing instances, the
// flush it asks for, uploads with discard and no-overwrite, and the draw calls.
#include "Graphics_Engine/PipeLines/InstanceBuffer/InstanceBuffer.h"

#include "support/RecordingDevice.h"

#include "support/ReportCapture.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace Graphics;

namespace
{
// Writes and closes one instance of `rows` rows, each row holding `tag` in x and its row number in y.
void WriteInstance(InstanceBuffer& buffer, unsigned rows, float tag)
{
    for (unsigned row = 0; row < rows; ++row)
        buffer.WriteRow({tag, float(row), 0.0f, 0.0f});
    buffer.CloseInstance();
}

// Row `index` of the GPU buffer as the device holds it.
InstanceRow GpuRow(RecordingDevice& device, const InstanceBuffer& buffer, unsigned index)
{
    InstanceRow row{};
    const auto& bytes = device.buffers.at(buffer.Buffer.id).bytes;
    std::memcpy(row.data(), bytes.data() + index * sizeof(InstanceRow), sizeof(InstanceRow));
    return row;
}

class InstanceBufferTest : public testing::Test
{
protected:
    void SetUp() override { m_Buffer.BuildBuffer(); }

    RecordingDevice m_Device;
    InstanceBuffer m_Buffer{m_Device};
};
}

TEST_F(InstanceBufferTest, TheGpuBufferIsADynamicStorageBufferOfAThousandRows)
{
    ASSERT_TRUE(m_Buffer.Buffer);
    const RecordingDevice::Buffer& made = m_Device.buffers.at(m_Buffer.Buffer.id);
    EXPECT_EQ(made.desc.size, 1000u * 16u);
    EXPECT_EQ(made.desc.kind, BufferKind::ShaderStorage);
    EXPECT_EQ(made.desc.usage, BufferUsage::Dynamic);
    EXPECT_EQ(m_Buffer.BatchCapacity, 1000u);
    EXPECT_EQ(m_Buffer.BufferCapacity, 1000u);
    EXPECT_TRUE(m_Buffer.CanNoOverwrite);
}

TEST(InstanceBufferFailureTest, ARefusedBufferIsReportedFromBuildBufferAndDrawsGoOn)
{
    RecordingDevice device;
    device.refuseBuffers = BufferKind::ShaderStorage;
    InstanceBuffer buffer(device);
    ReportCapture capture;
    buffer.BuildBuffer();
    EXPECT_FALSE(buffer.Buffer);
    WriteInstance(buffer, 11, 1.0f);
    buffer.Draw(36, 11, nullptr, 0);
    ASSERT_EQ(device.draws.size(), 1u);
    const std::string text = capture.Text();
    EXPECT_NE(text.find("Failed To Create Instance Buffer"), std::string::npos) << text;
    EXPECT_NE(text.find("Function: Graphics::InstanceBuffer::BuildBuffer"), std::string::npos) << text;
    EXPECT_NE(text.find("Graphics_Engine/PipeLines/InstanceBuffer/InstanceBuffer"), std::string::npos) << text;
}

TEST_F(InstanceBufferTest, ClosingAnInstanceMovesItsRowsToPendingAndCountsThem)
{
    WriteInstance(m_Buffer, 11, 1.0f);
    WriteInstance(m_Buffer, 11, 2.0f);
    EXPECT_TRUE(m_Buffer.Staging.empty());
    EXPECT_EQ(m_Buffer.Pending.size(), 22u);
    EXPECT_EQ(m_Buffer.PendingRows, 22u);
    EXPECT_EQ(m_Buffer.PendingInstances, 2u);
    EXPECT_EQ(m_Buffer.RowsPerInstance(), 11u);
    EXPECT_FALSE(m_Buffer.FlushAfterDraw);
}

TEST_F(InstanceBufferTest, AnInstanceThatWouldOverfillTheBatchAsksForAFlushAndStaysStaged)
{
    for (int i = 0; i < 100; ++i)
        WriteInstance(m_Buffer, 10, float(i));
    EXPECT_EQ(m_Buffer.PendingRows, 1000u);
    WriteInstance(m_Buffer, 10, 100.0f);
    EXPECT_TRUE(m_Buffer.FlushAfterDraw);
    EXPECT_EQ(m_Buffer.Staging.size(), 10u);
    EXPECT_EQ(m_Buffer.PendingInstances, 100u);
    EXPECT_EQ(m_Buffer.PendingRows, 1000u);
}

TEST_F(InstanceBufferTest, ADrawWithAFlushAskedForClosesTheStagedInstanceAfterwards)
{
    m_Buffer.Cursor = 500;
    for (int i = 0; i < 45; ++i)
        WriteInstance(m_Buffer, 11, float(i));
    WriteInstance(m_Buffer, 11, 45.0f); // 500 + 495 + 11 > 1000
    ASSERT_TRUE(m_Buffer.FlushAfterDraw);
    m_Buffer.Draw(36, 11, nullptr, 0);
    ASSERT_EQ(m_Device.draws.size(), 1u);
    EXPECT_EQ(m_Device.draws[0].kind, "DrawIndexedInstanced");
    EXPECT_EQ(m_Device.draws[0].instances, 45u);
    EXPECT_FALSE(m_Buffer.FlushAfterDraw);
    // The staged instance no longer fits behind the cursor (995): it starts the buffer again.
    EXPECT_TRUE(m_Buffer.Staging.empty());
    EXPECT_EQ(m_Buffer.PendingInstances, 1u);
    EXPECT_EQ(m_Buffer.PendingRows, 11u);
    EXPECT_EQ(m_Buffer.Cursor, 0u);
    EXPECT_TRUE(m_Buffer.DiscardNext);
    m_Buffer.Draw(36, 11, nullptr, 0);
    ASSERT_EQ(m_Device.maps.size(), 2u);
    EXPECT_EQ(m_Device.maps[1].mode, MapMode::WriteDiscard);
    EXPECT_EQ(GpuRow(m_Device, m_Buffer, 0)[0], 45.0f);
    EXPECT_EQ(m_Buffer.Cursor, 11u);
}

TEST_F(InstanceBufferTest, AnInstanceThatDoesNotFitBehindTheCursorWithNonePendingRestartsAtZeroWithADiscard)
{
    m_Buffer.Cursor = 995;
    WriteInstance(m_Buffer, 11, 7.0f);
    EXPECT_FALSE(m_Buffer.FlushAfterDraw);
    EXPECT_EQ(m_Buffer.Cursor, 0u);
    EXPECT_TRUE(m_Buffer.DiscardNext);
    EXPECT_EQ(m_Buffer.PendingInstances, 1u);
    m_Buffer.Draw(36, 11, nullptr, 0);
    ASSERT_EQ(m_Device.maps.size(), 1u);
    EXPECT_EQ(m_Device.maps[0].mode, MapMode::WriteDiscard);
    EXPECT_FALSE(m_Buffer.DiscardNext);
    EXPECT_EQ(GpuRow(m_Device, m_Buffer, 0)[0], 7.0f);
    EXPECT_EQ(GpuRow(m_Device, m_Buffer, 10)[1], 10.0f);
}

TEST_F(InstanceBufferTest, UploadsBetweenDiscardsDoNotOverwriteAndFollowTheCursor)
{
    WriteInstance(m_Buffer, 11, 1.0f);
    m_Buffer.Draw(36, 11, nullptr, 0);
    WriteInstance(m_Buffer, 11, 2.0f);
    WriteInstance(m_Buffer, 11, 3.0f);
    m_Buffer.Draw(36, 11, nullptr, 0);
    ASSERT_EQ(m_Device.maps.size(), 2u);
    EXPECT_EQ(m_Device.maps[0].mode, MapMode::WriteNoOverwrite);
    EXPECT_EQ(m_Device.maps[1].mode, MapMode::WriteNoOverwrite);
    EXPECT_EQ(m_Buffer.Cursor, 33u);
    EXPECT_EQ(GpuRow(m_Device, m_Buffer, 0)[0], 1.0f);
    EXPECT_EQ(GpuRow(m_Device, m_Buffer, 11)[0], 2.0f);
    EXPECT_EQ(GpuRow(m_Device, m_Buffer, 22)[0], 3.0f);
    EXPECT_EQ(GpuRow(m_Device, m_Buffer, 32)[1], 10.0f);
    EXPECT_TRUE(m_Buffer.Pending.empty());
}

TEST_F(InstanceBufferTest, WithoutNoOverwriteEveryUploadDiscardsAndStartsAtZero)
{
    InstanceBuffer buffer(m_Device, true);
    buffer.BuildBuffer();
    EXPECT_FALSE(buffer.CanNoOverwrite);
    m_Device.maps.clear();
    WriteInstance(buffer, 11, 1.0f);
    buffer.Draw(36, 11, nullptr, 0);
    EXPECT_EQ(buffer.Cursor, 11u);
    WriteInstance(buffer, 11, 2.0f);
    buffer.Draw(36, 11, nullptr, 0);
    ASSERT_EQ(m_Device.maps.size(), 2u);
    EXPECT_EQ(m_Device.maps[0].mode, MapMode::WriteDiscard);
    EXPECT_EQ(m_Device.maps[1].mode, MapMode::WriteDiscard);
    EXPECT_EQ(GpuRow(m_Device, buffer, 0)[0], 2.0f);
    EXPECT_EQ(buffer.Cursor, 11u);
}

TEST_F(InstanceBufferTest, OneInstanceDrawsIndexedAndTwoDrawIndexedInstanced)
{
    WriteInstance(m_Buffer, 11, 1.0f);
    m_Buffer.Draw(36, 11, nullptr, 0);
    WriteInstance(m_Buffer, 11, 1.0f);
    WriteInstance(m_Buffer, 11, 2.0f);
    m_Buffer.Draw(36, 11, nullptr, 0);
    m_Buffer.Draw(36, 11, nullptr, 0);
    ASSERT_EQ(m_Device.draws.size(), 3u);
    EXPECT_EQ(m_Device.draws[0].kind, "DrawIndexed");
    EXPECT_EQ(m_Device.draws[0].count, 36u);
    EXPECT_EQ(m_Device.draws[1].kind, "DrawIndexedInstanced");
    EXPECT_EQ(m_Device.draws[1].instances, 2u);
    EXPECT_EQ(m_Device.draws[2].kind, "DrawIndexed");
    EXPECT_EQ(m_Buffer.PendingRows, 0u);
    EXPECT_EQ(m_Buffer.PendingInstances, 0u);
}

TEST_F(InstanceBufferTest, DrawModeOneDrawsVerticesAloneOrInstanced)
{
    WriteInstance(m_Buffer, 7, 1.0f);
    m_Buffer.Draw(1, 7, nullptr, 1);
    WriteInstance(m_Buffer, 7, 1.0f);
    WriteInstance(m_Buffer, 7, 2.0f);
    WriteInstance(m_Buffer, 7, 3.0f);
    m_Buffer.Draw(1, 7, nullptr, 1);
    ASSERT_EQ(m_Device.draws.size(), 2u);
    EXPECT_EQ(m_Device.draws[0].kind, "Draw");
    EXPECT_EQ(m_Device.draws[1].kind, "DrawInstanced");
    EXPECT_EQ(m_Device.draws[1].instances, 3u);
}

TEST_F(InstanceBufferTest, TheStagingStorageIsReusedFromInstanceToInstance)
{
    WriteInstance(m_Buffer, 11, 1.0f);
    const std::size_t capacity = m_Buffer.Staging.capacity();
    EXPECT_GE(capacity, 11u);
    m_Buffer.Draw(36, 11, nullptr, 0);
    WriteInstance(m_Buffer, 11, 2.0f);
    EXPECT_EQ(m_Buffer.Staging.capacity(), capacity);
}

TEST_F(InstanceBufferTest, AnInstanceLargerThanTheBufferIsCutAtItsEndWithoutHarm)
{
    WriteInstance(m_Buffer, 1200, 5.0f);
    EXPECT_EQ(m_Buffer.PendingInstances, 1u);
    m_Buffer.Draw(36, 1200, nullptr, 0);
    EXPECT_EQ(GpuRow(m_Device, m_Buffer, 999)[1], 999.0f);
    WriteInstance(m_Buffer, 11, 6.0f);
    EXPECT_EQ(m_Buffer.Cursor, 0u);
    EXPECT_TRUE(m_Buffer.DiscardNext);
}
