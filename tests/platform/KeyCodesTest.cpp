#include "platform/KeyCodes.h"

#include <SDL_keycode.h>
#include <gtest/gtest.h>

using Platform::TranslateKeycode;

TEST(PlatformKeyCodesTest, LettersBecomeUpperCaseAscii)
{
    EXPECT_EQ(TranslateKeycode(SDLK_a), 0x41);
    EXPECT_EQ(TranslateKeycode(SDLK_m), 0x4D);
    EXPECT_EQ(TranslateKeycode(SDLK_z), 0x5A);
}

TEST(PlatformKeyCodesTest, DigitsBecomeAsciiDigits)
{
    EXPECT_EQ(TranslateKeycode(SDLK_0), 0x30);
    EXPECT_EQ(TranslateKeycode(SDLK_9), 0x39);
}

TEST(PlatformKeyCodesTest, BothEnterKeysBecomeReturn)
{
    EXPECT_EQ(TranslateKeycode(SDLK_RETURN), 0x0D);
    EXPECT_EQ(TranslateKeycode(SDLK_KP_ENTER), 0x0D);
}

TEST(PlatformKeyCodesTest, FunctionKeysRunFromF1ToF24)
{
    EXPECT_EQ(TranslateKeycode(SDLK_F1), 0x70);
    EXPECT_EQ(TranslateKeycode(SDLK_F4), Platform::VK_F4);
    EXPECT_EQ(TranslateKeycode(SDLK_F10), Platform::VK_F10);
    EXPECT_EQ(TranslateKeycode(SDLK_F12), 0x7B);
    EXPECT_EQ(TranslateKeycode(SDLK_F13), 0x7C);
    EXPECT_EQ(TranslateKeycode(SDLK_F24), 0x87);
}

TEST(PlatformKeyCodesTest, LeftAndRightModifiersShareOneCode)
{
    EXPECT_EQ(TranslateKeycode(SDLK_LSHIFT), Platform::VK_SHIFT);
    EXPECT_EQ(TranslateKeycode(SDLK_RSHIFT), Platform::VK_SHIFT);
    EXPECT_EQ(TranslateKeycode(SDLK_LCTRL), Platform::VK_CONTROL);
    EXPECT_EQ(TranslateKeycode(SDLK_RCTRL), Platform::VK_CONTROL);
    EXPECT_EQ(TranslateKeycode(SDLK_LALT), Platform::VK_MENU);
    EXPECT_EQ(TranslateKeycode(SDLK_RALT), Platform::VK_MENU);
}

TEST(PlatformKeyCodesTest, NavigationAndEditingKeys)
{
    EXPECT_EQ(TranslateKeycode(SDLK_ESCAPE), Platform::VK_ESCAPE);
    EXPECT_EQ(TranslateKeycode(SDLK_SPACE), Platform::VK_SPACE);
    EXPECT_EQ(TranslateKeycode(SDLK_BACKSPACE), Platform::VK_BACK);
    EXPECT_EQ(TranslateKeycode(SDLK_TAB), Platform::VK_TAB);
    EXPECT_EQ(TranslateKeycode(SDLK_LEFT), Platform::VK_LEFT);
    EXPECT_EQ(TranslateKeycode(SDLK_UP), Platform::VK_UP);
    EXPECT_EQ(TranslateKeycode(SDLK_RIGHT), Platform::VK_RIGHT);
    EXPECT_EQ(TranslateKeycode(SDLK_DOWN), Platform::VK_DOWN);
    EXPECT_EQ(TranslateKeycode(SDLK_PAGEUP), 0x21);
    EXPECT_EQ(TranslateKeycode(SDLK_HOME), 0x24);
    EXPECT_EQ(TranslateKeycode(SDLK_DELETE), 0x2E);
}

TEST(PlatformKeyCodesTest, KeypadKeys)
{
    EXPECT_EQ(TranslateKeycode(SDLK_KP_0), 0x60);
    EXPECT_EQ(TranslateKeycode(SDLK_KP_9), 0x69);
    EXPECT_EQ(TranslateKeycode(SDLK_KP_MULTIPLY), 0x6A);
    EXPECT_EQ(TranslateKeycode(SDLK_KP_DIVIDE), 0x6F);
}

TEST(PlatformKeyCodesTest, PunctuationUsesOemCodes)
{
    EXPECT_EQ(TranslateKeycode(SDLK_SEMICOLON), 0xBA);
    EXPECT_EQ(TranslateKeycode(SDLK_EQUALS), 0xBB);
    EXPECT_EQ(TranslateKeycode(SDLK_MINUS), 0xBD);
    EXPECT_EQ(TranslateKeycode(SDLK_BACKQUOTE), 0xC0);
    EXPECT_EQ(TranslateKeycode(SDLK_BACKSLASH), 0xDC);
    EXPECT_EQ(TranslateKeycode(SDLK_QUOTE), 0xDE);
}

TEST(PlatformKeyCodesTest, UnknownKeysBecomeZero)
{
    EXPECT_EQ(TranslateKeycode(SDLK_UNKNOWN), 0);
    EXPECT_EQ(TranslateKeycode(SDLK_MUTE), 0);
    EXPECT_EQ(TranslateKeycode('A'), 0);
    EXPECT_EQ(TranslateKeycode(-1), 0);
}
