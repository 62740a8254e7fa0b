-- The title screen: where a run starts. Behind it stands the first room with
-- the party and its foes. Until the menus and the join panel exist, the title
-- plays its attract loop and starts a run by itself after a few seconds;
-- anything may start one sooner by broadcasting "StartRun". The menu loop
-- plays while the title shows.

AttractSeconds = 3

-- The menu space's sound: the title's music and the menu's clicks.
local function MenuSound()
    return SpaceManager.Get():GetSpace(Space.Menu).Sound
end

function StartRunEvent(event)
    local sound = MenuSound()
    if sound ~= nil then
        sound:PlayEffect("Effects/MenuClick")
    end
    GameStateManager.SetNextState("GameplayState")
end

function Load()
    print("Emberfallow: title.")
end

function Initialize()
    shown = 0
    this:RegisterEvent("StartRun")
    CreateFirstRoom(SpaceManager.Get():GetSpace(Space.Level))
    local sound = MenuSound()
    if sound ~= nil then
        sound:PlayMusic("Music/Menu", false)
    end
end

function Update(dt)
    shown = shown + dt
    if shown >= AttractSeconds then
        shown = -math.huge
        Manager.Get():BroadcastEvent("StartRun", ScriptEvent("StartRun"))
    end
end

function Uninitialize()
    local sound = MenuSound()
    if sound ~= nil then
        sound:RemoveLoopingTrack("Music/Menu")
    end
    SpaceManager.Get():GetSpace(Space.Level):DestroyAllGameObjects()
end
