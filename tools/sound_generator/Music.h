// The game's music: three stereo loops, each a whole number of bars long and
// rendered around a circle, so that a note ringing past the end sounds again at
// the start and the last sample runs straight into the first.
//
//   MenuLoop          80 beats a minute, D major, 8 bars (24 s): pads, a soft
//                     bass, a sparse sine melody, a soft kick and shaker
//   PlayLoop          128 beats a minute, A minor, 16 bars (30 s): bass in
//                     eighths, pads, a square lead, kick, snare and hats
//   PlayLoopIntense   the same tempo, key and chords as PlayLoop, busier and
//                     louder: sixteenth bass, an arpeggio, doubled lead, crashes
#pragma once

#include "sound_generator/Audio.h"

namespace SoundTools
{
Audio MakeMenuLoop();
Audio MakePlayLoop();
Audio MakePlayLoopIntense();

// Frames in one bar of four beats at `beatsPerMinute`.
std::size_t FramesPerBar(double beatsPerMinute);
}
