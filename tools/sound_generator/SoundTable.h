// The sounds vorn_make_sounds can write, by name: each name is also the stem
// of its file, written under Sounds/Effects/ or Sounds/Music/ of the output
// data folder ("Hit1" is written as Sounds/Effects/Hit1.ogg).
#pragma once

#include "sound_generator/Audio.h"

#include <functional>
#include <string>
#include <vector>

namespace SoundTools
{
struct NamedSound
{
    std::string Name;
    // "Effects" or "Music": the folder under Sounds/.
    std::string Folder;
    // One line on what it is.
    std::string Description;
    std::function<Audio()> Make;
};

// Every sound, in the order they are written when none is named.
const std::vector<NamedSound>& SoundTable();
// The sound of that name, or null.
const NamedSound* FindSound(const std::string& name);
}
