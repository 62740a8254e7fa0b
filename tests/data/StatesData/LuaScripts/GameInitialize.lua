-- Starts the game in the state "First"; the states then walk the run loop: a
-- switch, a restart and a quit, each entry point printing its call.
function InitializeGame()
    GameStateManager.SetInitialState("First")
end
