// Sound::Note: the one place where the sound systems look at a result of the
// sound event layer. The result's message is kept in a local for a debugger's
// eye and the result is handed back; no failure of the layer stops the game.
//
//   if (Sound::Note(instance->getParameter("Intensity", &parameter)) == Studio::OK) ...
#pragma once

#include "sound/studio/Studio.h"

namespace Sound
{
// Looks up the result's message (for a breakpoint) and gives the result back.
Studio::Result Note(Studio::Result result);
}
