#include "engine/Manager.h"
#include "engine/Window.h"
#include "input/InputTestSupport.h"
#include "utilities/lua/LuaTestSupport.h"
#include "utilities/lua/luabridge/LuaBinding.h"
#include "utilities/lua/luabridge/Stack.h"

using Platform::WindowMessage;
using Platform::WindowMessageKind;

namespace
{
// Scripts with every class bound and the manager as `manager`; input started as the window starts it,
// and a window whose message procedure the test calls as the pump would.
class InputScriptTest : public LuaTest
{
protected:
    void SetUp() override
    {
        RestartInput();
        luabridge::LuaBinding::Get().BindAll(L());
        luabridge::Stack<Engine::Manager*>::Push(L(), &Engine::Manager::Get());
        lua_setglobal(L(), "manager");
        m_Window.m_Created = true;
    }
    void TearDown() override
    {
        lua_getglobal(L(), "listener");
        const void* listener = lua_topointer(L(), -1);
        lua_pop(L(), 1);
        if (listener != nullptr)
            Engine::Manager::Get().m_Events.UnregisterAll(listener);
        RestartInput();
    }
    void Message(WindowMessageKind kind, WindowMessage message = {})
    {
        message.kind = kind;
        m_Window.HandleMessage(message);
    }
    void Key(WindowMessageKind kind, int key)
    {
        WindowMessage message;
        message.key = key;
        Message(kind, message);
    }
    // The start of a window frame: the input step (the pump brings nothing without a native window).
    void Frame() { m_Window.Update(0.016f); }

