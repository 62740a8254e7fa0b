// SettingsHelper: one setting as scripts see it. A settings screen written in
// Lua lists every setting without knowing their names or types in advance:
//
//   for i = 0, Settings.Count() - 1 do
//       local entry = Settings.GetEntry(i)
//       print(entry.Name, entry:Get())      -- "MusicVolume  0.4"
//   end
//   Settings.Find("MusicMute"):Set(true)
//   SaveSettings()
//
// Each setting is also a class-wide property of Settings, so a script that knows
// the name writes `Settings.MusicVolume = 0.5`. A helper names its setting; it
// holds no value of its own, so it always reads the current one.
#pragma once

#include <string>

struct lua_State;

class SettingsHelper
{
public:
    SettingsHelper() = default;
    // The helper of the setting `name` (which may not exist: Get gives nil then).
    explicit SettingsHelper(std::string name) : Name(std::move(name)) {}

    // Script form entry:Get(): pushes the setting's value (nil for an unknown setting); 1 result.
    int Get(lua_State* L);
    // Script form entry:Set(value): sets the setting; returns true, or false when the setting is
    // unknown or the value is of the wrong type.
    int Set(lua_State* L);

    // The number of settings.
    static int Count();
    // The helper of setting `index` in the order they were added; an empty name when out of range.
    static SettingsHelper GetEntry(int index);
    // The helper of setting `name`; an empty name when there is none.
    static SettingsHelper Find(const std::string& name);

    // The setting's name.
    std::string Name;
};
