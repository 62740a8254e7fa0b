-- Global helpers, run once when the script system starts (and again when a file
-- loaded with loadfile changes). The engine calls CompareProperties and
-- SetProperty by name when it compares and writes the variables of script
-- components.

-- A value a script can compare: a property reference (a table standing for a
-- member of an object) becomes a detached copy of the value it refers to, once
-- the binding's Value() exists; anything else is itself.
local function Plain(value)
    if Value ~= nil then
        return Value(value)
    end
    return value
end

-- True when two property values are equal: numbers, strings and booleans by
-- value, values of registered classes through their own equality.
function CompareProperties(a, b)
    return Plain(a) == Plain(b)
end

-- Sets the property `name` of `object` to `value`.
function SetProperty(object, name, value)
    object[name] = value
end

-- The most copies of one effect heard at once: a crowd of footsteps or a pile of
-- landing crates stays a few voices.
SoundInstance.AddMaxSoundLimit("Effects/Footstep", 4)
SoundInstance.AddMaxSoundLimit("Effects/Land", 6)
SoundInstance.AddMaxSoundLimit("Effects/Hit", 8)

-- The first room, which the title shows behind its menus.
local firstRoom = loadfile(DataDirectory() .. "LuaScripts/Rooms/FirstRoom.lua")
if firstRoom then
    firstRoom()
end

-- The helpers of a run through the rooms of Data/Rooms.
local roomRun = loadfile(DataDirectory() .. "LuaScripts/Rooms/RoomRun.lua")
if roomRun then
    roomRun()
end
