-- One name, several forms: the first form that fits the arguments is called.
local o = BindingOverloads()
local results = {
    number = o:Pick(1),
    text = o:Pick("a"),
    twoNumbers = o:Pick(1, 2),
    vector = o:Pick(Vector3D(1, 2, 3)),
    nothingFits = o:Pick(true) == nil,
    constructedFromNumber = BindingOverloads(5).Value,
    constructedFromText = BindingOverloads("named").Name,
}
local ok, made = pcall(function() return BindingOverloads(true, 1, 2) end)
results.constructorRaised = not ok
results.constructorMadeNothing = made == nil
return results
