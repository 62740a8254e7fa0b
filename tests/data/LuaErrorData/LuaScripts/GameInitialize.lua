-- Fails on purpose: InitializeGame raises a Lua error.
function InitializeGame()
    error("InitializeGame failed on purpose")
end
