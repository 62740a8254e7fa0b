#include "input/KeyboardState.h"

#include <algorithm>

namespace Input
{
KeyboardState& KeyboardState::Get()
{
    static KeyboardState* state = new KeyboardState();
    return *state;
}

void KeyboardState::Reset()
{
    m_Current.fill(0);
    m_Previous.fill(0);
    m_Bindings.fill(kUnbound);
    m_Held.clear();
    m_Scroll = 0;
    m_MouseMoved = false;
    m_MouseVisible = true;
    m_ForceMouseVisible = false;
    m_MousePosition = Math::Point2D(0.0f, 0.0f);
    m_MousePercent = Math::Point2D(0.0f, 0.0f);
}

bool KeyboardState::AnyDown() const
{
    return std::any_of(m_Current.begin(), m_Current.end(), [](std::uint8_t state) { return state != 0; });
}

void KeyboardState::ClearKeys()
{
    m_Current.fill(0);
    m_Previous.fill(0);
}

int KeyboardState::FindBinding(const std::string& binding) const
{
    for (int code = 0; code < kKeyCount; ++code)
        if (m_Bindings[code] == binding)
            return code;
    return -1;
}
}
