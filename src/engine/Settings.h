// Settings: the user's settings, kept in "Settings.txt" in the application data
// folder as one nameless block of the text format:
//
//   {
//     MusicVolume 0.4
//     MusicMute false
//   }
//
// Systems add their settings when they are made, each as a name with a get and
// a set function (class-wide values, not fields of an object); each becomes a
// property of the Settings type. The engine loads the file before the systems
// initialize and saves it right after, so a first run writes the defaults.
// Loading is tolerant: names the file has but no system added are skipped, and
// the next save leaves them out.
//
//   Settings::Add<float>("MusicVolume", &SoundSystem::GetMusicVolume, &SoundSystem::SetMusicVolume);
#pragma once

#include "utilities/Meta/Data.h"
#include "utilities/Meta/Property.h"

#include <string>

class Settings
{
public:
    // The one Settings object.
    static Settings& Get();

    // Adds a setting read and written through class-wide functions; a name given twice keeps the first.
    template <class T>
    static void Add(const std::string& name, T (*getter)(), void (*setter)(T))
    {
        auto* property = new Meta::Property_static_class<T, T>(name, Meta::Get<Settings>(), getter, setter);
        property->m_Serialize = property->m_Script = true;
        AddProperty(property);
    }

    // Reads "Settings.txt" if there is one; unknown names are skipped.
    void Load();
    // Writes every setting to "Settings.txt", in the order they were added.
    void Save();
    // Path of the settings file.
    static std::string GetPath();

private:
    Settings() = default;
    // Files a new setting and binds it in every open Lua state; a name already there keeps the first.
    static void AddProperty(Meta::Property* property);
};
