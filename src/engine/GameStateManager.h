// GameStateManager: which game state runs, and the calls into it that the run
// loop makes. A state is entered (loaded unless it is a restart, then
// initialized), updated once a frame while the next state equals the current
// one, and left (uninitialized, and unloaded unless it restarts).
//
// Setting the next state to Quit (-2) ends the game; Restart (-1) runs the
// current state again without unloading it: after a restart the restarted
// state is current again, by id and by object, as if it had never been left. Until script states exist, the
// manager holds one built-in state that does nothing, which is current at start.
#pragma once

#include "engine/System.h"

#include <memory>
#include <string>
#include <vector>

// One state of the game, driven through its five entry points.
class GameState
{
public:
    virtual ~GameState() = default;
    // The state is entered after another state.
    virtual void Load() {}
    // The state starts (also at a restart).
    virtual void Initialize() {}
    // One frame of dt seconds.
    virtual void Update(float dt) {}
    // The state ends (also at a restart).
    virtual void Uninitialize() {}
    // The state is left for another state.
    virtual void Unload() {}
    // The state's name.
    virtual std::string GetName() const = 0;
};

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

    // Adds a state; its id is its index. The first state added is current at start.
    int AddState(std::shared_ptr<GameState> state);
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

    // Run loop: loads and initializes the current state; a restart makes the previous state
    // current (and next) again, without loading it.
    void EnterState();
    // Run loop: uninitializes, and unloads unless the next state is Restart.
    void LeaveState();
    // Run loop: the current state becomes the previous one, the next state becomes current.
    void Advance();

    int m_InitialState = 0;
    // The state that was current before the last Advance; a restart returns to it.
    int m_PreviousState = 0;
    int m_NextState = 0;
    int m_CurrentState = 0;
    // Every state, by id.
    std::vector<std::shared_ptr<GameState>> m_States;
    std::shared_ptr<GameState> m_Current;
    std::shared_ptr<GameState> m_Next;

    GameStateManager();

private:
    std::shared_ptr<GameState> StateById(int id) const;
};
