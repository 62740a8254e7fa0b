#include "editor/GuiInput.h"

GuiInput& GuiInput::Get()
{
    static GuiInput input;
    return input;
}

void GuiInput::SetKeyMap()
{
    auto set = [this](GuiKey key, int code) { m_KeyMap[static_cast<int>(key)] = code; };
    set(GuiKey::Tab, 9);
    set(GuiKey::LeftArrow, 37);
    set(GuiKey::RightArrow, 39);
    set(GuiKey::UpArrow, 38);
    set(GuiKey::DownArrow, 40);
    set(GuiKey::Home, 36);
    set(GuiKey::End, 35);
    set(GuiKey::Delete, 46);
    set(GuiKey::Backspace, 8);
    set(GuiKey::Enter, 13);
    set(GuiKey::Escape, 27);
    set(GuiKey::A, 'A');
    set(GuiKey::C, 'C');
    set(GuiKey::V, 'V');
    set(GuiKey::X, 'X');
    set(GuiKey::Y, 'Y');
    set(GuiKey::Z, 'Z');
}
