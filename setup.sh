#!/usr/bin/env bash
# Sets up Vorn on Debian 12: installs the Debian packages the build needs
# (only those missing), configures and builds.
#
#   ./setup.sh          build the game into build/
#   ./setup.sh test     build the sanitized test configuration into build-test/
#                       and run every test
#   ./setup.sh tsan     build the threaded code (the lanes module and its tests,
#                       lanes writing script variables into the engine's Lua state, and
#                       the memory manager) with ThreadSanitizer into build-tsan/ and
#                       run those tests
#   ./setup.sh fuzz [seconds] [text | cursor | archetype | room | shader | kbm | kba | bank]
#                       build the libFuzzer targets with clang into build-fuzz/
#                       and fuzz one reader (default 600 seconds): the text
#                       reader (the default), the cursor reader, the archetype
#                       reader, the shader description preprocessor, or the
#                       model and animation-set readers; crashes and hangs are
#                       written to build-fuzz/artifacts/
set -euo pipefail
cd "$(dirname "$0")"

packages=(
  g++ cmake ninja-build pkg-config ccache
  libsdl2-dev libdw-dev libopenal-dev libsndfile1-dev
  libluajit-5.1-dev lua-filesystem-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  libepoxy-dev libgl-dev libegl-dev libgl1-mesa-dri libegl-mesa0 libstb-dev libimgui-dev
  libassimp-dev
  libbullet-dev
  libmimalloc-dev libjemalloc-dev
)
if [ "${1:-}" = fuzz ]; then
  packages+=(clang libclang-rt-14-dev)
fi
# The test build also opens the generated script reference in a headless browser.
if [ "${1:-}" = test ]; then
  packages+=(chromium)
fi

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

jobs=$(nproc)
case "${1:-}" in
  "")
    cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVORN_TESTS=OFF >/dev/null
    cmake --build build -j "$jobs"
    ;;
  test)
    cmake -S . -B build-test -G Ninja -DCMAKE_BUILD_TYPE=Debug -DVORN_SANITIZE=ON -DVORN_BENCH=OFF >/dev/null
    cmake --build build-test -j "$jobs"
    # A test that fails is run once more before the run fails: under load, LeakSanitizer's exit pass
    # now and then crashes on threads the GL driver leaves behind (a crash of the checker, reported
    # after the test itself passed). A real failure fails twice.
    ctest --test-dir build-test --output-on-failure -j "$jobs" --timeout 300 --repeat until-pass:2
    ;;
  tsan)
    cmake -S . -B build-tsan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DVORN_TSAN=ON -DVORN_BENCH=OFF >/dev/null
    cmake --build build-tsan -j "$jobs" --target vorn_lanes_tests vorn_lane_engine_tests vorn_memory_tests
    ctest --test-dir build-tsan --output-on-failure -j "$jobs" --timeout 300
    ;;
  fuzz)
    seconds="${2:-600}"
    # The largest single allocation allowed, in MB: the binary readers bound every count by the
    # bytes left, so for them it is small.
    malloc_limit=2048
    # Each reader has a target <Name>Fuzz and seed inputs in fuzz/seeds/<Name>/.
    case "${3:-text}" in
      text) name=ReadObject ;;
      cursor) name=ReadCursor ;;
      archetype) name=ReadArchetype ;;
      room) name=ReadRoom ;;
      shader) name=ShaderDescription ;;
      kbm) name=ReadKbm malloc_limit=64 ;;
      kba) name=ReadKba malloc_limit=64 ;;
      bank) name=ReadBank ;;
      *)
        echo "usage: ./setup.sh fuzz [seconds] [text | cursor | archetype | room | shader | kbm | kba | bank]" >&2
        exit 2
        ;;
    esac
    cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ \
      -DVORN_FUZZ=ON -DVORN_TESTS=OFF -DVORN_BENCH=OFF >/dev/null
    cmake --build build-fuzz -j "$jobs" --target "${name}Fuzz"
    mkdir -p "fuzz-corpus/$name" "build-fuzz/artifacts/$name"
    # The reader must answer every input within a second; -timeout catches hangs.
    "./build-fuzz/fuzz/${name}Fuzz" "fuzz-corpus/$name" "fuzz/seeds/$name" \
      -max_total_time="$seconds" -timeout=5 -rss_limit_mb=2048 -malloc_limit_mb="$malloc_limit" -print_final_stats=1 \
      -artifact_prefix="build-fuzz/artifacts/$name/"
    ;;
  *)
    echo "usage: ./setup.sh [test | tsan | fuzz [seconds] [text | cursor | archetype | room | shader | kbm | kba | bank]]" >&2
    exit 2
    ;;
esac
