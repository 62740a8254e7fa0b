-- The room tour's start script: laid over a copy of the game's data by the
-- rooms' end-to-end test, it starts the game in the tour instead of the title.

function InitializeGame()
    GameStateManager.SetInitialState("RoomTourState")
    print("Tour: started.")
end
