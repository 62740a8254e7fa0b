#include "platform/NativeWindow.h"

#include "support/Scoped.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace
{
using Platform::NativeWindow;
using Platform::WindowMessage;
using Platform::WindowMessageKind;

// Every window here lives on the offscreen driver, which needs no display.
class NativeWindowTest : public testing::Test
{
protected:
    ScopedEnvironment m_Driver{"SDL_VIDEODRIVER", "offscreen"};
};

bool ContainsKind(const std::vector<WindowMessage>& messages, WindowMessageKind kind)
{
    return std::any_of(messages.begin(), messages.end(),
                       [kind](const WindowMessage& message) { return message.kind == kind; });
}
}

TEST_F(NativeWindowTest, CreateMakesAWindowOfTheRequestedSize)
{
    NativeWindow window;
    EXPECT_FALSE(window.IsCreated());
    ASSERT_TRUE(window.Create("Vorn test", 1024, 576, 640, 360));
    EXPECT_TRUE(window.IsCreated());
}

TEST_F(NativeWindowTest, PumpingAFreshWindowReportsNoClose)
{
    NativeWindow window;
    ASSERT_TRUE(window.Create("Vorn test", 1024, 576, 640, 360));
    window.Show();
    std::vector<WindowMessage> messages;
    window.PumpMessages(messages);
    window.PumpMessages(messages);
    EXPECT_FALSE(ContainsKind(messages, WindowMessageKind::Close));
}

TEST_F(NativeWindowTest, PumpingWithoutAWindowAddsNothing)
{
    NativeWindow window;
    std::vector<WindowMessage> messages;
    window.PumpMessages(messages);
    EXPECT_TRUE(messages.empty());
}

TEST_F(NativeWindowTest, DestroyTwiceIsSafe)
{
    NativeWindow window;
    ASSERT_TRUE(window.Create("Vorn test", 1024, 576, 640, 360));
    window.Destroy();
    EXPECT_FALSE(window.IsCreated());
    window.Destroy();
    EXPECT_FALSE(window.IsCreated());
}

TEST_F(NativeWindowTest, WindowCanBeCreatedAgainAfterDestroy)
{
    NativeWindow window;
    ASSERT_TRUE(window.Create("Vorn test", 1024, 576, 640, 360));
    window.Destroy();
    ASSERT_TRUE(window.Create("Vorn test", 800, 600, 640, 360));
    EXPECT_TRUE(window.IsCreated());
}

TEST_F(NativeWindowTest, VideoStartsBeforeTheWindowAndStopsWithIt)
{
    NativeWindow window;
    EXPECT_FALSE(window.IsVideoStarted());
    ASSERT_TRUE(window.StartVideo());
    EXPECT_TRUE(window.IsVideoStarted());
    EXPECT_FALSE(window.IsCreated());
    ASSERT_TRUE(window.Create("Vorn test", 1024, 576, 640, 360));
    window.Destroy();
    EXPECT_FALSE(window.IsVideoStarted());
}

// The offscreen driver knows no pixels per inch: the scale is 1 there, before and after the window.
TEST_F(NativeWindowTest, DisplayScaleIsOneWhereTheDisplayDoesNotTell)
{
    NativeWindow window;
    ASSERT_TRUE(window.StartVideo());
    Platform::DisplayScale scale = window.GetDisplayScale();
    EXPECT_FLOAT_EQ(scale.horizontal, 1.0f);
    EXPECT_FLOAT_EQ(scale.vertical, 1.0f);
    ASSERT_TRUE(window.Create("Vorn test", 1024, 576, 640, 360));
    scale = window.GetDisplayScale();
    EXPECT_FLOAT_EQ(scale.horizontal, 1.0f);
    EXPECT_FLOAT_EQ(scale.vertical, 1.0f);
}

TEST_F(NativeWindowTest, ClientSizeIsTheSizeAskedForAndAtLeastTheMinimum)
{
    NativeWindow window;
    int width = -1;
    int height = -1;
    window.GetClientSize(width, height);
    EXPECT_EQ(width, 0);
    EXPECT_EQ(height, 0);
    ASSERT_TRUE(window.Create("Vorn test", 1280, 720, 640, 360));
    window.GetClientSize(width, height);
    EXPECT_EQ(width, 1280);
    EXPECT_EQ(height, 720);
    ASSERT_TRUE(window.Create("Vorn test", 320, 200, 640, 360));
    window.GetClientSize(width, height);
    EXPECT_EQ(width, 640);
    EXPECT_EQ(height, 360);
}

// The offscreen driver shows no cursors, so a good image is refused there with SDL's reason.
TEST_F(NativeWindowTest, CursorImageNeedsAWindowAndAnImage)
{
    const std::vector<std::uint8_t> pixels(4 * 4 * 4, 0xFF);
    std::string error;
    NativeWindow window;
    EXPECT_FALSE(window.SetCursorImage(pixels.data(), 4, 4, 0, 0, error));
    EXPECT_EQ(error, "there is no window");
    ASSERT_TRUE(window.Create("Vorn test", 1024, 576, 640, 360));
    EXPECT_FALSE(window.SetCursorImage(nullptr, 4, 4, 0, 0, error));
    EXPECT_FALSE(window.SetCursorImage(pixels.data(), 0, 4, 0, 0, error));
    error.clear();
    const bool shown = window.SetCursorImage(pixels.data(), 4, 4, 1, 1, error);
    EXPECT_TRUE(shown || !error.empty());
    window.Destroy();
}
