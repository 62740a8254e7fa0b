#include "engine/GameStateManager.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{
class NamedState : public GameState
{
public:
    explicit NamedState(std::string name) : GameState(std::move(name)) {}
};
}

TEST(GameStateManagerTest, WithoutStatesNoStateIsCurrentAndEnteringReportsIt)
{
    GameStateManager states;
    EXPECT_EQ(states.GetCurrentState(), nullptr);
    EXPECT_EQ(states.GetCurrentStateId(), GameStateManager::Invalid);
}

TEST(GameStateManagerTest, FirstStateAddedIsCurrentUntilOneIsPicked)
{
    GameStateManager states;
    states.AddState(std::make_shared<NamedState>("Title"));
    states.AddState(std::make_shared<NamedState>("Play"));
    ASSERT_NE(states.GetCurrentState(), nullptr);
    EXPECT_EQ(states.GetCurrentState()->GetName(), "Title");
    EXPECT_EQ(states.GetCurrentStateId(), 0);
    states.SetInitialState("Play");
    EXPECT_EQ(states.GetCurrentState()->GetName(), "Play");
    EXPECT_EQ(states.GetNextStateId(), 1);
}

TEST(GameStateManagerTest, StateOfAKnownNameIsReplacedAndKeepsItsId)
{
    GameStateManager states;
    states.AddState(std::make_shared<NamedState>("Title"));
    const int play = states.AddState(std::make_shared<NamedState>("Play"));
    auto replacement = std::make_shared<NamedState>("Play");
    EXPECT_EQ(states.AddState(replacement), play);
    EXPECT_EQ(states.GetGameState("Play"), replacement.get());
    EXPECT_EQ(replacement->m_Id, play);
}

TEST(GameStateManagerTest, SentinelsHaveTheirValues)
{
    EXPECT_EQ(GameStateManager::Invalid, -3);
    EXPECT_EQ(GameStateManager::Quit, -2);
    EXPECT_EQ(GameStateManager::Restart, -1);
}

TEST(GameStateManagerTest, SetNextStateByNameAndUnknownNameChangesNothing)
{
    GameStateManager states;
    const int menu = states.AddState(std::make_shared<NamedState>("Menu"));
    states.SetNextState("Menu");
    EXPECT_EQ(states.GetNextStateId(), menu);
    states.SetNextState("Nowhere");
    EXPECT_EQ(states.GetNextStateId(), menu);
    EXPECT_EQ(states.GetGameState("Menu")->GetName(), "Menu");
    EXPECT_EQ(states.GetGameState("Nowhere"), nullptr);
}

TEST(GameStateManagerTest, SettingNextToTheValueItHasDoesNothing)
{
    GameStateManager states;
    states.AddState(std::make_shared<NamedState>("Title"));
    states.SetNext(states.GetCurrentStateId());
    EXPECT_EQ(states.GetNextStateId(), states.GetCurrentStateId());
    GameState* before = states.GetCurrentState();
    states.Advance();
    EXPECT_EQ(states.GetCurrentState(), before);
}

TEST(GameStateManagerTest, SetInitialStateMakesItCurrentAndNext)
{
    GameStateManager states;
    const int level = states.AddState(std::make_shared<NamedState>("Level"));
    states.SetInitialState("Level");
    EXPECT_EQ(states.GetCurrentStateId(), level);
    EXPECT_EQ(states.GetNextStateId(), level);
    EXPECT_EQ(states.m_InitialState, level);
    EXPECT_EQ(states.GetCurrentState()->GetName(), "Level");
}

TEST(GameStateManagerTest, AdvanceToAStateChosenByName)
{
    GameStateManager states;
    states.AddState(std::make_shared<NamedState>("Level"));
    states.SetNextState("Level");
    states.Advance();
    EXPECT_EQ(states.GetCurrentState()->GetName(), "Level");
}

namespace
{
// A state that counts the calls of its entry points.
class CountingState : public NamedState
{
public:
    using NamedState::NamedState;
    void Load() override { ++loads; }
    void Initialize() override { ++initializes; }
    void Uninitialize() override { ++uninitializes; }
    void Unload() override { ++unloads; }
    int loads = 0, initializes = 0, uninitializes = 0, unloads = 0;
};

// One pass of the run loop around the frames: leave the current state, advance, enter the next.
void Switch(GameStateManager& states)
{
    states.LeaveState();
    states.Advance();
    states.EnterState();
}
}

TEST(GameStateManagerTest, RestartKeepsTheRestartedStateCurrentByIdAndObject)
{
    GameStateManager states;
    states.AddState(std::make_shared<NamedState>("Title"));
    auto level = std::make_shared<CountingState>("Level");
    const int levelId = states.AddState(level);
    states.EnterState();
    states.SetNextState("Level");
    Switch(states);
    ASSERT_EQ(states.GetCurrentStateId(), levelId);

    states.SetNext(GameStateManager::Restart);
    Switch(states);
    EXPECT_EQ(states.GetCurrentStateId(), levelId);
    EXPECT_EQ(states.GetNextStateId(), levelId);
    EXPECT_EQ(states.GetCurrentState(), level.get());
    EXPECT_EQ(level->loads, 1);
    EXPECT_EQ(level->unloads, 0);
    EXPECT_EQ(level->initializes, 2);
    EXPECT_EQ(level->uninitializes, 1);
}

TEST(GameStateManagerTest, SetNextStateToTheInitialStateAfterARestartIsNotLost)
{
    GameStateManager states;
    states.AddState(std::make_shared<NamedState>("Title"));
    const int initial = states.GetCurrentStateId();
    states.AddState(std::make_shared<CountingState>("Level"));
    states.EnterState();
    states.SetNextState("Level");
    Switch(states);
    states.SetNext(GameStateManager::Restart);
    Switch(states);

    // The frame loop runs while current equals next: going back to the initial state must end it.
    states.SetNext(initial);
    EXPECT_NE(states.GetCurrentStateId(), states.GetNextStateId());
    Switch(states);
    EXPECT_EQ(states.GetCurrentStateId(), initial);
    EXPECT_EQ(states.GetCurrentState()->GetName(), "Title");
}
