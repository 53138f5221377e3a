#!/usr/bin/env bash
# Builds the library, its tools and its tests for another processor, and runs the tests under an emulator. Installs what
# that needs: libraries of another architecture, beside those of this machine. Usage:
#   ./scripts/cross.sh arm64                 64-bit ARM
#   ./scripts/cross.sh arm64 -- -R strings   what follows -- goes to ctest
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh

case "${1:-}" in
    arm64) preset=$1; packages=("${PACKAGES_CROSS_ARM64[@]}"); shift ;;
    -h|--help) sed -n '2,5s/^# \{0,1\}//p' "$0"; exit 0 ;;
    *) echo "usage: $0 arm64 [-- CTEST-OPTION...]" >&2; exit 2 ;;
esac
[ "${1:-}" = -- ] && shift

install_missing cmake ninja-build pkg-config libstb-dev python3-minimal "${packages[@]}"
cmake --preset "$preset"
cmake --build --preset "$preset"
echo "Left out, as an emulator cannot do it (label native):"
ctest --test-dir "build/$preset" -N -L native | sed -n 's/^ *Test *#[0-9]*: /  /p'
ctest --preset "$preset" -j "$(nproc)" "$@"
