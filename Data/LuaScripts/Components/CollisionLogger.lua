-- Prints a line when its object starts touching another: the kind of
-- collision, the other object's name and id, and the normal pointing from
-- this object towards it. A contact that goes on from one frame to the next
-- is printed once, when it begins. Put it on any object with a PhysicsBody to
-- watch the physics at work; Ghosts and OtherGroups choose whether overlaps
-- that were not resolved are printed too.
--[[!
bool Ghosts true
bool OtherGroups false
]]

-- Starts a new frame: contacts not renewed in it have ended.
function LogicUpdateEvent(update)
    frame = frame + 1
end

local function Describe(kind, collision)
    local last = touching[collision.Id]
    touching[collision.Id] = frame
    if last ~= nil and last >= frame - 1 then
        return
    end
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
    frame = 0
    touching = {}
    owner.Space:RegisterEvent("LogicUpdate")
    owner.Space:RegisterEvent("Collision")
    owner.Space:RegisterEvent("GhostCollision")
    owner.Space:RegisterEvent("DiffGroupCollision")
end
