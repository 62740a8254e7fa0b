-- Floats its object up and down around where it started: loot on the floor of a
-- cleared room, the exit portal's ember.
--[[!
Dependency Transform
float Height 0.25
float CyclesPerSecond 0.5
]]

function LogicUpdateEvent(update)
    elapsed = elapsed + update.Dt
    local position = owner.Transform.Position
    position.y = baseHeight + this.Height * math.sin(elapsed * this.CyclesPerSecond * 2 * math.pi)
end

function Initialize()
    elapsed = 0
    baseHeight = owner.Transform.Position.y
    owner.Space:RegisterEvent("LogicUpdate")
end
