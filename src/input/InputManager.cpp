#include "input/InputManager.h"

InputManager& InputManager::Get()
{
    static InputManager manager;
    return manager;
}

void InputManager::Update()
{
    m_MouseMoved = false;
    m_Wheel = 0;
}

void InputManager::OnKeyDown(int code)
{
    if (code >= 0 && code < kKeyCount)
        m_Down[code] = true;
}

void InputManager::OnKeyUp(int code)
{
    if (code >= 0 && code < kKeyCount)
        m_Down[code] = false;
}

void InputManager::SetMousePosition(int x, int y, float percentX, float percentY)
{
    m_MouseX = x;
    m_MouseY = y;
    m_MousePercentX = percentX;
    m_MousePercentY = percentY;
}
