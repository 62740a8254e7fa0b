-- Fails on purpose: a syntax error, reported when the state's script is loaded.
function Initialize(
