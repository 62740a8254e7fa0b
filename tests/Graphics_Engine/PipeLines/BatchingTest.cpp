// The batching of the geometry and forward stages without a GL context: which
// draws a deferred key makes, and when it flushes.
#include "Graphics_Engine/PipeLines/Batching.h"

#include "Graphics_Engine/Components/BaseGraphicsComponent.h"
#include "Graphics_Engine/Components/Mesh.h"
#include "Graphics_Engine/Components/MeshResources.h"
#include "Graphics_Engine/Model/ModelManager.h"
#include "support/RecordingDevice.h"
#include "Graphics_Engine/PipeLines/InstanceBuffer/InstanceBuffer.h"
#include "Graphics_Engine/ShaderManager.h"
#include "Graphics_Engine/ShaderProgram.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <memory>

using namespace Graphics;

namespace
{
// A drawable of a chosen model key that writes a chosen number of rows and counts its binds.
class RowWriter final : public BaseGraphicsComponent
{
public:
    RowWriter(unsigned modelId, unsigned rows) : m_ModelId(modelId), m_Rows(rows) { m_ElementCount = 36; }
    Component* Clone() const override { return new RowWriter(m_ModelId, m_Rows); }
    unsigned GetModelId() const override { return m_ModelId; }
    void Bind(GraphicsDevice& device) override
    {
        ++Binds;
        BaseGraphicsComponent::Bind(device);
    }
    void WriteInstance(const Math::Matrix4& world, ShaderProgram* shader, InstanceBuffer& buffer) override
    {
        ++Writes;
        for (unsigned row = 0; row < m_Rows; ++row)
            buffer.WriteRow({world.m[3][0], float(row), 0.0f, 0.0f});
        buffer.CloseInstance();
    }
    int Binds = 0;
    int Writes = 0;

private:
    unsigned m_ModelId;
    unsigned m_Rows;
};

class BatchingTest : public testing::Test
{
protected:
    BatchingTest()
    {
        m_Buffer.BuildBuffer();
        m_Program.Loaded = true;
    }

    // `count` records of `component` at x = 0, 1, 2, ...
    std::vector<DrawRecord> Records(BaseGraphicsComponent& component, int count)
    {
        std::vector<DrawRecord> records;
        for (int i = 0; i < count; ++i)
            records.push_back({Math::Matrix4::Translation(float(i), 0.0f, 0.0f), &component});
        return records;
    }
    // Gives the component the test's program, resolved already.
    void UseProgram(BaseGraphicsComponent& component)
    {
        component.m_ShaderComponent.m_Shader = &m_Program;
        component.m_ShaderComponent.m_Dirty = false;
    }
    // The numbers of instances of the draws made, in order.
    std::vector<unsigned> DrawnInstances() const
    {
        std::vector<unsigned> instances;
        for (const RecordingDevice::DrawCall& draw : m_Device.draws)
            instances.push_back(draw.instances);
        return instances;
    }

    RecordingDevice m_Device;
    VariableTable m_Table;
    ShaderProgram m_Program{m_Device, m_Table, 1, {}};
    InstanceBuffer m_Buffer{m_Device};
};
}

TEST_F(BatchingTest, RecordsOfOneModelAreDrawnAsInstancesOfOneCall)
{
    RowWriter writer(3, 11);
    UseProgram(writer);
    DrawDeferredKey(Records(writer, 5), nullptr, m_Device, m_Buffer);
    EXPECT_EQ(writer.Writes, 5);
    EXPECT_EQ(writer.Binds, 1);
    ASSERT_EQ(m_Device.draws.size(), 1u);
    EXPECT_EQ(m_Device.draws[0].kind, "DrawIndexedInstanced");
    EXPECT_EQ(m_Device.draws[0].count, 36u);
    EXPECT_EQ(m_Device.draws[0].instances, 5u);
    EXPECT_EQ(m_Buffer.Cursor, 55u);
}

TEST_F(BatchingTest, ModelKeyZeroDrawsEveryRecordByItself)
{
    RowWriter writer(0, 11);
    UseProgram(writer);
    DrawDeferredKey(Records(writer, 3), nullptr, m_Device, m_Buffer);
    EXPECT_EQ(writer.Writes, 3);
    EXPECT_EQ(writer.Binds, 3);
    ASSERT_EQ(m_Device.draws.size(), 3u);
    for (const RecordingDevice::DrawCall& draw : m_Device.draws)
        EXPECT_EQ(draw.kind, "DrawIndexed");
    EXPECT_EQ(m_Buffer.Cursor, 33u);
}

TEST_F(BatchingTest, AFullBatchIsDrawnAsSoonAsItFills)
{
    RowWriter writer(3, 10);
    UseProgram(writer);
    DrawDeferredKey(Records(writer, 150), nullptr, m_Device, m_Buffer);
    // 100 instances of 10 rows fill the batch; the other 50 start the buffer again with a discard.
    EXPECT_EQ(DrawnInstances(), (std::vector<unsigned>{100, 50}));
    ASSERT_EQ(m_Device.maps.size(), 2u);
    EXPECT_EQ(m_Device.maps[0].mode, MapMode::WriteNoOverwrite);
    EXPECT_EQ(m_Device.maps[1].mode, MapMode::WriteDiscard);
    EXPECT_EQ(m_Buffer.Cursor, 500u);
}

