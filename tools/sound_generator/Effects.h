// The recipes of the game's sound effects: short mono sounds made from
// oscillators, noise, envelopes and filters with fixed seeds, each peak
// normalised to about -3 dBFS and faded at both ends so that it starts and
// ends without a click.
#pragma once

#include "sound_generator/Audio.h"

namespace SoundTools
{
// The peak every effect is normalised to: -3 dBFS.
constexpr float kEffectPeak = 0.708f;

// A player's shot, variant 1 or 2: a bright zap sweeping down.
Audio MakeShot(int variant);
// Something struck, variant 1 or 2: a noisy crack over a low thump.
Audio MakeHit(int variant);
// The player taking damage: a short, rough falling groan.
Audio MakePlayerHurt();
// An explosion: a low boom under a roar of noise that darkens as it fades.
Audio MakeExplosion();
// The player's dash: a rushing whoosh.
Audio MakeDash();
// A jump: a quick rising blip.
Audio MakeJump();
// Landing: a soft low thud.
Audio MakeLand();
// Picking something up: two bright rising notes.
Audio MakePickup();
// A power-up: a rising arpeggio with a shimmer.
Audio MakePowerUp();
// A footstep, variant 1 to 3: a short scuff.
Audio MakeFootstep(int variant);
// A menu button pressed: a crisp click.
Audio MakeMenuClick();
// The menu selection moving: a soft tick.
Audio MakeMenuMove();
// The exit gate opening: a rising shimmering chord.
Audio MakeExitOpen();
// The boss slamming the ground: a heavy boom with rubble.
Audio MakeBossSlam();
// The player dying: a long falling tone that darkens.
Audio MakeDeath();
}
