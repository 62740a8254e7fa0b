-- The title screen: where a run starts. Behind it stands the first room with
-- the party and its foes. Until the menus and the join panel exist, the title
-- plays its attract loop and starts a run by itself after a few seconds;
-- anything may start one sooner by broadcasting "StartRun".

AttractSeconds = 3

function StartRunEvent(event)
    GameStateManager.SetNextState("GameplayState")
end

function Load()
    print("Emberfallow: title.")
end

function Initialize()
    shown = 0
    this:RegisterEvent("StartRun")
    CreateFirstRoom(SpaceManager.Get():GetSpace(Space.Level))
end

function Update(dt)
    shown = shown + dt
    if shown >= AttractSeconds then
        shown = -math.huge
        Manager.Get():BroadcastEvent("StartRun", ScriptEvent("StartRun"))
    end
end

function Uninitialize()
    SpaceManager.Get():GetSpace(Space.Level):DestroyAllGameObjects()
end
