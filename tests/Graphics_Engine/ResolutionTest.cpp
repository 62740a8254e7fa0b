// The resolution table, the choice made at start and the render size.
#include "Graphics_Engine/Resolution.h"

#include <gtest/gtest.h>

using namespace Graphics;

TEST(ResolutionTest, TableHasNineRowsAndKeeps1366By786)
{
    EXPECT_EQ(ResolutionCount(), 9u);
    EXPECT_EQ(ResolutionString(0), "1024 X 576");
    EXPECT_EQ(ResolutionString(4), "1366 X 786");
    EXPECT_EQ(ResolutionString(8), "3840 X 2160");
}

TEST(ResolutionTest, IndexIsClampedToTheLastRow)
{
    EXPECT_EQ(ClampResolution(9), 8u);
    EXPECT_EQ(ClampResolution(kResolutionUnset), 8u);
    EXPECT_EQ(ClampResolution(3), 3u);
    EXPECT_EQ(ResolutionString(200), "3840 X 2160");
}

TEST(ResolutionTest, MonitorSmallerThan1024By576KeepsIndexZero)
{
    EXPECT_EQ(ChooseResolution(800, 600), 0u);
    EXPECT_EQ(ChooseResolution(0, 0), 0u);
    EXPECT_EQ(ChooseResolution(-5, 1000), 0u);
}

TEST(ResolutionTest, LargestRowThatFitsTheMonitorsPixelCountIsChosen)
{
    EXPECT_EQ(ChooseResolution(1920, 1080), 6u);
    EXPECT_EQ(ChooseResolution(3840, 2160), 8u);
    EXPECT_EQ(ChooseResolution(1024, 768), 1u);
    // 1366 x 768 holds fewer pixels than 1366 x 786 and 1280 x 1024: 1280 x 800 is the last fit.
    EXPECT_EQ(ChooseResolution(1366, 768), 2u);
}

TEST(ResolutionTest, LaterFitOverwritesAnEarlierOneByPixelCount)
{
    // 1280 x 1024 fits, and so does the later 1366 x 786 (fewer pixels): the later row wins.
    EXPECT_EQ(ChooseResolution(1280, 1024), 4u);
}

TEST(ResolutionTest, RenderSizeFollowsFullscreenAndUseWindowSize)
{
    RenderSizeInput input{false, false, 1920, 1080, 1100, 600, 1024, 576};
    ResolutionRow size = RenderSize(input);
    EXPECT_EQ(size.width, 1024);
    EXPECT_EQ(size.height, 576);
    input.useWindowSize = true;
    size = RenderSize(input);
    EXPECT_EQ(size.width, 1100);
    EXPECT_EQ(size.height, 600);
    input.fullscreen = true;
    size = RenderSize(input);
    EXPECT_EQ(size.width, 1920);
    EXPECT_EQ(size.height, 1080);
    input.useWindowSize = false;
    size = RenderSize(input);
    EXPECT_EQ(size.width, 1024);
}
