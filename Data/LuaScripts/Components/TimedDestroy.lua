-- Destroys its object once its time is up: sparks, hit markers, spent
-- projectiles. The clock starts when the component initializes.
--[[!
float Lifetime 2
]]

function LogicUpdateEvent(update)
    remaining = remaining - update.Dt
    if remaining <= 0 and not destroyed then
        destroyed = true
        owner:Destroy()
    end
end

function Initialize()
    remaining = this.Lifetime
    destroyed = false
    owner.Space:RegisterEvent("LogicUpdate")
end
