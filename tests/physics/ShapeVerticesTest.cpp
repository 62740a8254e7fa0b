#include "physics/ShapeVertices.h"

#include "Components/Transform/Transform.h"

#include <gtest/gtest.h>

#include <vector>

TEST(ShapeVerticesTest, ScaleDiffersOnlyBeyondTheToleranceOnSomeAxis)
{
    const Math::Vector3D cached(1.0f, 2.0f, 3.0f);
    EXPECT_FALSE(ShapeVertices::ScaleDiffers(Math::Vector3D(1.00009f, 1.99991f, 3.0f), cached));
    EXPECT_TRUE(ShapeVertices::ScaleDiffers(Math::Vector3D(1.0f, 2.0f, 3.0005f), cached));
}

TEST(ShapeVerticesTest, BoundsStartAtZeroSoTheyHoldThePosition)
{
    Transform transform;
    transform.m_Position = Math::Point3D(5.0f, 5.0f, 5.0f);
    const std::vector<Math::Vector3D> vertices = {Math::Vector3D(1.0f, 2.0f, 3.0f), Math::Vector3D(2.0f, 3.0f, 4.0f)};
    Math::Point3D min, max;
    ShapeVertices::TurnedVertices turned;
    ShapeVertices::RotatedBounds(vertices, turned, transform, min, max);
    EXPECT_EQ(min, Math::Point3D(5.0f, 5.0f, 5.0f));
    EXPECT_EQ(max, Math::Point3D(7.0f, 8.0f, 9.0f));
}

TEST(ShapeVerticesTest, SearchWithoutStartIndexTakesTheFirstOfEqualVertices)
{
    const std::vector<Math::Vector3D> vertices = {Math::Vector3D(1.0f, 1.0f, 0.0f), Math::Vector3D(-1.0f, 1.0f, 0.0f),
                                                  Math::Vector3D(0.0f, -1.0f, 0.0f)};
    const Math::Vector3D up(0.0f, 3.0f, 0.0f);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(ShapeVertices::Support(vertices, nullptr, up, nullptr, nullptr), Math::Point3D(1.0f, 1.0f, 0.0f));
    unsigned start = 1;
    EXPECT_EQ(ShapeVertices::Support(vertices, &start, up, nullptr, nullptr), Math::Point3D(-1.0f, 1.0f, 0.0f));
    EXPECT_EQ(start, 2u);
    std::vector<Math::Vector3D> none;
    EXPECT_EQ(ShapeVertices::Support(none, &start, up, nullptr, nullptr), Math::Point3D());
}
