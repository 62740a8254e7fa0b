-- Animations: numbers eased from one value to another over time, run by the
-- level space each frame.
--
--   Animations.To(light, "Intensity", 0, 0.25)   -- fade to 0 in a quarter second
--
-- `target[field]` is written every frame until the time is up; a newer
-- animation of the same field replaces the older one.

local running = {}

-- Smooth start and stop.
local function Ease(t)
    return t * t * (3 - 2 * t)
end

_G.Animations = {
    -- Eases target[field] to `value` over `seconds`; calls `done` (if given) at the end.
    To = function(target, field, value, seconds, done)
        for i = #running, 1, -1 do
            if running[i].target == target and running[i].field == field then
                table.remove(running, i)
            end
        end
        running[#running + 1] = {target = target, field = field, from = target[field], to = value,
                                 duration = math.max(seconds, 0.0001), time = 0, done = done}
    end,
    -- The number of animations running.
    Count = function()
        return #running
    end,
}

function Update(dt)
    local still = {}
    for _, animation in ipairs(running) do
        animation.time = math.min(animation.time + dt, animation.duration)
        local t = Ease(animation.time / animation.duration)
        local ok, message = pcall(function()
            animation.target[animation.field] = animation.from + (animation.to - animation.from) * t
        end)
        if not ok then
            print("Lua Error: " .. tostring(message))
        elseif animation.time < animation.duration then
            still[#still + 1] = animation
        elseif animation.done then
            pcall(animation.done)
        end
    end
    running = still
end
