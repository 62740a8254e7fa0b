#include "platform/KeyCodes.h"

#include <SDL.h>

#include <utility>

namespace Platform
{
namespace
{
// Every SDL keycode with a virtual key, apart from letters and digits.
constexpr std::pair<SDL_Keycode, int> kKeyTable[] = {
    {SDLK_BACKSPACE, VK_BACK},
    {SDLK_TAB, VK_TAB},
    {SDLK_RETURN, VK_RETURN},
    {SDLK_KP_ENTER, VK_RETURN},
    {SDLK_LSHIFT, VK_SHIFT},
    {SDLK_RSHIFT, VK_SHIFT},
    {SDLK_LCTRL, VK_CONTROL},
    {SDLK_RCTRL, VK_CONTROL},
    {SDLK_LALT, VK_MENU},
    {SDLK_RALT, VK_MENU},
    {SDLK_PAUSE, 0x13},
    {SDLK_CAPSLOCK, 0x14},
    {SDLK_ESCAPE, VK_ESCAPE},
    {SDLK_SPACE, VK_SPACE},
    {SDLK_PAGEUP, 0x21},
    {SDLK_PAGEDOWN, 0x22},
    {SDLK_END, 0x23},
    {SDLK_HOME, 0x24},
    {SDLK_LEFT, VK_LEFT},
    {SDLK_UP, VK_UP},
    {SDLK_RIGHT, VK_RIGHT},
    {SDLK_DOWN, VK_DOWN},
    {SDLK_PRINTSCREEN, 0x2C},
    {SDLK_INSERT, 0x2D},
    {SDLK_DELETE, 0x2E},
    {SDLK_LGUI, 0x5B},
    {SDLK_RGUI, 0x5C},
    {SDLK_APPLICATION, 0x5D},
    {SDLK_KP_0, 0x60},
    {SDLK_KP_1, 0x61},
    {SDLK_KP_2, 0x62},
    {SDLK_KP_3, 0x63},
    {SDLK_KP_4, 0x64},
    {SDLK_KP_5, 0x65},
    {SDLK_KP_6, 0x66},
    {SDLK_KP_7, 0x67},
    {SDLK_KP_8, 0x68},
    {SDLK_KP_9, 0x69},
    {SDLK_KP_MULTIPLY, 0x6A},
    {SDLK_KP_PLUS, 0x6B},
    {SDLK_KP_MINUS, 0x6D},
    {SDLK_KP_PERIOD, 0x6E},
    {SDLK_KP_DIVIDE, 0x6F},
    {SDLK_F1, 0x70},
    {SDLK_F2, 0x71},
    {SDLK_F3, 0x72},
    {SDLK_F4, VK_F4},
    {SDLK_F5, 0x74},
    {SDLK_F6, 0x75},
    {SDLK_F7, 0x76},
    {SDLK_F8, 0x77},
    {SDLK_F9, 0x78},
    {SDLK_F10, VK_F10},
    {SDLK_F11, 0x7A},
    {SDLK_F12, 0x7B},
    {SDLK_F13, 0x7C},
    {SDLK_F14, 0x7D},
    {SDLK_F15, 0x7E},
    {SDLK_F16, 0x7F},
    {SDLK_F17, 0x80},
    {SDLK_F18, 0x81},
    {SDLK_F19, 0x82},
    {SDLK_F20, 0x83},
    {SDLK_F21, 0x84},
    {SDLK_F22, 0x85},
    {SDLK_F23, 0x86},
    {SDLK_F24, 0x87},
    {SDLK_NUMLOCKCLEAR, 0x90},
    {SDLK_SCROLLLOCK, 0x91},
    {SDLK_SEMICOLON, 0xBA},
    {SDLK_EQUALS, 0xBB},
    {SDLK_COMMA, 0xBC},
    {SDLK_MINUS, 0xBD},
    {SDLK_PERIOD, 0xBE},
    {SDLK_SLASH, 0xBF},
    {SDLK_BACKQUOTE, 0xC0},
    {SDLK_LEFTBRACKET, 0xDB},
    {SDLK_BACKSLASH, 0xDC},
    {SDLK_RIGHTBRACKET, 0xDD},
    {SDLK_QUOTE, 0xDE},
};
}

// Letters and digits are their own ASCII codes in SDL (letters in lower case)
// and their upper-case ASCII codes as virtual keys; the rest come from the table.
int TranslateKeycode(int sdlKeycode)
{
    if (sdlKeycode >= SDLK_a && sdlKeycode <= SDLK_z)
        return 'A' + (sdlKeycode - SDLK_a);
    if (sdlKeycode >= SDLK_0 && sdlKeycode <= SDLK_9)
        return '0' + (sdlKeycode - SDLK_0);
    for (const auto& [keycode, virtualKey] : kKeyTable)
    {
        if (keycode == sdlKeycode)
            return virtualKey;
    }
    return 0;
}
}
