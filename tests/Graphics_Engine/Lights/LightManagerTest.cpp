#include "Graphics_Engine/Lights/LightManager.h"

#include "support/RecordingDevice.h"
#include "support/ReportCapture.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

using namespace Graphics;

namespace
{
// The records sb_lights holds after an upload, the first `count` of them.
std::vector<s_Light> Uploaded(RecordingDevice& device, const LightManager& lights, unsigned count)
{
    const std::vector<std::uint8_t>& bytes = device.buffers.at(lights.GetLightBuffer().id).bytes;
    std::vector<s_Light> records(count);
    std::memcpy(records.data(), bytes.data(), count * sizeof(s_Light));
    return records;
}

bool SameBytes(const s_Light& a, const s_Light& b)
{
    return std::memcmp(&a, &b, sizeof(s_Light)) == 0;
}

class LightManagerTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_Lights.SetDevice(&m_Device);
        ASSERT_TRUE(m_Lights.CreateLightBuffer());
    }
    void TearDown() override { m_Lights.SetDevice(nullptr); }

    // A slot switched on as a point light of range `range`.
    unsigned AddPoint(float range)
    {
        const unsigned index = m_Lights.AddLight();
        m_Lights.m_Records[index].LightType = 1;
        m_Lights.m_Records[index].Range = range;
        return index;
    }

    RecordingDevice m_Device;
    LightManager m_Lights;
};
}

TEST(LightRecordTest, AFreshRecordHasTheStartingValues)
{
    const s_Light record = FreshLightRecord();
    EXPECT_EQ(sizeof(s_Light), 112u);
    EXPECT_FLOAT_EQ(record.Ambient[0], 0.1f);
    EXPECT_FLOAT_EQ(record.Ambient[3], 1.0f);
    EXPECT_FLOAT_EQ(record.Diffuse[1], 0.8f);
    EXPECT_FLOAT_EQ(record.Diffuse[3], 0.0f);
    EXPECT_FLOAT_EQ(record.Specular[2], 1.0f);
    EXPECT_FLOAT_EQ(record.Position[0], 0.0f);
    EXPECT_FLOAT_EQ(record.Range, 100.0f);
    EXPECT_FLOAT_EQ(record.Direction[1], -1.0f);
    EXPECT_FLOAT_EQ(record.SpotPrams[0], 0.17453f);
    EXPECT_FLOAT_EQ(record.SpotPrams[1], 0.52360f);
    EXPECT_FLOAT_EQ(record.SpotPrams[2], 5.0f);
    EXPECT_FLOAT_EQ(record.Attenuation[0], 1.0f);
    EXPECT_FLOAT_EQ(record.Attenuation[2], 0.0f);
    EXPECT_EQ(record.LightType, 0u);
}

TEST_F(LightManagerTest, TheLightBufferIsADynamicStorageBufferOf32767Records)
{
    const RecordingDevice::Buffer& made = m_Device.buffers.at(m_Lights.GetLightBuffer().id);
    EXPECT_EQ(made.desc.size, 3669904u);
    EXPECT_EQ(made.desc.size, 32767u * 112u);
    EXPECT_EQ(made.desc.kind, BufferKind::ShaderStorage);
    EXPECT_EQ(made.desc.usage, BufferUsage::Dynamic);
    EXPECT_EQ(LightManager::MaxLightsPerTile, 1024u);
}

TEST_F(LightManagerTest, WithNoActiveLightTheCountIsZeroAndTheSentinelIsTheOnlyRecord)
{
    m_Lights.AddLight();
    m_Lights.Upload();
    EXPECT_EQ(m_Lights.ActiveLights, 0u);
    ASSERT_FALSE(m_Device.maps.empty());
    EXPECT_EQ(m_Device.maps.back().mode, MapMode::WriteDiscard);
    EXPECT_TRUE(SameBytes(Uploaded(m_Device, m_Lights, 1)[0], FreshLightRecord()));
}

TEST_F(LightManagerTest, ARecordOfTypeZeroKeepsItsSlotAndIsLeftOutOfTheUpload)
{
    AddPoint(1.0f);
    const unsigned off = AddPoint(2.0f);
    AddPoint(3.0f);
    m_Lights.m_Records[off].LightType = 0;
    m_Lights.Upload();
    EXPECT_EQ(m_Lights.m_Records.size(), 3u);
    EXPECT_EQ(m_Lights.ActiveLights, 2u);
    const std::vector<s_Light> uploaded = Uploaded(m_Device, m_Lights, 3);
    EXPECT_FLOAT_EQ(uploaded[0].Range, 1.0f);
    EXPECT_FLOAT_EQ(uploaded[1].Range, 3.0f);
    EXPECT_TRUE(SameBytes(uploaded[2], FreshLightRecord()));
}

