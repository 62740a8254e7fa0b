-- Carries its object round a circle in the ground plane about where it stood at
-- its first update: the embers and wisps that light a room, patrolling hazards.
--[[!
Dependency Transform
float Radius 4
float DegreesPerSecond 45
float StartDegrees 0
]]

function LogicUpdateEvent(update)
    -- The centre is where the object stands at its first update, so that whoever creates it may
    -- still place it.
    if centreX == nil then
        local position = owner.Transform.Position
        centreX = position.x
        centreZ = position.z
    end
    angle = angle + math.rad(this.DegreesPerSecond) * update.Dt
    local position = owner.Transform.Position
    position.x = centreX + this.Radius * math.cos(angle)
    position.z = centreZ + this.Radius * math.sin(angle)
end

function Initialize()
    angle = math.rad(this.StartDegrees)
    centreX = nil
    centreZ = nil
    owner.Space:RegisterEvent("LogicUpdate")
end
