-- The debug script: the engine calls DebugUpdate at the start of every frame.
-- Edit it while the game runs to try things out; a change takes effect at once.

function DebugUpdate()
end
