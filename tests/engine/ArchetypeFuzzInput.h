// What the archetype reader's fuzz target does with one input, shared with the
// test that reads the kept inputs and the seeds again.
#pragma once

#include <string>

// Reads `input` as a component list and writes the result back. The first byte is
// a switch: its low bit sets the tolerant-read flag; the next bit reads into a clone
// of an archetype with a Transform, a Hierarchy and a component with a member of
// every value form (and writes against it, with removals), instead of into an empty
// object (written against nothing). The rest is the text.
void ReadComponentListAndWriteBack(const std::string& input);
