-- Actions: things to do later, run by the level space each frame.
--
--   Actions.After(0.5, function() print("half a second later") end)
--
-- An action that raises an error is reported and dropped; the others run on.

local pending = {}
local now = 0

_G.Actions = {
    -- Runs `action` once, `seconds` from now.
    After = function(seconds, action)
        pending[#pending + 1] = {at = now + seconds, action = action}
    end,
    -- The number of actions still waiting.
    Count = function()
        return #pending
    end,
}

function Update(dt)
    now = now + dt
    local due = {}
    local waiting = {}
    for _, entry in ipairs(pending) do
        if entry.at <= now then
            due[#due + 1] = entry
        else
            waiting[#waiting + 1] = entry
        end
    end
    pending = waiting
    for _, entry in ipairs(due) do
        local ok, message = pcall(entry.action)
        if not ok then
            print("Lua Error: " .. tostring(message))
        end
    end
end
