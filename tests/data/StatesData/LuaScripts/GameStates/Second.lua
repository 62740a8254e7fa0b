-- Runs two frames, restarts itself, runs one more frame, then quits the game.
local starts = 0
local frames = 0
function Load() print("Second Load") end
function Initialize()
    starts = starts + 1
    frames = 0
    print("Second Initialize " .. starts)
end
function Update(dt)
    frames = frames + 1
    print("Second Update " .. frames)
    if starts == 1 and frames == 2 then
        GameStateManager.Next = GameStateManager.Restart
    elseif starts == 2 then
        GameStateManager.Next = GameStateManager.Quit
    end
end
function Uninitialize() print("Second Uninitialize") end
function Unload() print("Second Unload") end
