// GameStateManager: which game state runs, and the calls into it that the run
// loop makes. The states are the scripts of "LuaScripts/GameStates/", found by
// RegisterGameStates (the Lua system's start-up calls it) and given ids in the
// order found; the game's start script picks the first one:
//
//   GameStateManager.SetInitialState("TitleState")     -- in InitializeGame
//   GameStateManager.SetNextState("GameplayState")     -- later, from any script
//   GameStateManager.Next = GameStateManager.Quit      -- ends the game
//
// A state is entered (loaded unless it is a restart, then initialized), updated
// once a frame while the next state equals the current one, and left
// (uninitialized, and unloaded unless it restarts). Restart (-1) runs the
// current state again without unloading it: after a restart the restarted
// state is current again, by id and by object, as if it had never been left.
#pragma once

#include "engine/GameState.h"
#include "engine/System.h"

#include <memory>
#include <string>
#include <vector>

class LuaSystem;

class GameStateManager : public System
{
public:
    // Id of no valid state.
    static constexpr int Invalid = -3;
    // Next state that ends the game.
    static constexpr int Quit = -2;
    // Next state that runs the current state again.
    static constexpr int Restart = -1;

    // The one game state manager.
    static GameStateManager& Get();

    // Calls "Update" of the current state.
    void Update(float dt) override;
    Meta::Data* GetMeta() const override;

    // Adds a state, or replaces the state of the same name (which keeps its id); gives the id. The
    // first state added is current (and initial) until SetInitialState picks one.
    int AddState(std::shared_ptr<GameState> state);
    // Makes a state of every script of "LuaScripts/GameStates/" in the data directory, run by
    // `system` (the program's when null); the scripts don't run yet.
    void RegisterGameStates(LuaSystem* system = nullptr);
    // Picks the next state by name; an unknown name changes nothing.
    void SetNextState(const std::string& name);
    // Makes a state by name the initial, current and next state.
    void SetInitialState(const std::string& name);
    // Sets the next state's id directly (Quit and Restart included).
    void SetNext(int id) { m_NextState = id; }
    // The next state's id.
    int GetNextStateId() const { return m_NextState; }
    // The current state's id.
    int GetCurrentStateId() const { return m_CurrentState; }
    // The current state, or null.
    GameState* GetCurrentState() const { return m_Current.get(); }
    // The state with this name, or null.
    GameState* GetGameState(const std::string& name) const;

    // Run loop: loads and initializes the current state ("Invalid game state!" when there is
    // none); a restart makes the previous state current (and next) again, without loading it.
    void EnterState();
    // Run loop: uninitializes, and unloads unless the next state is Restart.
    void LeaveState();
    // Run loop: the current state becomes the previous one, the next state becomes current.
    void Advance();

    int m_InitialState = Invalid;
    // The state that was current before the last Advance; a restart returns to it.
    int m_PreviousState = Invalid;
    int m_NextState = Invalid;
    int m_CurrentState = Invalid;
    // Every state, by id.
    std::vector<std::shared_ptr<GameState>> m_States;
    std::shared_ptr<GameState> m_Current;
    std::shared_ptr<GameState> m_Next;

    GameStateManager();

private:
    std::shared_ptr<GameState> StateById(int id) const;
};
