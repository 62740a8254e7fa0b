// Fuzz target of the sound bank reader: arbitrary bytes are read as a bank
// file's text, and the events read are written back and read again. Dialogs are answered Ignore; the reader must
// neither crash nor hang, whatever the input.
//
// The first byte's low bit sets the tolerant-read flag. Build with ./setup.sh fuzz.

#include "engine/Log.h"
#include "platform/Dialog.h"
#include "sound/studio/BankData.h"
#include "utilities/Serialization/Serializer.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    Platform::SetDialogPolicy(Platform::DialogPolicy::Ignore);
    Engine::Log::Get().m_Echo = false;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    Util::SetTolerantRead((data[0] & 1) != 0);
    std::vector<Studio::EventData> events;
    {
        Util::Serializer reader;
        reader.OpenText(std::string(reinterpret_cast<const char*>(data) + 1, size - 1), "Fuzz.bank");
        Studio::ReadBankEvents(reader, events);
    }
    Util::Serializer writer;
    writer.OpenText("", "Written.bank");
    Studio::WriteBankEvents(writer, events);
    const std::string written = writer.GetText();
    Util::Serializer again;
    again.OpenText(written, "Written.bank");
    std::vector<Studio::EventData> reread;
    Studio::ReadBankEvents(again, reread);
    Util::SetTolerantRead(false);
    return 0;
}
