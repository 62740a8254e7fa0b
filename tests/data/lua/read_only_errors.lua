-- Writes that are refused, and the texts of their errors.
local function message(f)
    local ok, err = pcall(f)
    if ok then return "no error" end
    return tostring(err)
end
local r = BindingReadOnly()
r.Health = 3
BindingReadOnly.Counter = 12
return {
    readOnlyProperty = message(function() r.Answer = 1 end),
    unknownMember = message(function() r.Nope = 1 end),
    unknownStatic = message(function() BindingReadOnly.Nope = 1 end),
    readOnlyStatic = message(function() BindingReadOnly.Limit = 1 end),
    nilReference = message(function() BindingLeaf():LengthOf(nil) end),
    wrongType = message(function() r.Health = "high" end),
    answer = r.Answer,
    health = r.Health,
    counter = BindingReadOnly.Counter,
    limit = BindingReadOnly.Limit,
    unknownRead = r.Nope == nil,
    lengthOfValue = BindingLeaf():LengthOf(Vector3D(0, 3, 4)),
}
