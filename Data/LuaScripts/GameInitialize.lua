-- The game's start script: runs once after every engine system is up, then the
-- engine calls InitializeGame, which picks the state the game starts in.

function InitializeGame()
    GameStateManager.SetInitialState("TitleState")
    print("Emberfallow: game initialized.")
end
