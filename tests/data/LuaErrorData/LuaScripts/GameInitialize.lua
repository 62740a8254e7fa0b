-- Fails on purpose in every kind of entry point, and checks that the engine ran on
-- after each: an event handler, a coroutine, then InitializeGame itself.
function BrokenEvent(event)
    error("event handler failed on purpose")
end

function InitializeGame()
    GameStateManager.SetInitialState("Idle")
    local level = SpaceManager.Get():GetSpace(Space.Level)
    level:RegisterEvent("Broken")
    level:BroadcastEvent(ScriptEvent("Broken"))
    print("after the event handler: " .. tostring(level:IsPaused()))

    local steps = MakeCoroutine(function()
        coroutine.yield()
        error("coroutine failed on purpose")
    end)
    steps.loop = false
    print("coroutine statuses: " .. steps:resume() .. " " .. (steps:resume() > 1 and "error" or "none"))

    error("InitializeGame failed on purpose")
end
