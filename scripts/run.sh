#!/usr/bin/env bash
# The main job: installs the packages that are missing, builds the launcher and the sample guide, assembles both bundles
# side by side and starts the launcher. A second start only looks whether anything changed. Usage:
#   ./scripts/run.sh             start the launcher
#   ./scripts/run.sh --build     only assemble the bundles, and say where they are
#   ./scripts/run.sh --help      show this
set -euo pipefail
cd "$(dirname "$0")/.."

build_only=false
for option in "$@"; do
    case "$option" in
        --build) build_only=true ;;
        -h|--help) sed -n '2,6s/^# \{0,1\}//p' scripts/run.sh; exit 0 ;;
        *) echo "unknown option: $option (see --help)" >&2; exit 2 ;;
    esac
done

. scripts/lib/packages.sh
install_missing "${PACKAGES_BUILD[@]}" "${PACKAGES_RUN[@]}"

build=build/run
if [ ! -f "$build/build.ninja" ]; then
    cmake -G Ninja -S . -B "$build" -DCMAKE_BUILD_TYPE=Release \
        -DVFOUNDATION_BUILD_TESTS=OFF -DVFOUNDATION_BUILD_EXAMPLES=OFF >&2
fi
cmake --build "$build" --target bundle >&2
launcher=$PWD/$build/bundle/QuillmarkLauncher.app/Contents/MacOS/QuillmarkLauncher
if "$build_only"; then
    echo "$build/bundle"
    exit 0
fi

if [ "$(id -u)" -ne 0 ]; then
    if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
        echo "There is no display (DISPLAY and WAYLAND_DISPLAY are empty): sudo will ask on the terminal, if there is" >&2
        echo "one, unless a rule of this machine grants the right without a password." >&2
    fi
    if [ ! -S /run/dbus/system_bus_socket ]; then
        echo "There is no system bus, so the launcher asks through sudo instead of polkit." >&2
    fi
fi
exec "$launcher"
