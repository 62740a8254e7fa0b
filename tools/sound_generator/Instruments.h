// The voices the music is played on: each call renders one note or one drum
// hit as a mono block that starts at the note's start and includes its release
// tail. Every noisy voice takes a seed, so a song renders the same each time.
#pragma once

#include <cstdint>
#include <vector>

namespace SoundTools
{
// A sine kick: a fast pitch drop from about 150 Hz to `low` Hz.
std::vector<float> Kick(double low, double decay);
// A snare: a short tone under a burst of bright noise.
std::vector<float> Snare(std::uint32_t seed, double decay);
// A hi-hat: high-passed noise; `decay` around 0.03 s is closed, 0.3 s open.
std::vector<float> HiHat(std::uint32_t seed, double decay);
// A crash cymbal: a long wash of bright noise.
std::vector<float> Crash(std::uint32_t seed);
// A bass note: saw and sub square through a low pass that closes after the
// attack; `brightness` 0 to 1 opens it further.
std::vector<float> Bass(double note, double seconds, double brightness);
// A pad note: two detuned saws through a soft low pass with slow attack and
// release; `detune` in cents spreads the pair, `phase` sets where they start.
std::vector<float> Pad(double note, double seconds, double detune, double phase, double cutoff);
// A lead note: square and triangle with delayed vibrato.
std::vector<float> Lead(double note, double seconds, double brightness);
// A soft round lead: sine with a touch of triangle and gentle vibrato.
std::vector<float> SoftLead(double note, double seconds);
// A short plucked note for arpeggios.
std::vector<float> Pluck(double note, double seconds);
}
