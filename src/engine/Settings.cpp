#include "engine/Settings.h"

#include "engine/Files.h"
#include "engine/SettingsHelper.h"
#include "utilities/lua/LuaSystem.h"
#include "utilities/lua/luabridge/Binders.h"
#include "utilities/Meta/Registration.h"
#include "utilities/Serialization/Serializer.h"

META_REGISTER(Settings)
{
    DESCRIPTION("The user's settings, saved in Settings.txt in the application data folder.");
    HELP("The number of settings.");
    METHOD_AS("Count", &SettingsHelper::Count);
    HELP("The setting of an index, from 0 in the order they were added.");
    METHOD_AS("GetEntry", &SettingsHelper::GetEntry);
    HELP("The setting of a name.");
    METHOD_AS("Find", &SettingsHelper::Find);
}

void Settings::AddProperty(Meta::Property* property)
{
    Meta::Data* type = Meta::Get<Settings>();
    if (type->m_Properties.Find(property->m_Name))
    {
        delete property;
        return;
    }
    type->AddProperty(property);
    for (LuaSystem* system : LuaSystem::OpenSystems())
        luabridge::BindLateProperty(system->m_State, *type, *property);
}

Settings& Settings::Get()
{
    static Settings* settings = new Settings();
    return *settings;
}

std::string Settings::GetPath()
{
    return Util::GetAppDataDirectory() + "Settings.txt";
}

void Settings::Load()
{
    Util::Serializer file;
    if (!file.OpenRead(GetPath()))
        return;
    Util::SetTolerantRead(true);
    file.ReadObject(Meta::Get<Settings>(), this);
    Util::SetTolerantRead(false);
}

void Settings::Save()
{
    Util::Serializer file;
    if (!file.OpenWrite(GetPath()))
        return;
    file.m_Stream << "{\n";
    ++file.m_Depth;
    for (const auto& [name, property] : Meta::Get<Settings>()->m_Properties.Items())
        property->Serialize(this, file);
    --file.m_Depth;
    file.m_Stream << "}\n";
}
