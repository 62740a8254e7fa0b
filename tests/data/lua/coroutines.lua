-- Coroutines stepped with resume: with loop on (the default) the body starts
-- over once it returns; with loop off a resume after the end is an error that
-- leaves the coroutine dead.
local looping = 0
local once = 0

local function Count(counter)
    return function()
        if counter == "looping" then looping = looping + 1 else once = once + 1 end
        coroutine.yield()
        if counter == "looping" then looping = looping + 10 else once = once + 10 end
    end
end

local loopOn = MakeCoroutine(Count("looping"))
local loopOff = MakeCoroutine(Count("once"))
loopOff.loop = false

local statuses = {}
for step = 1, 4 do
    statuses[#statuses + 1] = loopOn:resume()
    statuses[#statuses + 1] = loopOff:resume()
end
return {
    looping = looping,
    once = once,
    statuses = table.concat(statuses, " "),
    defaultLoop = tostring(MakeCoroutine(function() end).loop),
}
