-- Walks its object over the floor by the named move bindings only: the move
-- keys (the keyboard's vectors come as player 4 and go to the first player) or
-- the left stick of the pad whose index is PlayerIndex. Up on the stick or the
-- up key walks away from the camera (towards -z), right walks towards +x;
-- keyboard and pad together add up, at most a full step of Speed per second.
-- While it walks, a footstep sounds every StepSeconds.
--[[!
Dependency Transform
float Speed 6
int PlayerIndex 0
float StepSeconds 0.35
]]

-- The last move vector of the keyboard and of this player's pad.
local keyboardMove = {x = 0, y = 0}
local padMove = {x = 0, y = 0}

function InputUpdatePlayerVectorsEvent(input)
    local index = input.PlayerIndex
    if index == 4 and this.PlayerIndex == 0 then
        keyboardMove = {x = input.Move.x, y = input.Move.y}
    elseif index == this.PlayerIndex then
        padMove = {x = input.Move.x, y = input.Move.y}
    end
end

-- Seconds walked since the last footstep.
local sinceStep = 0

-- Sounds a footstep every StepSeconds while the move vector is not still.
function Footsteps(length, dt)
    if length < 0.2 then
        sinceStep = this.StepSeconds
        return
    end
    sinceStep = sinceStep + dt
    local sound = owner.Space.Sound
    if sinceStep >= this.StepSeconds and sound ~= nil then
        sinceStep = 0
        sound:PlayEffect("Effects/Footstep", owner:GetId())
    end
end

function LogicUpdateEvent(update)
    local x = keyboardMove.x + padMove.x
    local y = keyboardMove.y + padMove.y
    local length = math.sqrt(x * x + y * y)
    if length > 1 then
        x, y = x / length, y / length
    end
    Footsteps(length, update.Dt)
    local step = this.Speed * update.Dt
    local position = owner.Transform.Position
    position.x = position.x + x * step
    position.z = position.z - y * step
end

function Initialize()
    owner.Space:RegisterEvent("LogicUpdate")
    Manager.Get():RegisterEvent("InputUpdatePlayerVectors")
end
