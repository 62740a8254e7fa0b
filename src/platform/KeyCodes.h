// KeyCodes: the Windows virtual-key codes that the input layer works with, and
// the one translation from the platform's key codes into them.
#pragma once

namespace Platform
{
// Virtual-key codes the engine names directly.
enum VirtualKey : int
{
    VK_BACK = 0x08,
    VK_TAB = 0x09,
    VK_RETURN = 0x0D,
    VK_SHIFT = 0x10,
    VK_CONTROL = 0x11,
    VK_MENU = 0x12,
    VK_ESCAPE = 0x1B,
    VK_SPACE = 0x20,
    VK_LEFT = 0x25,
    VK_UP = 0x26,
    VK_RIGHT = 0x27,
    VK_DOWN = 0x28,
    VK_F4 = 0x73,
    VK_F10 = 0x79
};

// The virtual-key code of an SDL keycode (SDL_Keycode), or 0 if it has none.
int TranslateKeycode(int sdlKeycode);
}