TEST_F(LightManagerTest, AFreedIndexIsReusedByTheNextAddLight)
{
    AddPoint(1.0f);
    const unsigned freed = AddPoint(2.0f);
    AddPoint(3.0f);
    m_Lights.FreeLight(freed);
    EXPECT_EQ(m_Lights.m_Records[freed].LightType, 0u);
    EXPECT_EQ(m_Lights.AddLight(), freed);
    EXPECT_TRUE(SameBytes(m_Lights.m_Records[freed], FreshLightRecord()));
    EXPECT_EQ(m_Lights.AddLight(), 3u);
    m_Lights.FreeLight(99);
    EXPECT_TRUE(m_Lights.m_FreeIndices.empty());
}

TEST_F(LightManagerTest, UploadNeverWritesPastTheBufferAndKeepsRoomForTheSentinel)
{
    std::vector<s_Light> records(5, FreshLightRecord());
    for (s_Light& record : records)
        record.LightType = 2;
    std::vector<s_Light> out(3);
    EXPECT_EQ(LightManager::WriteActive(records, out.data(), out.size()), 2u);
    EXPECT_TRUE(SameBytes(out[2], FreshLightRecord()));
    EXPECT_EQ(LightManager::WriteActive(records, out.data(), 0), 0u);
}

TEST(LightListTest, ARenderSizeThatIsNoMultipleOf16GetsOneMorePartialTileOnEachAxis)
{
    EXPECT_EQ(LightManager::TileCount(1024), 64u);
    EXPECT_EQ(LightManager::TileCount(1025), 65u);
    EXPECT_EQ(LightManager::TileCount(576), 36u);
    EXPECT_EQ(LightManager::TileCount(1366), 86u);
    EXPECT_EQ(LightManager::TileCount(786), 50u);
    EXPECT_EQ(LightManager::TileCount(1), 1u);
    EXPECT_EQ(LightManager::TileCount(0), 0u);
}

TEST(LightManagerFailureTest, ARefusedLightBufferIsReportedAndUploadsGoOn)
{
    RecordingDevice device;
    device.refuseBuffers = BufferKind::ShaderStorage;
    LightManager lights;
    lights.SetDevice(&device);
    ReportCapture capture;
    EXPECT_FALSE(lights.CreateLightBuffer());
    lights.m_Records.push_back(FreshLightRecord());
    lights.m_Records.back().LightType = 1;
    lights.Upload();
    EXPECT_EQ(lights.ActiveLights, 0u);
    const std::string text = capture.Text();
    EXPECT_NE(text.find("Failed To Create Light Buffer"), std::string::npos) << text;
    EXPECT_NE(text.find("Function: Graphics::LightManager::CreateLightBuffer"), std::string::npos) << text;
    EXPECT_NE(text.find("Graphics_Engine/Lights/LightManager"), std::string::npos) << text;
}

TEST(LightManagerFailureTest, ARefusedLightListIsReportedAndLeavesNoList)
{
    RecordingDevice device;
    device.refuseTextures = true;
    LightManager lights;
    lights.SetDevice(&device);
    ReportCapture capture;
    EXPECT_FALSE(lights.CreateLightListBuffer(1024, 576));
    EXPECT_FALSE(lights.GetLightList());
    EXPECT_EQ(lights.ListDepth(), 0u);
    const std::string text = capture.Text();
    EXPECT_NE(text.find("Failed To Create 3D Texture Buffer"), std::string::npos) << text;
    EXPECT_NE(text.find("Function: Graphics::LightManager::CreateLightListBuffer"), std::string::npos) << text;
}

TEST(LightManagerFailureTest, WithoutADeviceTheRecordsStillWork)
{
    LightManager lights;
    EXPECT_EQ(lights.AddLight(), 0u);
    EXPECT_EQ(lights.AddLight(), 1u);
    lights.Upload();
    EXPECT_EQ(lights.ActiveLights, 0u);
    EXPECT_EQ(lights.GetRecord(2), nullptr);
    ASSERT_NE(lights.GetRecord(1), nullptr);
}
