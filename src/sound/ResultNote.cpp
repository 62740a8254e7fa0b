#include "sound/ResultNote.h"

namespace Sound
{
Studio::Result Note(Studio::Result result)
{
    // Kept for inspection under a debugger; nothing acts on it.
    [[maybe_unused]] const char* volatile message = Studio::ResultString(result);
    return result;
}
}
