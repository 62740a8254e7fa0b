#include "input/InputManager.h"

#include "editor/GuiInput.h"
#include "engine/GenericEvents.h"
#include "engine/Manager.h"
#include "engine/Space.h"
#include "engine/SpaceManager.h"
#include "input/BindingTable.h"
#include "input/Gamepad.h"
#include "input/InputEvents.h"
#include "input/PadSource.h"
#include "input/KeyboardState.h"
#include "platform/Cursor.h"
#include "platform/KeyCodes.h"

#include <cmath>
#include <set>
#include <string>

using Input::KeyboardState;

namespace
{
Engine::EventManager& GlobalEvents()
{
    return Engine::Manager::Get().m_Events;
}

// A percentage of a size; 0 where the size is zero, as with a window minimized before it was made.
float Percent(int position, int size)
{
    return size > 0 ? static_cast<float>(position) / static_cast<float>(size) * 100.0f : 0.0f;
}

// The unit vector of four bound keys (up +y, right +x), or zero.
Math::Vector2D KeyVector(const KeyboardState& keys, const char* up, const char* down, const char* left,
                         const char* right)
{
    Math::Vector2D vector(0.0f, 0.0f);
    if (keys.IsDown(keys.FindBinding(up)))
        vector.y += 1.0f;
    if (keys.IsDown(keys.FindBinding(down)))
        vector.y -= 1.0f;
    if (keys.IsDown(keys.FindBinding(left)))
        vector.x -= 1.0f;
    if (keys.IsDown(keys.FindBinding(right)))
        vector.x += 1.0f;
    const float length = std::sqrt(vector.x * vector.x + vector.y * vector.y);
    if (length > 0.0f)
        vector = Math::Vector2D(vector.x / length, vector.y / length);
    return vector;
}
}

InputManager& InputManager::Get()
{
    static InputManager* manager = new InputManager();
    return *manager;
}

void InputManager::Initialize(Window* window)
{
    m_Window = window;
    KeyboardState& keys = KeyboardState::Get();
    keys.Reset();
    Input::FillBindingTable(keys);
    Gamepad::ResetAll();
    GuiInput::Get().SetKeyMap();
    if (Engine::Space* level = Engine::SpaceManager::Get().GetSpace(Engine::Level))
    {
        level->m_Events.UnregisterAll(this);
        level->m_Events.RegisterEvent(this, "Pause", &InputManager::OnPause);
    }
}

void InputManager::Update(float dt, bool focused)
{
    KeyboardState& keys = KeyboardState::Get();
    if (!focused || !m_InputEnabled)
    {
        // Nothing stays held while the window is in the background; the held bindings stay, so their
        // "Pressed" events resume on return.
        keys.m_Scroll = 0;
        keys.m_MouseMoved = false;
        keys.ClearKeys();
        for (int i = 0; i < Gamepad::kCount; ++i)
            Gamepad::Get(i).ClearButtons();
        return;
    }
    KeyboardStep();
    if (Input::PadSource* source = Gamepad::GetSource())
        source->Refresh();
    for (int i = 0; i < Gamepad::kCount; ++i)
        Gamepad::Get(i).Step(dt, GlobalEvents());
    GuiInput& gui = GuiInput::Get();
    gui.m_KeyCtrl = keys.IsDown(Platform::VK_CONTROL);
    gui.m_KeyShift = keys.IsDown(Platform::VK_SHIFT);
}

void InputManager::KeyboardStep()
{
    KeyboardState& keys = KeyboardState::Get();
    keys.m_Scroll = 0;
    keys.m_MouseMoved = false;
    keys.CopyToPrevious();
    if (!m_InputEnabled)
        return;
    BoundInput vectors;
    vectors.PlayerIndex = kKeyboardPlayer;
    vectors.Move = KeyVector(keys, "InputMoveUp", "InputMoveDown", "InputMoveLeft", "InputMoveRight");
    vectors.Aim = KeyVector(keys, "InputArrowUp", "InputArrowDown", "InputArrowLeft", "InputArrowRight");
    GlobalEvents().Dispatch("InputUpdatePlayerVectors", &vectors);
    // A copy: a listener may press or release keys of its own.
    const std::set<std::string> held = keys.m_Held;
    for (const std::string& binding : held)
        GlobalEvents().Dispatch(binding + "Pressed", &vectors);
}

