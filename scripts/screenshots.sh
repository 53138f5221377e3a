#!/usr/bin/env bash
# Takes the pictures of the documents from the dialogs as they really are: the alert and the password dialog in light
# and dark, at scale 1 and 2, and the chooser of two administrators, all into docs/images. The bundle is built, staged
# in a neutral folder and run by the elevation test, on a virtual display and a private system bus; that needs root, so
# an ordinary user is asked by sudo.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh
install_missing "${PACKAGES_BUILD[@]}" "${PACKAGES_TEST[@]}"

cmake --preset dev >/dev/null
cmake --build --preset dev --target bundle StatusProbe
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
taken=$(mktemp -d)
trap 'rm -rf "$taken"' EXIT
"${as_root[@]}" /usr/bin/python3 tests/elevation/elevation_test.py build/dev/bundle \
    --probe build/dev/tests/elevation/StatusProbe --pictures "$taken" two_administrators take_pictures

mkdir -p docs/images
names=(two-administrators)
for theme in light dark; do
    for scale in 1 2; do
        names+=("password-dialog-$theme-$scale" "alert-$theme-$scale")
    done
done
for name in "${names[@]}"; do
    # Without a window manager there is nothing around the window: a little space makes its edges visible.
    convert "$taken/$name.png" -strip -bordercolor '#5b6b7f' -border 16 "docs/images/${name%-light-1}.png"
done
ls -l docs/images
