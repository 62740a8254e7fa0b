-- The game's start script: runs once after every engine system is up, then the
-- engine calls InitializeGame.

function InitializeGame()
    print("Emberfallow: game initialized.")
end
