-- Fails on purpose: a Lua error while the script system initializes.
error("Global.lua failed on purpose")
