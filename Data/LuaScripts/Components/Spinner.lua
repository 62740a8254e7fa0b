-- Turns its object around its own axes at a steady rate: pickups, the ember
-- shards, the boss room's rotating braziers.
--[[!
Dependency Transform
Vector3D DegreesPerSecond { 0 90 0 }
bool Spinning true
]]

function LogicUpdateEvent(update)
    if not this.Spinning then
        return
    end
    local rates = this.DegreesPerSecond
    local rotation = owner.Transform.Rotation
    rotation:RotateX(rates.x * update.Dt)
    rotation:RotateY(rates.y * update.Dt)
    rotation:RotateZ(rates.z * update.Dt)
end

function Initialize()
    owner.Space:RegisterEvent("LogicUpdate")
end
