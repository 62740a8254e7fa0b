// The game's own component scripts (Data/LuaScripts/Components/) on live
// objects, driven by their space's frames.
#include "utilities/lua/components/ScriptComponentTestSupport.h"

#include "Components/Transform/Transform.h"
#include "engine/Manager.h"
#include "input/Gamepad.h"
#include "input/InputManager.h"
#include "input/PadSource.h"
#include "physics/Body.h"
#include "physics/ColliderSphere.h"
#include "physics/PhysicsSystem.h"

#include <cmath>
#include <filesystem>

namespace
{
class ShippedComponentsTest : public ScriptComponentTest
{
protected:
    void SetUp() override
    {
        const std::filesystem::path shipped = std::filesystem::path(VORN_DATA_DIR) / "LuaScripts/Components";
        for (const auto& entry : std::filesystem::directory_iterator(shipped))
        {
            std::ifstream in(entry.path());
            std::stringstream text;
            text << in.rdbuf();
            WriteComponent(entry.path().stem().string(), text.str());
        }
        Start();
    }
};
}

TEST_F(ShippedComponentsTest, SpinnerTurnsItsObjectAtItsRate)
{
    GameObject* object = MakeObject();
    auto* spinner = static_cast<LuaComponent*>(object->AddComponent("Spinner"));
    ASSERT_NE(spinner, nullptr);
    Run("obj.Spinner.DegreesPerSecond = Vector3D(0, 90, 0)");
    m_Space.Update(1.0f);
    const Math::Quaternion& rotation = object->GetComponent<Transform>()->m_Rotation;
    const float half = std::sqrt(0.5f);
    EXPECT_NEAR(rotation.y, half, 1e-4);
    EXPECT_NEAR(rotation.w, half, 1e-4);
    EXPECT_NEAR(rotation.x, 0.0f, 1e-4);

    *spinner->GetAny("Spinning").Get<bool>() = false;
    m_Space.Update(1.0f);
    EXPECT_NEAR(object->GetComponent<Transform>()->m_Rotation.y, half, 1e-4);
}

TEST_F(ShippedComponentsTest, TimedDestroyRemovesItsObjectOnceItsTimeIsUp)
{
    GameObject* object = MakeObject();
    object->AddComponent("TimedDestroy");
    Run("obj.TimedDestroy.Lifetime = 0.5");
    // The lifetime is read when the clock starts: start it again with the new value.
    auto* timer = static_cast<LuaComponent*>(object->GetComponent("TimedDestroy"));
    timer->OnScriptLoaded(true);
    const GameObjectId id = object->GetId();
    m_Space.Update(0.3f);
    EXPECT_NE(m_Space.GetGameObject(id), nullptr);
    m_Space.Update(0.3f);
    EXPECT_EQ(m_Space.GetGameObject(id), nullptr);
}

TEST_F(ShippedComponentsTest, BobberFloatsItsObjectAroundWhereItStarted)
{
    GameObject* object = MakeObject();
    object->GetComponent<Transform>()->m_Position.y = 2.0f;
    object->AddComponent("Bobber");
    m_Space.Update(0.5f);  // a quarter of a cycle at the default rate: the top
    EXPECT_NEAR(object->GetComponent<Transform>()->m_Position.y, 2.25f, 1e-4);
    m_Space.Update(1.0f);  // three quarters: the bottom
    EXPECT_NEAR(object->GetComponent<Transform>()->m_Position.y, 1.75f, 1e-4);
}

TEST_F(ShippedComponentsTest, BobberFloatsAroundWhereItsObjectWasPlacedAfterItWasMade)
{
    GameObject* object = MakeObject();
    object->AddComponent("Bobber");
    // Placed after its components started, as a script that creates and then moves an object does.
    object->GetComponent<Transform>()->m_Position.y = -6.0f;
    m_Space.Update(0.5f);
    EXPECT_NEAR(object->GetComponent<Transform>()->m_Position.y, -5.75f, 1e-4);
}

TEST_F(ShippedComponentsTest, OrbiterCarriesItsObjectRoundACircleAboutWhereItStood)
{
    GameObject* object = MakeObject();
    object->AddComponent("Orbiter");  // radius 4, 45 degrees a second, from angle 0
    Transform& transform = *object->GetComponent<Transform>();
    transform.m_Position = Math::Point3D(10.0f, -6.0f, 2.0f);
    m_Space.Update(2.0f);  // 90 degrees on
    EXPECT_NEAR(transform.m_Position.x, 10.0f, 1e-4);
    EXPECT_NEAR(transform.m_Position.z, 6.0f, 1e-4);
    EXPECT_FLOAT_EQ(transform.m_Position.y, -6.0f);
    m_Space.Update(2.0f);  // 180 degrees on
    EXPECT_NEAR(transform.m_Position.x, 6.0f, 1e-4);
    EXPECT_NEAR(transform.m_Position.z, 2.0f, 1e-4);
}

TEST_F(ShippedComponentsTest, SpinnerVariablesGoThroughTheTextForm)
{
    GameObject* object = MakeObject();
    auto* spinner = static_cast<LuaComponent*>(object->AddComponent("Spinner"));
    spinner->GetAny("DegreesPerSecond").Get<Math::Vector3D>()->x = 45.0f;
    Util::Serializer writer;
    writer.OpenText("");
    spinner->Write(writer, "Spinner", nullptr, false, false);
    EXPECT_EQ(writer.GetText(), "Spinner \n{\n  DegreesPerSecond { 45 90 0 }\n}\n");
    Util::Serializer reader;
    reader.OpenText("{\n  DegreesPerSecond { 1 2 3 }\n  Spinning false\n}\n");
    ASSERT_TRUE(reader.ReadObject(Meta::Get<LuaComponent>(), spinner));
    EXPECT_FLOAT_EQ(spinner->GetAny("DegreesPerSecond").Get<Math::Vector3D>()->z, 3.0f);
    EXPECT_FALSE(*spinner->GetAny("Spinning").Get<bool>());
}

