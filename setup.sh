#!/usr/bin/env bash
# Sets up Vorn on Debian 12: installs the Debian packages the build needs
# (only those missing), configures and builds.
#
#   ./setup.sh          build the game into build/
#   ./setup.sh test     build the sanitized test configuration into build-test/
#                       and run every test
set -euo pipefail
cd "$(dirname "$0")"

packages=(
  g++ cmake ninja-build pkg-config ccache
  libsdl2-dev
  libgtest-dev libgmock-dev libbenchmark-dev
)

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
    ctest --test-dir build-test --output-on-failure -j "$jobs" --timeout 300
    ;;
  *)
    echo "usage: ./setup.sh [test]" >&2
    exit 2
    ;;
esac
