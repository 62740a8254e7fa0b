#include "editor/GuiInput.h"

GuiInput& GuiInput::Get()
{
    static GuiInput input;
    return input;
}
