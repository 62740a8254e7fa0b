-- Prints a line for each collision its object takes part in: the kind, the
-- other object's name and id, and the normal pointing from this object
-- towards it. Put it on any object with a PhysicsBody to watch the physics
-- at work; Ghosts and OtherGroups choose whether overlaps that were not
-- resolved are printed too.
--[[!
bool Ghosts true
bool OtherGroups false
]]

local function Describe(kind, collision)
    local other = owner.Space:GetGameObject(collision.Id)
    local name = other and other:GetName() or "a destroyed object"
    local normal = collision.Normal
    print(string.format("%s: %s (%d) met %s (%d), normal (%.2f, %.2f, %.2f)", kind, owner:GetName(),
        owner:GetId(), name, collision.Id, normal.x, normal.y, normal.z))
end

function CollisionEvent(collision)
    Describe("Collision", collision)
end

function GhostCollisionEvent(collision)
    if this.Ghosts then
        Describe("Ghost collision", collision)
    end
end

function DiffGroupCollisionEvent(collision)
    if this.OtherGroups then
        Describe("Overlap of other groups", collision)
    end
end

function Initialize()
    owner.Space:RegisterEvent("Collision")
    owner.Space:RegisterEvent("GhostCollision")
    owner.Space:RegisterEvent("DiffGroupCollision")
end
