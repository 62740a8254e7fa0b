// Fuzz target of the text reader: arbitrary bytes go to ReadObject on a
// component with a member of every value form, and what was read is written
// back. Dialogs are answered Ignore, as a developer who clicks through them
// would; the reader must neither crash nor hang, whatever the input.
//
// The first byte picks the tolerant-read flag, so both ways of meeting an
// unknown name are covered. Build with ./setup.sh fuzz.

#include "engine/Log.h"
#include "platform/Dialog.h"
#include "utilities/Serialization/TextSamples.h"

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    Platform::SetDialogPolicy(Platform::DialogPolicy::Ignore);
    Engine::Log::Get().m_Echo = false;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ReadAndWriteBack(std::string(reinterpret_cast<const char*>(data), size));
    return 0;
}
