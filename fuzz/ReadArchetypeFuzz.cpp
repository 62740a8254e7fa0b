// Fuzz target of the archetype reader: arbitrary bytes go to the reader of
// component lists (archetype files and room objects, "~" removals included),
// into an empty object or into a clone of an archetype, and what was read is
// written back. Dialogs are answered Ignore, as a developer who clicks through
// them would; the reader must neither crash nor hang, whatever the input.
//
// The first byte picks the tolerant-read flag and the object read into. Build
// with ./setup.sh fuzz.

#include "engine/ArchetypeFuzzInput.h"
#include "engine/Log.h"
#include "platform/Dialog.h"

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
    ReadComponentListAndWriteBack(std::string(reinterpret_cast<const char*>(data), size));
    return 0;
}
