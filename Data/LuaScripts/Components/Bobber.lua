-- Floats its object up and down around where it started: loot on the floor of a
-- cleared room, the exit portal's ember.
--[[!
Dependency Transform
float Height 0.25
float CyclesPerSecond 0.5
]]

function LogicUpdateEvent(update)
    -- Where the object stands at its first update is the middle of the motion, so that whoever
    -- creates it may still place it.
    if baseHeight == nil then
        baseHeight = owner.Transform.Position.y
    end
    elapsed = elapsed + update.Dt
    local position = owner.Transform.Position
    position.y = baseHeight + this.Height * math.sin(elapsed * this.CyclesPerSecond * 2 * math.pi)
end

function Initialize()
    elapsed = 0
    baseHeight = nil
    owner.Space:RegisterEvent("LogicUpdate")
end
