// Writes a block of sound as an Ogg Vorbis file through libsndfile, at the
// generator's rate and a Vorbis quality of about 0.35 (small files that still
// sound clean).
#pragma once

#include "sound_generator/Audio.h"

#include <string>

namespace SoundTools
{
// Writes `audio` to `path`; false with the reason in `error` when it cannot.
bool WriteOggVorbis(const Audio& audio, const std::string& path, std::string& error);
}
