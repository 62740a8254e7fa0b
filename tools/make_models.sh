#!/usr/bin/env bash
# Regenerates the game's models in Data/Models/ from the sources the project
# keeps in tools/: builds the two model tools (in build/, or the folder named by
# VORN_TOOLS_BUILD), rewrites tools/model_sources/embercrawler.gltf from its
# script, and writes:
#
#   capsule.kbm       capsule of radius 0.5, 2 high, along Y (vorn_make_shapes)
#   cylinder.kbm      capped cylinder of radius 0.5, 1 high (vorn_make_shapes)
#   cone.kbm          cone of base radius 0.5, 1 high, tip up (vorn_make_shapes)
#   plane.kbm         1 by 1 square in the XZ plane facing +Y (vorn_make_shapes)
#   ramp.kbm          wedge of the unit cube rising towards -Z (vorn_make_shapes)
#   rock0-3.kbm       four rock-like lumps in the unit cube, for dressing rooms (vorn_make_shapes)
#   player.kbm        the player: capsule body with a visor facing +Z, in the unit cube (vorn_make_shapes)
#   healthorb.kbm     the health orb: a faceted ball of radius 0.5 (vorn_make_shapes)
#   wallpiece.kbm     one wall block with a chamfered top rim, from model_sources/wallpiece.obj
#   embercrawler.kbm  the ember crawler, skinned (bones Body, Head, Tail) with its clips
#                     "Crawl" and "Lunge", from model_sources/embercrawler.gltf
#   embercrawler.kba  the same two clips as an animation set whose tracks name their bones
#
#   tools/make_models.sh
set -euo pipefail
cd "$(dirname "$0")/.."

build="${VORN_TOOLS_BUILD:-build}"
if [ ! -f "$build/build.ninja" ]; then
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVORN_TESTS=OFF >/dev/null
fi
cmake --build "$build" --target vorn_model_convert vorn_make_shapes

sources=tools/model_sources
out=Data/Models
mkdir -p "$out"
python3 "$sources/make_embercrawler_gltf.py" "$sources/embercrawler.gltf"
"$build/tools/vorn_make_shapes" "$out"
"$build/tools/vorn_model_convert" "$sources/wallpiece.obj" "$out/wallpiece.kbm"
"$build/tools/vorn_model_convert" --kba "$out/embercrawler.kba" "$sources/embercrawler.gltf" "$out/embercrawler.kbm"
