-- Fails on purpose: DebugUpdate raises a Lua error every frame.
function DebugUpdate()
    error("DebugUpdate failed on purpose")
end
