-- lanes.lua: the Lua half of the engine's lanes module (script threads). The native half,
-- "lanes.core", starts lanes and makes lindas; this file checks what scripts pass and builds the
-- public table. Used as in Lua Lanes:
--
--   local lanes = require("lanes").configure()
--   local gen = lanes.gen("base,math", function(a, b) return a + b end)
--   local h = gen(1, 2)
--   print(h:join())   --> 3
--
-- See docs/Lanes.md for what the module offers and what it does not.

local core = require("lanes.core")

local lanes = {}

-- The options lanes.gen accepts in its options table, with a check for each.
local options = {
	-- A table whose fields become globals of the lane (copied like arguments).
	globals = function(value)
		return type(value) == "table", "a table"
	end,
	-- Look for a cancel request every that many instructions (with the JIT compiler off in the lane).
	cancelstep = function(value)
		return value == false or value == true or (type(value) == "number" and value >= 1),
			"a number of instructions, at least 1 (or true for 100)"
	end,
}

-- lanes.gen([libs], [options], f): a function that starts f(...) in a new lane each time it is
-- called and gives the lane's handle. libs is "*" or a comma-separated list of libraries ("base"
-- when left out).
local function gen(...)
	local count = select("#", ...)
	local f = select(count, ...)
	if type(f) ~= "function" then
		error("lanes.gen: the last argument must be the lane's function, not a " .. type(f), 2)
	end
	local libs, opts
	for i = 1, count - 1 do
		local argument = select(i, ...)
		if type(argument) == "string" and libs == nil then
			libs = argument
		elseif type(argument) == "table" and opts == nil then
			opts = argument
		else
			error("lanes.gen: argument " .. i .. " must be a library list (a string) or an options table, "
				.. "once each, not a " .. type(argument), 2)
		end
	end
	libs = libs or "base"
	local valid, reason = core.check_libs(libs)
	if not valid then
		error("lanes.gen: " .. reason, 2)
	end
	local globals, cancelstep
	for key, value in pairs(opts or {}) do
		local check = options[key]
		if not check then
			error("lanes.gen: unknown option '" .. tostring(key) .. "'", 2)
		end
		local ok, expected = check(value)
		if not ok then
			error("lanes.gen: the option " .. key .. " must be " .. expected, 2)
		end
		if key == "globals" then
			globals = value
		elseif value == true then
			cancelstep = 100
		elseif value then
			cancelstep = value
		end
	end
	local lane_new = core.lane_new
	return function(...)
		return lane_new(f, libs, globals, cancelstep, ...)
	end
end

-- lanes.sleep(seconds): waits that long (cancellable in a lane, like any linda wait).
local function sleep(seconds)
	if type(seconds) ~= "number" or seconds < 0 then
		error("lanes.sleep: expected a number of seconds, at least 0", 2)
	end
	core.linda():receive(seconds, "lanes.sleep")
	return true
end

-- lanes.configure([settings]): makes the module ready and gives it. No setting is needed; an
-- unknown one is an error, so a misspelt name is not ignored.
function lanes.configure(settings)
	if settings ~= nil and type(settings) ~= "table" then
		error("lanes.configure: the settings must be a table, not a " .. type(settings), 2)
	end
	for key in pairs(settings or {}) do
		error("lanes.configure: unknown setting '" .. tostring(key) .. "'", 2)
	end
	lanes.gen = gen
	lanes.linda = core.linda
	lanes.sleep = sleep
	lanes.cancel_test = core.cancel_test
	lanes.cancel_error = core.cancel_error
	lanes.configured = true
	return lanes
end

return lanes
