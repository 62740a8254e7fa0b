-- Events registered and broadcast from Lua: a script object's method, a
-- function of this script found by name, the event's own name, one object by id.
local heard = {}

local listener = {}
function listener:HitEvent(e) heard.objectDamage = e.Damage end
space:RegisterEvent(listener, "Hit")

function OnHit(e) heard.scriptDamage = e.Damage end
space:RegisterEvent("Hit", "OnHit")

function BlastEvent(e) heard.blastName = e.Name end
space:RegisterEvent("Blast")

local hit = ScriptEvent("Hit")
hit.Damage = 7
space:BroadcastEvent(hit)
space:BroadcastEvent(ScriptEvent("Blast"))
space:BroadcastEventToObject("Hit", ScriptEvent("Hit"), 424242)

heard.unknownIdIgnored = heard.objectDamage == 7
return heard
