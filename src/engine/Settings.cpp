#include "engine/Settings.h"

#include "engine/Files.h"
#include "utilities/Meta/Registration.h"
#include "utilities/Serialization/Serializer.h"

META_REGISTER(Settings)
{
    DESCRIPTION("The user's settings, saved in Settings.txt in the application data folder.");
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
