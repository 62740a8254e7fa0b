// The layer's result-to-message table.
#include "sound/studio/Studio.h"

namespace Studio
{
namespace
{
constexpr const char* kMessages[RESULT_COUNT] = {
    "No errors.",
    "The sound layer's header version does not match the library it was built against.",
    "An invalid parameter was passed to this function.",
    "An invalid object handle was used.",
    "The sound system has not been initialized yet.",
    "The sound system has already been initialized.",
    "File not found.",
    "Error loading file.",
    "Unsupported file or audio format.",
    "The requested event, parameter or bus could not be found.",
    "Error initializing output device.",
    "The sound is not ready for this call.",
    "The retrieved string is too long to fit in the supplied buffer and has been truncated.",
    "Not enough memory or resources.",
};
}

const char* ResultString(Result result)
{
    if (result < OK || result >= RESULT_COUNT)
        return "Unknown error.";
    return kMessages[result];
}
}