    Window m_Window;
};

// A Lua listener that writes "frame:event" for each binding event of the move-up key.
constexpr const char* kListener = R"(
    frame = 0
    heard = {}
    listener = {}
    function listener:OnTriggered(e) heard[#heard + 1] = frame .. ":Triggered:" .. e.PlayerIndex end
    function listener:OnPressed(e) heard[#heard + 1] = frame .. ":Pressed" end
    function listener:OnReleased(e) heard[#heard + 1] = frame .. ":Released" end
    manager:RegisterEvent(listener, "InputMoveUpTriggered", "OnTriggered")
    manager:RegisterEvent(listener, "InputMoveUpPressed", "OnPressed")
    manager:RegisterEvent(listener, "InputMoveUpReleased", "OnReleased")
    function Heard() return table.concat(heard, " ") end
)";
}

TEST_F(InputScriptTest, APressWithoutRepeatsReachesALuaListenerAsTriggeredThenPressedThenReleased)
{
    Run(kListener);
    Run("frame = 1");
    Frame();
    Key(WindowMessageKind::KeyDown, 'W');
    for (int frame = 2; frame <= 3; ++frame)
    {
        Run("frame = " + std::to_string(frame));
        Frame();
    }
    Key(WindowMessageKind::KeyUp, 'W');
    Run("frame = 4");
    Frame();
    Run("result = Heard()");
    EXPECT_EQ(String("result"), "1:Triggered:4 2:Pressed 3:Pressed 3:Released");
}

TEST_F(InputScriptTest, ARepeatMessageTriggersTheLuaListenerAgain)
{
    Run(kListener);
    Run("frame = 1");
    Frame();
    Key(WindowMessageKind::KeyDown, 'W');
    Run("frame = 2");
    Frame();
    Key(WindowMessageKind::KeyDown, 'W');
    Run("result = Heard()");
    EXPECT_EQ(String("result"), "1:Triggered:4 2:Pressed 2:Triggered:4");
}

TEST_F(InputScriptTest, KeyQueriesFollowTheWindowsKeyMessagesFrameByFrame)
{
    Frame();
    Key(WindowMessageKind::KeyDown, 'W');
    Run("t1, d1, r1 = InputManager.KeyTriggered(87), InputManager.KeyDown(87), InputManager.KeyReleased(87)");
    Frame();
    Run("t2, d2 = InputManager.KeyTriggered(87), InputManager.KeyDown(87)");
    Key(WindowMessageKind::KeyUp, 'W');
    Run("r3, d3 = InputManager.KeyReleased(87), InputManager.KeyDown(87)");
    Run("out = tostring(t1) .. tostring(d1) .. tostring(r1) .. tostring(t2) .. tostring(d2) .. tostring(r3) .."
        " tostring(d3) .. tostring(InputManager.KeyDown(300)) .. tostring(InputManager.KeyTriggered(-1))");
    EXPECT_EQ(String("out"), "truetruefalsefalsetruetruefalsefalsefalse");
}

TEST_F(InputScriptTest, MouseButtonsAreKeyCodesNamedByMouseButtonID)
{
    WindowMessage middle;
    middle.button = Platform::MiddleButton;
    Message(WindowMessageKind::MouseButtonDown, middle);
    Run("a = MouseButtonID.Mouse_Left b = MouseButtonID.Mouse_Middle"
        " down = InputManager.KeyDown(MouseButtonID.Mouse_Middle) any = InputManager.AnyKeyboardPress()");
    EXPECT_EQ(Number("a"), 256.0);
    EXPECT_EQ(Number("b"), 258.0);
    Run("out = tostring(down) .. tostring(any)");
    EXPECT_EQ(String("out"), "truetrue");
}

TEST_F(InputScriptTest, WheelAndMousePositionReachScriptsThroughTheWindow)
{
    WindowMessage move;
    move.x = 300;
    move.y = 200;
    Message(WindowMessageKind::MouseMove, move);
    WindowMessage wheel;
    wheel.wheelDelta = -120;
    Message(WindowMessageKind::MouseWheel, wheel);
    Run("p = InputManager.GetRawMousePosition() x, y = p.x, p.y"
        " s, up, down = InputManager.MouseScroll(), InputManager.MouseScrollUp(), InputManager.MouseScrollDown()");
    EXPECT_EQ(Number("x"), 300.0);
    EXPECT_EQ(Number("y"), 200.0);
    EXPECT_EQ(Number("s"), -120.0);
    Run("out = tostring(up) .. tostring(down)");
    EXPECT_EQ(String("out"), "falsetrue");
    Frame();
    Run("s = InputManager.MouseScroll()");
    EXPECT_EQ(Number("s"), 0.0);
}

TEST_F(InputScriptTest, ScriptsSetTheCursorFlagsAndTheInputEnabledFlag)
{
    Run("InputManager.SetMouseVisible(false) InputManager.SetForceMouseVisible(true)"
        " out = tostring(InputManager.GetMouseVisible()) .. tostring(InputManager.GetForceMouseVisible())"
        " InputManager.SetMouseVisible(true) InputManager.SetForceMouseVisible(false)"
        " InputManager.InputEnabled = false enabled = InputManager.InputEnabled");
    EXPECT_EQ(String("out"), "falsetrue");
    EXPECT_FALSE(InputManager::Get().m_InputEnabled);
    Key(WindowMessageKind::KeyDown, 'W');
    EXPECT_FALSE(Input::KeyboardState::Get().IsDown('W'));
}

TEST_F(InputScriptTest, ScriptsReachGamepadsThroughRumbleAndTheConnectedCount)
{
    FakePadSource pads;
    pads.connected[0] = true;
    Gamepad::SetSource(&pads);
    {
        StdoutCapture out;
        Frame();
    }
    pads.states[0].Gamepad.wButtons = Input::PadX;
    Frame();
    Run("count = Gamepad.GetControllersConnected() any = tostring(InputManager.AnyGamepadPress())"
        " InputManager.GamepadRumble(1.5, 3, 0)");
    EXPECT_EQ(Number("count"), 1.0);
    EXPECT_EQ(String("any"), "true");
    ASSERT_FALSE(pads.motorCalls.empty());
    EXPECT_EQ(pads.motorCalls.back().motors.wRightMotorSpeed, 28000);
    EXPECT_EQ(Gamepad::Get(0).m_RumbleTime, 1.5f);
}

TEST_F(InputScriptTest, ListenersReadTheMembersOfBoundInputAndGamePadDisconnect)
{
    Run(R"(
        listener = {}
        function listener:OnRaw(e) raw, player = e.Raw, e.PlayerIndex end
        function listener:OnVectors(e) if e.PlayerIndex == 4 then moveY, aimX = e.Move.y, e.Aim.x end end
        function listener:OnDisconnect(e) pad = e.ControllerIndex end
        manager:RegisterEvent(listener, "InputRawKeyDown", "OnRaw")
        manager:RegisterEvent(listener, "InputUpdatePlayerVectors", "OnVectors")
        manager:RegisterEvent(listener, "GamePadDisconnect", "OnDisconnect")
    )");
    Key(WindowMessageKind::KeyDown, 'S');
    EXPECT_EQ(Number("raw"), 83.0);
    EXPECT_EQ(Number("player"), 4.0);
    FakePadSource pads;
    pads.connected[2] = true;
    Gamepad::SetSource(&pads);
    std::string printed;
    {
        StdoutCapture out;
        Frame();
        pads.connected[2] = false;
        Frame();
        printed = out.Text();
    }
    EXPECT_EQ(printed, "controller 2 connected!\ncontroller 2 disconnected!\n");
    EXPECT_EQ(Number("moveY"), -1.0);
    EXPECT_EQ(Number("aimX"), 0.0);
    EXPECT_EQ(Number("pad"), 2.0);
}
