#include "platform/NativeWindow.h"

#include "support/Scoped.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{
namespace fs = std::filesystem;
using Platform::NativeWindow;
using Platform::WindowMessage;
using Platform::WindowMessageKind;

// Every window here lives on the offscreen driver, which needs no display.
class NativeWindowTest : public testing::Test
{
protected:
    ScopedEnvironment m_Driver{"SDL_VIDEODRIVER", "offscreen"};
};

void PutLittleEndian(std::vector<char>& bytes, std::uint32_t value, int size)
{
    for (int i = 0; i < size; ++i)
        bytes.push_back(static_cast<char>((value >> (8 * i)) & 0xFF));
}

// Writes a 2x2 24-bit Windows bitmap, each row padded to four bytes.
void WriteSmallBitmap(const fs::path& path)
{
    const std::uint32_t rowBytes = 8;
    const std::uint32_t pixelBytes = rowBytes * 2;
    std::vector<char> bytes{'B', 'M'};
    PutLittleEndian(bytes, 54 + pixelBytes, 4);  // file size
    PutLittleEndian(bytes, 0, 4);                // reserved
    PutLittleEndian(bytes, 54, 4);               // offset of the pixels
    PutLittleEndian(bytes, 40, 4);               // info header size
    PutLittleEndian(bytes, 2, 4);                // width
    PutLittleEndian(bytes, 2, 4);                // height
    PutLittleEndian(bytes, 1, 2);                // planes
    PutLittleEndian(bytes, 24, 2);               // bits per pixel
    PutLittleEndian(bytes, 0, 4);                // no compression
    PutLittleEndian(bytes, pixelBytes, 4);
    PutLittleEndian(bytes, 2835, 4);             // 72 dpi
    PutLittleEndian(bytes, 2835, 4);
    PutLittleEndian(bytes, 0, 4);                // palette size
    PutLittleEndian(bytes, 0, 4);                // important colours
    bytes.resize(bytes.size() + pixelBytes, static_cast<char>(0x80));
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

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

TEST_F(NativeWindowTest, DisplayScaleIsOneWhenUnknown)
{
    float horizontal = 0.0f;
    float vertical = 0.0f;
    NativeWindow::GetDisplayScale(horizontal, vertical);
    EXPECT_FLOAT_EQ(horizontal, 1.0f);
    EXPECT_FLOAT_EQ(vertical, 1.0f);

    NativeWindow window;
    ASSERT_TRUE(window.Create("Vorn test", 1024, 576, 640, 360));
    NativeWindow::GetDisplayScale(horizontal, vertical);
    EXPECT_GT(horizontal, 0.0f);
    EXPECT_GT(vertical, 0.0f);
}

// The offscreen driver has no cursors, so a good bitmap is only loaded and
// released here; what is checked is that other formats and missing files fail.
TEST_F(NativeWindowTest, CursorIsNotReadFromOtherFormatsOrMissingFiles)
{
    const fs::path folder = fs::temp_directory_path() / ("vorn-cursor-" + std::to_string(getpid()));
    fs::create_directories(folder);
    const fs::path bitmap = folder / "arrow.bmp";
    WriteSmallBitmap(bitmap);
    std::ofstream(folder / "arrow.cur") << "not read";

    NativeWindow window;
    EXPECT_FALSE(window.SetCursorFromFile(bitmap.string()));  // no window yet
    ASSERT_TRUE(window.Create("Vorn test", 1024, 576, 640, 360));
    window.SetCursorFromFile(bitmap.string());
    EXPECT_FALSE(window.SetCursorFromFile((folder / "arrow.cur").string()));
    EXPECT_FALSE(window.SetCursorFromFile((folder / "missing.bmp").string()));
    window.Destroy();

    fs::remove_all(folder);
}
