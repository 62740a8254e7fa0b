-- Properties a class makes up at run time, through its dynamic-property hook.
-- `dynamic` is a BindingDynamic whose native side already holds "Hidden" = 50;
-- `child` is a BindingDynamicChild holding "Inherited" = 70.
dynamic.Extra = 3
dynamic.Plain = 16
local ok = pcall(function() child.Unknown = 1 end)
return {
    extra = dynamic.Extra,
    hidden = dynamic.Hidden,
    plain = dynamic.Plain,
    missing = dynamic.Missing == nil,
    inherited = child.Inherited,
    childOwn = child.Own,
    childWriteRaised = not ok,
}
