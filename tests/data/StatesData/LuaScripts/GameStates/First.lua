-- Runs two frames, then switches to "Second".
local frames = 0
function Load() print("First Load") end
function Initialize() print("First Initialize") end
function Update(dt)
    frames = frames + 1
    print("First Update " .. frames)
    if frames == 2 then
        GameStateManager.SetNextState("Second")
    end
end
function Uninitialize() print("First Uninitialize") end
function Unload() print("First Unload") end
