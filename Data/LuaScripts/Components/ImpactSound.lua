-- Plays an effect when its object starts touching something: a crate landing,
-- a ball knocking into a rock. A contact that goes on from one frame to the
-- next sounds once, when it begins, and a hit needs at least MinimumSpeed
-- (units a second) of the object's own speed, so that what rests stays quiet.
-- The effect follows the object: it is cut when the object is destroyed.
--[[!
Dependency PhysicsBody
string Effect "Effects/Land"
float MinimumSpeed 4
]]

-- The speed the object had before this frame's physics: what it hits with.
local function Speed()
    local velocity = owner.PhysicsBody.Velocity
    return math.sqrt(velocity.x * velocity.x + velocity.y * velocity.y + velocity.z * velocity.z)
end

function LogicUpdateEvent(update)
    frame = frame + 1
    speed = Speed()
end

function CollisionEvent(collision)
    local last = touching[collision.Id]
    touching[collision.Id] = frame
    if last ~= nil and last >= frame - 1 then
        return
    end
    local sound = owner.Space.Sound
    if speed >= this.MinimumSpeed and sound ~= nil then
        sound:PlayEffect(this.Effect, owner:GetId())
    end
end

function Initialize()
    frame = 0
    speed = 0
    touching = {}
    owner.Space:RegisterEvent("LogicUpdate")
    owner.Space:RegisterEvent("Collision")
end
