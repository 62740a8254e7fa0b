// What the room reader's fuzz target does with one input, shared with the test
// that reads the kept inputs and the seeds again.
#pragma once

#include <string>

// Reads `input` as a room file and writes the room back, then asks its grid questions. The first
// byte is a switch: its low bit sets the tolerant-read flag. While it runs, the archetype manager
// holds one archetype, "Crate" (a Transform), that the room's objects may name. The rest is the text.
void ReadRoomAndWriteBack(const std::string& input);
