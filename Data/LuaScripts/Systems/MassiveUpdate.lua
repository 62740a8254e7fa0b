-- MassiveUpdate: one call a frame into many small update functions, for the
-- crowds that don't need a component each (embers, debris, swarm members).
--
--   local handle = MassiveUpdate.Add(function(dt) ... end)
--   MassiveUpdate.Remove(handle)
--
-- A function that raises an error is reported and removed.

local updates = {}
local nextHandle = 1

_G.MassiveUpdate = {
    -- Calls `update(dt)` every frame from now on; gives a handle for Remove.
    Add = function(update)
        local handle = nextHandle
        nextHandle = nextHandle + 1
        updates[handle] = update
        return handle
    end,
    -- Stops the function of `handle`.
    Remove = function(handle)
        updates[handle] = nil
    end,
    -- The number of functions called each frame.
    Count = function()
        local count = 0
        for _ in pairs(updates) do
            count = count + 1
        end
        return count
    end,
}

function Update(dt)
    for handle, update in pairs(updates) do
        local ok, message = pcall(update, dt)
        if not ok then
            print("Lua Error: " .. tostring(message))
            updates[handle] = nil
        end
    end
end
