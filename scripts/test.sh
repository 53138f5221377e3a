#!/usr/bin/env bash
# Builds the project and runs its tests; installs what that needs. Usage:
#   ./scripts/test.sh                      the dev build, everything in it
#   ./scripts/test.sh --preset asan        another build: bench, release, asan, tsan
#   ./scripts/test.sh -- -R strings        what follows -- goes to ctest
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh

preset=dev
while [ $# -gt 0 ]; do
    case "$1" in
        --preset) preset=${2:?--preset needs a name}; shift 2 ;;
        --) shift; break ;;
        -h|--help) sed -n '2,6s/^# \{0,1\}//p' "$0"; exit 0 ;;
        *) echo "unknown option: $1 (see --help)" >&2; exit 2 ;;
    esac
done

packages=("${PACKAGES_BUILD[@]}" "${PACKAGES_TEST[@]}")
[ "$preset" = bench ] && packages+=("${PACKAGES_BENCHMARK[@]}")
install_missing "${packages[@]}"

if [ "$preset" = release ]; then
    # The release preset has no tests, so that it configures without GoogleTest: the same build with them.
    build=build/release-tests
    cmake --preset release -B "$build" -DVFOUNDATION_BUILD_TESTS=ON
    cmake --build "$build"
    ctest --test-dir "$build" --output-on-failure --no-tests=error -j "$(nproc)" "$@"
else
    cmake --preset "$preset"
    cmake --build --preset "$preset"
    ctest --preset "$preset" -j "$(nproc)" "$@"
fi
