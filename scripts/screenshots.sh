#!/usr/bin/env bash
# Takes the pictures of the documents from the dialogs as they really are: docs/images/alert.png and
# docs/images/password-dialog.png. The bundle is built, staged in a neutral folder and run by the elevation test,
# on a virtual display and a private system bus; that needs root, so an ordinary user is asked by sudo.
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
    --probe build/dev/tests/elevation/StatusProbe --pictures "$taken" password_dialog alert_is_shown

mkdir -p docs/images
for name in alert password-dialog; do
    # Without a window manager there is nothing around the window: a little space makes its edges visible.
    convert "$taken/$name.png" -strip -bordercolor '#5b6b7f' -border 16 "docs/images/$name.png"
done
ls -l docs/images/alert.png docs/images/password-dialog.png