TEST_F(BatchingTest, AFullBufferIsDrawnAsSoonAsTheCursorReachesItsEnd)
{
    m_Buffer.Cursor = 600;
    RowWriter writer(3, 10);
    UseProgram(writer);
    DrawDeferredKey(Records(writer, 50), nullptr, m_Device, m_Buffer);
    // 40 instances take the cursor to 1000: drawn at once; the last 10 discard and start at 0.
    EXPECT_EQ(DrawnInstances(), (std::vector<unsigned>{40, 10}));
    ASSERT_EQ(m_Device.maps.size(), 2u);
    EXPECT_EQ(m_Device.maps[1].mode, MapMode::WriteDiscard);
    EXPECT_EQ(m_Buffer.Cursor, 100u);
}

TEST_F(BatchingTest, AnInstanceThatDoesNotFitFlushesWhatIsPendingAndIsDrawnAfter)
{
    RowWriter writer(3, 11);
    UseProgram(writer);
    DrawDeferredKey(Records(writer, 100), nullptr, m_Device, m_Buffer);
    // 90 instances take 990 rows; the 91st asks for a flush and starts the buffer again.
    EXPECT_EQ(DrawnInstances(), (std::vector<unsigned>{90, 10}));
    EXPECT_EQ(m_Buffer.Cursor, 110u);
    EXPECT_FALSE(m_Buffer.FlushAfterDraw);
    EXPECT_TRUE(m_Buffer.Staging.empty());
}

TEST_F(BatchingTest, AKeyWhoseProgramDidNotLoadIsSkipped)
{
    TempFolder folder;
    ShaderManager shaders(m_Device, m_Table, folder.Path());
    RowWriter writer(3, 11);
    DrawDeferredKey(Records(writer, 2), &shaders, m_Device, m_Buffer);
    EXPECT_FALSE(writer.m_ShaderComponent.m_Dirty);
    EXPECT_EQ(writer.m_ShaderComponent.m_ChangeCount, 1u);
    EXPECT_EQ(writer.Writes, 0);
    EXPECT_TRUE(m_Device.draws.empty());
}

TEST_F(BatchingTest, TheFirstRecordDecidesTheKey)
{
    RowWriter first(0, 11);
    RowWriter other(3, 11);
    UseProgram(first);
    std::vector<DrawRecord> records = {{Math::Matrix4(), &first}, {Math::Matrix4(), &other}};
    DrawDeferredKey(records, nullptr, m_Device, m_Buffer);
    EXPECT_EQ(m_Device.draws.size(), 2u);
    EXPECT_EQ(other.Binds, 1);
}

TEST_F(BatchingTest, AForwardRecordIsDrawnByItself)
{
    RowWriter writer(3, 11);
    ForwardRecord record{Math::Matrix4(), 4.0f, &writer, &m_Program};
    DrawForwardRecord(record, m_Device, m_Buffer);
    EXPECT_EQ(writer.Binds, 1);
    EXPECT_EQ(writer.Writes, 1);
    ASSERT_EQ(m_Device.draws.size(), 1u);
    EXPECT_EQ(m_Device.draws[0].kind, "DrawIndexed");
    ForwardRecord unloaded{Math::Matrix4(), 4.0f, &writer, nullptr};
    DrawForwardRecord(unloaded, m_Device, m_Buffer);
    EXPECT_EQ(m_Device.draws.size(), 1u);
}

TEST_F(BatchingTest, MeshesOfTheCubeAreDrawnOneByOneAndOtherModelsInstanced)
{
    TempFolder folder;
    ModelManager models(m_Device);
    models.Initialize(folder.Path());
    SetMeshModels(&models);
    Mesh cube;
    cube.SetModel("box");
    Mesh sphere;
    sphere.SetModel("sphere");
    SetMeshModels(nullptr);
    UseProgram(cube);
    UseProgram(sphere);
    ASSERT_EQ(cube.GetModelId(), 0u);
    ASSERT_NE(sphere.GetModelId(), 0u);

    DrawDeferredKey(Records(cube, 3), nullptr, m_Device, m_Buffer);
    DrawDeferredKey(Records(sphere, 4), nullptr, m_Device, m_Buffer);
    ASSERT_EQ(m_Device.draws.size(), 4u);
    for (int i = 0; i < 3; ++i)
    {
        EXPECT_EQ(m_Device.draws[i].kind, "DrawIndexed");
        EXPECT_EQ(m_Device.draws[i].count, 36u);
    }
    EXPECT_EQ(m_Device.draws[3].kind, "DrawIndexedInstanced");
    EXPECT_EQ(m_Device.draws[3].count, 780u);
    EXPECT_EQ(m_Device.draws[3].instances, 4u);
    EXPECT_EQ(m_Buffer.Cursor, 77u);
}
