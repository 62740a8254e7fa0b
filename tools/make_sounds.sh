#!/usr/bin/env bash
# Regenerates the game's sounds in Data/Sounds/ with the sound generator
# (tools/sound_generator/): builds it (in build/, or the folder named by
# VORN_TOOLS_BUILD) and writes, all Ogg Vorbis at 48000 Hz:
#
#   Sounds/Effects/  mono effects, peak about -3 dBFS: Shot1-2, Hit1-2, PlayerHurt,
#                    Explosion, Dash, Jump, Land, Pickup, PowerUp, Footstep1-3,
#                    MenuClick, MenuMove, ExitOpen, BossSlam, Death
#   Sounds/Music/    stereo seamless loops: MenuLoop (80 bpm, 24 s), PlayLoop
#                    (128 bpm, 30 s) and PlayLoopIntense (the boss's version)
#
# The samples are the same on every run (fixed seeds); the files' bytes are not,
# since each Ogg stream gets a fresh serial number. Data/Banks/*.bank name them.
#
#   tools/make_sounds.sh
set -euo pipefail
cd "$(dirname "$0")/.."

build="${VORN_TOOLS_BUILD:-build}"
if [ ! -f "$build/build.ninja" ]; then
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVORN_TESTS=OFF >/dev/null
fi
cmake --build "$build" --target vorn_make_sounds

"$build/tools/vorn_make_sounds" Data
