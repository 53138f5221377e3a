#!/usr/bin/env bash
# The main job: installs the packages that are missing, builds the launcher and the sample guide, assembles both bundles
# side by side and starts the launcher. A second start only looks whether anything changed. Usage:
#   ./scripts/run.sh             start the launcher
#   ./scripts/run.sh --build     only assemble the bundles, and say where they are
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh

install_missing "${PACKAGES_BUILD[@]}" "${PACKAGES_RUN[@]}"

build=build/run
if [ ! -f "$build/build.ninja" ]; then
    cmake -G Ninja -S . -B "$build" -DCMAKE_BUILD_TYPE=Release \
        -DVFOUNDATION_BUILD_TESTS=OFF -DVFOUNDATION_BUILD_EXAMPLES=OFF >&2
fi
cmake --build "$build" --target bundle >&2
launcher=$PWD/$build/bundle/QuillmarkLauncher.app/Contents/MacOS/QuillmarkLauncher
if [ "${1:-}" = --build ]; then
    echo "$build/bundle"
    exit 0
fi

if [ "$(id -u)" -ne 0 ]; then
    if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
        echo "There is no display (DISPLAY and WAYLAND_DISPLAY are empty), so no password can be asked for: only a" >&2
        echo "rule of this machine that grants the right without one will do. Or run this script as root." >&2
    fi
    if [ ! -S /run/dbus/system_bus_socket ]; then
        echo "There is no system bus, so the launcher asks through sudo instead of polkit." >&2
    fi
fi
exec "$launcher"
