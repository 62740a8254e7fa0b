-- A run through the rooms. Until rooms and players exist, the run places what
-- the archetypes offer in the level space and ends when its time is up;
-- "RunOver" (broadcast by anything: the last player down, the boss dead) ends
-- it sooner. Either way the game goes back to the title.

RunSeconds = 60

-- Places one object of the archetype `name` when the archetype exists.
local function Place(level, name)
    local id = Archetype.Find(name)
    if id ~= 0 then
        return level:CreateObject(id)
    end
end

function RunOverEvent(event)
    GameStateManager.SetNextState("TitleState")
end

function Load()
    print("Emberfallow: run started.")
end

function Initialize()
    elapsed = 0
    this:RegisterEvent("RunOver")
    local level = SpaceManager.Get():GetSpace(Space.Level)
    Place(level, "Player")
    Place(level, "EmberCrawler")
    Place(level, "HealthOrb")
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
