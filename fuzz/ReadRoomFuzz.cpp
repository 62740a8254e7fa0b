// Fuzz target of the room reader: arbitrary bytes are read as a room file (the
// grid, the placed objects against an archetype "Crate", the room's values),
// written back and read again, and the grid is asked its questions. Dialogs are
// answered Ignore; the reader must neither crash nor hang, whatever the input.
//
// The first byte's low bit sets the tolerant-read flag. Build with ./setup.sh fuzz.

#include "engine/Log.h"
#include "platform/Dialog.h"
#include "rooms/RoomFuzzInput.h"

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
    ReadRoomAndWriteBack(std::string(reinterpret_cast<const char*>(data), size));
    return 0;
}
