#include "Graphics_Engine/Components/BaseGraphicsComponent.h"

#include "Components/Transform/Transform.h"
#include "support/RecordingDevice.h"
#include "utilities/Meta/Data.h"

#include <gtest/gtest.h>

namespace
{
class Drawable : public Graphics::BaseGraphicsComponent
{
public:
    Component* Clone() const override { return new Drawable(*this); }
};
}

TEST(BaseGraphicsComponentTest, DrawsIndexedTriangleListsByDefault)
{
    const Drawable drawable;
    EXPECT_EQ(drawable.m_Topology, 4u);
    EXPECT_EQ(drawable.m_DrawMode, 0u);
    EXPECT_TRUE(drawable.m_Render);
    EXPECT_EQ(drawable.GetModelId(), 0u);
}

TEST(BaseGraphicsComponentTest, PickHitsAtTheDistanceFromTheRayOriginToThePosition)
{
    Transform transform;
    transform.m_Position = Math::Point3D(3.0f, 4.0f, 0.0f);
    Drawable drawable;
    float distance = 0.0f;
    EXPECT_FALSE(drawable.Pick(distance, false, Math::Point3D(), Math::Vector3D(0, 0, -1)));
    drawable.m_Transform = &transform;
    ASSERT_TRUE(drawable.Pick(distance, false, Math::Point3D(), Math::Vector3D(0, 0, -1)));
    EXPECT_FLOAT_EQ(distance, 5.0f);
}

TEST(BaseGraphicsComponentTest, IsRegisteredAsAComponent)
{
    const Drawable drawable;
    ASSERT_NE(drawable.GetDefinition(), nullptr);
    EXPECT_EQ(drawable.GetDefinition(), Meta::Get<Graphics::BaseGraphicsComponent>());
}
