#include "Graphics_Engine/PipeLines/LightVolumes.h"

#include <gtest/gtest.h>

#include <vector>

using namespace Graphics;

namespace
{
s_Light Record(unsigned type, float x, float y, float z, float range)
{
    s_Light record = FreshLightRecord();
    record.LightType = type;
    record.Position[0] = x;
    record.Position[1] = y;
    record.Position[2] = z;
    record.Range = range;
    return record;
}

// The std140 floats of a matrix (the transposed matrix, row by row).
std::vector<float> Layout(const Math::Matrix4& matrix)
{
    std::vector<float> floats(16);
    matrix.Std140Layout(floats.data());
    return floats;
}

std::vector<float> Floats(const LightVolume& volume)
{
    return std::vector<float>(volume.WorldViewPerspective, volume.WorldViewPerspective + 16);
}
}

TEST(LightVolumesTest, LightsAreSortedInsideOutsideAndDirectionalInIndexOrderSkippingNone)
{
    const std::vector<s_Light> records = {Record(1, 0, 0, 0, 5),  Record(0, 0, 0, 0, 50), Record(2, 0, 0, 0, 1),
                                          Record(3, 20, 0, 0, 5), Record(1, 1, 0, 0, 2),  Record(3, 0, 1, 0, 9)};
    LightVolumeLists lists;
    lists.Outside.push_back({});
    BuildLightVolumes(records, Math::Matrix4::Identity(), Math::Vector3D(0, 0, 0), lists);
    ASSERT_EQ(lists.Inside.size(), 3u);
    EXPECT_EQ(lists.Inside[0].Record, &records[0]);
    EXPECT_EQ(lists.Inside[1].Record, &records[4]);
    EXPECT_EQ(lists.Inside[2].Record, &records[5]);
    ASSERT_EQ(lists.Outside.size(), 1u);
    EXPECT_EQ(lists.Outside[0].Record, &records[3]);
    ASSERT_EQ(lists.Directional.size(), 1u);
    EXPECT_EQ(lists.Directional[0].Record, &records[2]);
    lists.Clear();
    EXPECT_TRUE(lists.Inside.empty() && lists.Outside.empty() && lists.Directional.empty());
}

TEST(LightVolumesTest, ACameraExactlyAtRangeFromAPointLightCountsAsOutside)
{
    const std::vector<s_Light> records = {Record(1, 3, 0, 0, 5), Record(1, 3, 0, 0, 5.001f)};
    LightVolumeLists lists;
    BuildLightVolumes(records, Math::Matrix4::Identity(), Math::Vector3D(3, 4, 3), lists);
    ASSERT_EQ(lists.Outside.size(), 1u);
    EXPECT_EQ(lists.Outside[0].Record, &records[0]);
    ASSERT_EQ(lists.Inside.size(), 1u);
    EXPECT_EQ(lists.Inside[0].Record, &records[1]);
}

TEST(LightVolumesTest, AVolumeIsTheSphereScaledByTwiceItsRangeAtItsPositionTimesTheViewProjection)
{
    const std::vector<s_Light> records = {Record(3, 1, 2, 3, 4), Record(2, 9, 9, 9, 9)};
    const Math::Matrix4 viewPerspective(2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 1, 5, 6, 7, 1);
    LightVolumeLists lists;
    BuildLightVolumes(records, viewPerspective, Math::Vector3D(100, 0, 0), lists);
    ASSERT_EQ(lists.Outside.size(), 1u);
    const float scale = 8.0f * kLightVolumeCover;
    const Math::Matrix4 world(scale, 0, 0, 0, 0, scale, 0, 0, 0, 0, scale, 0, 1, 2, 3, 1);
    const std::vector<float> expected = Layout(world * viewPerspective);
    const std::vector<float> actual = Floats(lists.Outside[0]);
    for (int i = 0; i < 16; ++i)
        EXPECT_NEAR(actual[i], expected[i], 1e-4f) << i;
    ASSERT_EQ(lists.Directional.size(), 1u);
    EXPECT_EQ(Floats(lists.Directional[0]), Layout(Math::Matrix4::Identity()));
}

TEST(LightVolumesTest, TheWidenedSphereEnclosesTheBallOfItsRange)
{
    // The nearest point of a face of the 10 by 14 sphere lies at 0.944 of its radius.
    EXPECT_GE(kLightVolumeCover * 0.944f, 1.0f);
}