TEST_F(ShippedComponentsTest, CollisionLoggerPrintsEachContactOfItsObjectOnceWhenItBegins)
{
    auto* physics = new PhysicsSystem();
    m_Space.AddSystem(physics, Meta::Get<PhysicsSystem>());
    const ArchetypeId ball = MakeArchetype("LoggedBall", {"Transform", "PhysicsBody", "ColliderSphere"});
    GameObject* first = m_Space.CreateObject(ball);
    GameObject* second = m_Space.CreateObject(ball);
    first->SetName("Crate");
    second->SetName("Boulder");
    second->GetComponent<Transform>()->m_Position = Math::Point3D(0.0f, 1.5f, 0.0f);
    first->GetComponent<ColliderSphere>()->UpdateBounds();
    second->GetComponent<ColliderSphere>()->UpdateBounds();
    first->GetComponent<PhysicsBody>()->AddToList(0);
    ASSERT_NE(first->AddComponent("CollisionLogger"), nullptr);
    const std::string line = "Collision: Crate (" + std::to_string(first->GetId()) + ") met Boulder (" +
                             std::to_string(second->GetId()) + "), normal (0.00, 1.00, 0.00)";

    StdoutCapture printed;
    m_Space.Update(1.0f / 60.0f);
    EXPECT_NE(printed.Text().find(line), std::string::npos) << printed.Text();

    // The contact goes on (the correction leaves them overlapping): nothing more is printed.
    StdoutCapture continuing;
    m_Space.Update(1.0f / 60.0f);
    EXPECT_EQ(continuing.Text().find("met"), std::string::npos) << continuing.Text();

    // Overlaps of other groups are quiet unless asked for.
    first->GetComponent<PhysicsBody>()->m_list.clear();
    StdoutCapture quiet;
    m_Space.Update(1.0f / 60.0f);
    m_Space.Update(1.0f / 60.0f);
    EXPECT_EQ(quiet.Text().find("met"), std::string::npos) << quiet.Text();
}

namespace
{
// One pad that answers with the left stick held where the test puts it.
class OnePad : public Input::PadSource
{
public:
    bool ReadState(int pad, Input::PadState& state) override
    {
        if (pad != 1)
            return false;
        state.Gamepad.sThumbLX = stickX;
        return true;
    }
    void SetMotors(int, const Input::PadMotors&) override {}
    std::int16_t stickX = 0;
};

// Input started as the window starts it, and put back after.
struct InputScope
{
    InputScope() { InputManager::Get().Initialize(nullptr); }
    ~InputScope()
    {
        Gamepad::SetSource(nullptr);
        InputManager::Get().Initialize(nullptr);
    }
};
}

TEST_F(ShippedComponentsTest, PlayerMovementWalksTheFirstPlayerByTheMoveKeys)
{
    InputScope input;
    GameObject* object = MakeObject();
    ASSERT_NE(object->AddComponent("PlayerMovement"), nullptr);
    Run("obj.PlayerMovement.Speed = 2");
    InputManager::Get().OnKeyDown('W');
    InputManager::Get().Update(0.5f);
    m_Space.Update(0.5f);
    const auto& position = object->GetComponent<Transform>()->m_Position;
    EXPECT_NEAR(position.z, -1.0f, 1e-5);
    EXPECT_NEAR(position.x, 0.0f, 1e-5);
    InputManager::Get().OnKeyUp('W');
    InputManager::Get().OnKeyDown('D');
    InputManager::Get().Update(0.5f);
    m_Space.Update(0.5f);
    EXPECT_NEAR(position.x, 1.0f, 1e-5);
    EXPECT_NEAR(position.z, -1.0f, 1e-5);
    InputManager::Get().OnKeyUp('D');
    InputManager::Get().Update(0.5f);
    m_Space.Update(0.5f);
    EXPECT_NEAR(position.x, 1.0f, 1e-5);
}

TEST_F(ShippedComponentsTest, PlayerMovementFollowsOnlyItsOwnPadAndLeavesTheKeyboardToPlayerZero)
{
    InputScope input;
    OnePad pad;
    pad.stickX = 32767;
    Gamepad::SetSource(&pad);
    GameObject* second = MakeObject();
    second->AddComponent("PlayerMovement");
    Run("obj.PlayerMovement.PlayerIndex = 1 obj.PlayerMovement.Speed = 1");
    InputManager::Get().OnKeyDown('W');
    {
        StdoutCapture connected;
        InputManager::Get().Update(1.0f);
    }
    m_Space.Update(1.0f);
    const auto& position = second->GetComponent<Transform>()->m_Position;
    EXPECT_NEAR(position.x, 1.0f, 1e-5);
    EXPECT_NEAR(position.z, 0.0f, 1e-5);
}

TEST_F(ShippedComponentsTest, PlayerMovementStopsListeningWhenItsObjectIsGone)
{
    InputScope input;
    GameObject* object = MakeObject();
    object->AddComponent("PlayerMovement");
    object->Destroy();
    m_Space.Update(0.1f);
    InputManager::Get().OnKeyDown('W');
    InputManager::Get().Update(0.1f);  // would reach a dead component's script otherwise
    SUCCEED();
}
