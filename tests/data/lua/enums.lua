-- Enumerations by their qualified names, as read-only integers.
local ok, err = pcall(function() BindingColour.Red = 3 end)
return {
    red = BindingColour.Red,
    blue = BindingColour.Blue,
    toggle = ScreenMode.Toggle,
    keep = ScreenMode.Keep,
    unknown = BindingColour.Purple == nil,
    writeError = tostring(err),
    type = getmetatable(BindingColour).__type,
}
