-- Fails on purpose every frame; on the fifth frame it ends the run itself first.
local frames = 0

function DebugUpdate()
    frames = frames + 1
    if frames == 5 then
        Manager.Get():EndGame()
    end
    error("DebugUpdate failed on purpose")
end
