-- A run through the rooms. Until the room generator and players exist, the run
-- plays in the first room and ends when its time is up;
-- "RunOver" (broadcast by anything: the last player down, the boss dead) ends
-- it sooner. Either way the game goes back to the title.

RunSeconds = 60

function RunOverEvent(event)
    GameStateManager.SetNextState("TitleState")
end

function Load()
    print("Emberfallow: run started.")
end

function Initialize()
    elapsed = 0
    this:RegisterEvent("RunOver")
    CreateFirstRoom(SpaceManager.Get():GetSpace(Space.Level))
end

function Update(dt)
    elapsed = elapsed + dt
    if elapsed >= RunSeconds then
        elapsed = -math.huge
        Manager.Get():BroadcastEvent("RunOver", ScriptEvent("RunOver"))
    end
end

function Uninitialize()
    SpaceManager.Get():GetSpace(Space.Level):DestroyAllGameObjects()
end
