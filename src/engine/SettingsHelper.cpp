#include "engine/SettingsHelper.h"

#include "engine/Settings.h"
#include "utilities/Meta/Registration.h"

#include <lua.hpp>

META_REGISTER(SettingsHelper)
{
    DESCRIPTION("One setting as scripts see it: its name, and Get and Set of its value.");
    MEMBER_FLAGS(Name, false, true, "The setting's name.");
    HELP("Pushes the setting's value; nil for an unknown setting.");
    type.AddMethod(Meta::ScriptVisible(new Meta::MethodD_crosscall<int, Self>("Get", &Self::Get)));
    HELP("Sets the setting's value; false when the setting is unknown or the value of the wrong type.");
    type.AddMethod(Meta::ScriptVisible(new Meta::MethodD_crosscall<int, Self>("Set", &Self::Set)));
}

namespace
{
const Meta::Property* FindSetting(const std::string& name)
{
    return Meta::Get<Settings>()->m_Properties.Find(name);
}
}

int SettingsHelper::Get(lua_State* L)
{
    if (const Meta::Property* setting = FindSetting(Name))
        setting->PushToLua(L, &Settings::Get());
    else
        lua_pushnil(L);
    return 1;
}

int SettingsHelper::Set(lua_State* L)
{
    const Meta::Property* setting = FindSetting(Name);
    lua_pushboolean(L, setting && lua_gettop(L) >= 2 && setting->SetFromLua(L, &Settings::Get(), 2));
    return 1;
}

int SettingsHelper::Count()
{
    return static_cast<int>(Meta::Get<Settings>()->m_Properties.Items().size());
}

SettingsHelper SettingsHelper::GetEntry(int index)
{
    const auto& settings = Meta::Get<Settings>()->m_Properties.Items();
    if (index < 0 || index >= static_cast<int>(settings.size()))
        return SettingsHelper();
    return SettingsHelper(settings[static_cast<std::size_t>(index)].first);
}

SettingsHelper SettingsHelper::Find(const std::string& name)
{
    return FindSetting(name) ? SettingsHelper(name) : SettingsHelper();
}
