// vorn_make_sounds: synthesises the game's sound effects and music loops (see
// SoundTable.h) and writes them as Ogg Vorbis files into a data folder.
//
//   vorn_make_sounds DATA_FOLDER [SOUND...]   all sounds, or the ones named, as
//                                             DATA_FOLDER/Sounds/Effects/<name>.ogg
//                                             and DATA_FOLDER/Sounds/Music/<name>.ogg
//   vorn_make_sounds --list                   the sounds, one a line
//
// Every sound comes from fixed seeds, so a run gives the same samples each time.
// An unknown sound or option prints the usage and exits with 2 before anything
// is written; a file that cannot be written is named on standard error and the
// exit code is 1.
#include "sound_generator/OggWriter.h"
#include "sound_generator/SoundTable.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <string>
#include <vector>

namespace
{
void PrintUsage(std::ostream& out)
{
    out << "usage: vorn_make_sounds DATA_FOLDER [SOUND...]\n"
           "       vorn_make_sounds --list\n"
           "Writes each sound (all when none is named) as DATA_FOLDER/Sounds/<Effects or Music>/<sound>.ogg. Sounds:\n";
    for (const SoundTools::NamedSound& sound : SoundTools::SoundTable())
        out << "  " << sound.Name << std::string(17 - std::min<std::size_t>(sound.Name.size(), 16), ' ')
            << sound.Description << "\n";
}

double Rms(const SoundTools::Audio& audio)
{
    double sum = 0.0;
    for (float s : audio.Samples)
        sum += static_cast<double>(s) * s;
    return audio.Samples.empty() ? 0.0 : std::sqrt(sum / static_cast<double>(audio.Samples.size()));
}
}

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() == 1 && (arguments[0] == "--list" || arguments[0] == "--help" || arguments[0] == "-h"))
    {
        if (arguments[0] == "--list")
            for (const SoundTools::NamedSound& sound : SoundTools::SoundTable())
                std::cout << sound.Name << "\n";
        else
            PrintUsage(std::cout);
        return 0;
    }
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (arguments[i].starts_with("-"))
        {
            std::cerr << "vorn_make_sounds: unknown option \"" << arguments[i] << "\"\n";
            PrintUsage(std::cerr);
            return 2;
        }
    if (arguments.empty())
    {
        std::cerr << "vorn_make_sounds: no data folder given\n";
        PrintUsage(std::cerr);
        return 2;
    }
    std::vector<const SoundTools::NamedSound*> chosen;
    for (std::size_t i = 1; i < arguments.size(); ++i)
    {
        const SoundTools::NamedSound* sound = SoundTools::FindSound(arguments[i]);
        if (!sound)
        {
            std::cerr << "vorn_make_sounds: unknown sound \"" << arguments[i] << "\"\n";
            PrintUsage(std::cerr);
            return 2;
        }
        chosen.push_back(sound);
    }
    if (chosen.empty())
        for (const SoundTools::NamedSound& sound : SoundTools::SoundTable())
            chosen.push_back(&sound);

    const std::filesystem::path sounds = std::filesystem::path(arguments[0]) / "Sounds";
    int failures = 0;
    for (const SoundTools::NamedSound* sound : chosen)
    {
        const std::filesystem::path folder = sounds / sound->Folder;
        std::error_code ignored;
        std::filesystem::create_directories(folder, ignored);
        const std::filesystem::path path = folder / (sound->Name + ".ogg");
        const SoundTools::Audio audio = sound->Make();
        std::string error;
        if (!SoundTools::WriteOggVorbis(audio, path.string(), error))
        {
            std::cerr << "vorn_make_sounds: \"" << path.string() << "\" could not be written: " << error << "\n";
            ++failures;
            continue;
        }
        std::cout << path.string() << ": " << audio.Channels << " channel(s), " << std::fixed << std::setprecision(3)
                  << static_cast<double>(audio.Frames()) / SoundTools::kSampleRate << " s, peak "
                  << SoundTools::Peak(audio) << ", RMS " << Rms(audio) << "\n";
    }
    return failures == 0 ? 0 : 1;
}
