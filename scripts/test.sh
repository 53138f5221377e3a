#!/usr/bin/env bash
# Builds the project and runs its tests; installs what that needs. Usage:
#   ./scripts/test.sh                      the dev build, everything in it
#   ./scripts/test.sh --preset asan        another build: asan, tsan, release
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
[ "$preset" = release ] && packages+=("${PACKAGES_BENCHMARK[@]}")
install_missing "${packages[@]}"

cmake --preset "$preset"
cmake --build --preset "$preset"
ctest --preset "$preset" -j "$(nproc)" "$@"