void InputManager::OnKeyDown(int code)
{
    SendKey(code, true);
}

void InputManager::OnKeyUp(int code)
{
    SendKey(code, false);
}

void InputManager::SendKey(int code, bool down)
{
    if (!m_InputEnabled)
        return;
    BoundInput event;
    event.PlayerIndex = kKeyboardPlayer;
    event.Raw = code;
    GlobalEvents().Dispatch(down ? "InputRawKeyDown" : "InputRawKeyUp", &event);
    GuiInput& gui = GuiInput::Get();
    gui.m_KeysDown[static_cast<unsigned>(code) % 256u] = down;
    // A click on a GUI window never reaches the game.
    if (!KeyboardState::IsKeyCode(code) || (code >= Input::Mouse_Left && gui.m_WantCaptureMouse))
        return;
    KeyboardState& keys = KeyboardState::Get();
    keys.m_Current[code] = down ? 1 : 0;
    const std::string binding = keys.m_Bindings[code];
    if (binding == Input::kUnbound)
        return;
    if (down)
    {
        GlobalEvents().Dispatch(binding + "Triggered", &event);
        keys.m_Held.insert(binding);
    }
    else
    {
        GlobalEvents().Dispatch(binding + "Released", &event);
        keys.m_Held.erase(binding);
    }
}

void InputManager::OnMouseMove(int x, int y, int renderWidth, int renderHeight)
{
    KeyboardState& keys = KeyboardState::Get();
    const bool moved = x != static_cast<int>(keys.m_MousePosition.x) || y != static_cast<int>(keys.m_MousePosition.y);
    keys.m_MousePosition = Math::Point2D(static_cast<float>(x), static_cast<float>(y));
    keys.m_MousePercent = Math::Point2D(Percent(x, renderWidth), Percent(y, renderHeight));
    GuiInput& gui = GuiInput::Get();
    gui.m_MouseX = static_cast<float>(x);
    gui.m_MouseY = static_cast<float>(y);
    if (moved)
        keys.m_MouseMoved = true;
}

void InputManager::OnMouseWheel(int delta)
{
    KeyboardState::Get().m_Scroll = delta;
    GuiInput::Get().m_MouseWheel += delta < 1 ? -1.0f : 1.0f;
}

void InputManager::GamepadRumble(float seconds, int strength, int index)
{
    if (index >= Gamepad::kCount)
        return;
    if (index < 0)
    {
        for (int i = 0; i < Gamepad::kCount; ++i)
            Gamepad::Get(i).Rumble(seconds, strength);
        return;
    }
    Gamepad::Get(index).Rumble(seconds, strength);
}

void InputManager::OnPause(Event* event)
{
    const bool paused = static_cast<GenericEvent::Pause*>(event)->m_Paused;
    for (int i = 0; i < Gamepad::kCount; ++i)
        Gamepad::Get(i).SetPaused(paused);
}

void InputManager::SetMouseVisible(bool visible)
{
    KeyboardState& keys = KeyboardState::Get();
    if (keys.m_MouseVisible == visible)
        return;
    keys.m_MouseVisible = visible;
    Platform::ShowCursor(visible);
}

void InputManager::SetForceMouseVisible(bool visible)
{
    KeyboardState& keys = KeyboardState::Get();
    if (keys.m_ForceMouseVisible == visible)
        return;
    keys.m_ForceMouseVisible = visible;
    Platform::ShowCursor(visible);
}
