#include "platform/gl/GlContext.h"

#include "platform/NativeWindow.h"
#include "platform/gl/GlDevice.h"

#include "support/Scoped.h"

#include <gtest/gtest.h>

namespace
{
class GlContextTest : public testing::Test
{
protected:
    ScopedEnvironment m_Driver{"SDL_VIDEODRIVER", "offscreen"};
};
}

TEST_F(GlContextTest, AWindowMadeForOpenGlGetsA45CoreContext)
{
    Platform::NativeWindow window;
    window.RequestOpenGl(true);
    ASSERT_TRUE(window.Create("Vorn context test", 32, 32, 1, 1));
    Platform::GlContext context;
    std::string error;
    ASSERT_TRUE(context.Create(window, error)) << error;
    EXPECT_TRUE(context.IsCreated());
    EXPECT_GE(context.Version(), 45);
    EXPECT_TRUE(context.HasCompute());
    context.Swap();
    context.Destroy();
    EXPECT_FALSE(context.IsCreated());
}

TEST_F(GlContextTest, AWindowMadeWithoutOpenGlIsRefusedWithAReason)
{
    Platform::NativeWindow window;
    ASSERT_TRUE(window.Create("Vorn context test", 32, 32, 1, 1));
    Platform::GlContext context;
    std::string error;
    EXPECT_FALSE(context.Create(window, error));
    EXPECT_EQ(error, "the window was not made for OpenGL");
    EXPECT_EQ(Platform::CreateGlDevice(context), nullptr);
}

TEST_F(GlContextTest, NoWindowIsRefusedWithAReason)
{
    Platform::NativeWindow window;
    Platform::GlContext context;
    std::string error;
    EXPECT_FALSE(context.Create(window, error));
    EXPECT_EQ(error, "there is no window");
}
