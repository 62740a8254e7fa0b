#include "engine/GameStateManager.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{
class NamedState : public GameState
{
public:
    explicit NamedState(std::string name) : m_Name(std::move(name)) {}
    std::string GetName() const override { return m_Name; }
    std::string m_Name;
};
}

TEST(GameStateManagerTest, BuiltInStateIsCurrentAtStart)
{
    GameStateManager states;
    ASSERT_NE(states.GetCurrentState(), nullptr);
    EXPECT_EQ(states.GetCurrentStateId(), 0);
    EXPECT_EQ(states.GetNextStateId(), 0);
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
