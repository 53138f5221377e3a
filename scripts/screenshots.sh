#!/usr/bin/env bash
# Makes the pictures of the documents, all into docs/images:
#   - the dialogs as they really are: the alert and the password dialog in light and dark, at scale 1 and 2, and the
#     chooser of two administrators. The bundle is built, staged in a neutral folder and run by the elevation test, on
#     a virtual display and a private system bus; that needs root, so an ordinary user is asked by sudo.
#   - what programs of the documents draw: a trace and a graph; and vfinspect on a terminal.
# Usage:
#   ./scripts/screenshots.sh              all of them
#   ./scripts/screenshots.sh --library    all but the dialogs
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh

take_library() {
    cmake --build --preset dev --target vfinspect document_tools document_10-graphs
    local build=$PWD/build/dev tree=$PWD
    (
        cd "$taken"
        "$build/tests/docs/document_tools" 2>/dev/null
        "$build/tests/docs/document_10-graphs" 2>/dev/null
        export PATH=$build/tools/vfinspect:$PATH
        vfinspect --svg roads.xml >graph.svg
        cp "$tree/tests/data/persistence/archive-be-padded.bin" archive.bin
        cp archive.bin damaged.bin
        printf '\t' | dd of=damaged.bin bs=1 seek=91 conv=notrunc status=none
        cat >session.sh <<'END'
for command in 'vfinspect archive.bin' 'vfinspect --check archive.bin damaged.bin'; do
    printf '\033[1m$\033[0m %s\n' "$command"
    $command
done
printf '\033[1m$\033[0m '
touch shown
sleep 60
END
        # The display's number is known when it is ready.
        mkfifo display
        Xvfb -displayfd 3 -screen 0 1000x800x24 -nolisten tcp 3>display 2>/dev/null &
        server=$!
        DISPLAY=:$(head -n 1 display)
        export DISPLAY
        xterm -fa 'DejaVu Sans Mono' -fs 11 -geometry 78x24+0+0 -b 8 -bg '#1b2430' -fg '#e6e6e6' +sb \
            -e bash session.sh 2>/dev/null &
        terminal=$!
        trap 'kill $terminal $server 2>/dev/null' EXIT
        for ((i = 0; i < 100; i++)); do
            sleep 0.2
            [ ! -e shown ] || break
        done
        sleep 1 # it is drawn soon after it is written
        import -window "$(xdotool search --class xterm | tail -n 1)" vfinspect.png
    )
    cp "$taken/run.svg" docs/images/trace.svg
    cp "$taken/graph.svg" docs/images/graph.svg
    convert "$taken/vfinspect.png" -strip -colors 64 docs/images/vfinspect.png
}

take_dialogs() {
    cmake --build --preset dev --target bundle StatusProbe
    local as_root=() names=(two-administrators) theme scale name
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    "${as_root[@]}" /usr/bin/python3 tests/elevation/elevation_test.py build/dev/bundle \
        --probe build/dev/tests/elevation/StatusProbe --pictures "$taken" two_administrators take_pictures
    for theme in light dark; do
        for scale in 1 2; do
            names+=("password-dialog-$theme-$scale" "alert-$theme-$scale")
        done
    done
    for name in "${names[@]}"; do
        # Without a window manager there is nothing around the window: a little space makes its edges visible.
        convert "$taken/$name.png" -strip -bordercolor '#5b6b7f' -border 16 "docs/images/${name%-light-1}.png"
    done
}

case "${1:-}" in
    "" | --library) ;;
    *) sed -n '2,9s/^# \{0,1\}//p' "$0"; exit 2 ;;
esac
install_missing "${PACKAGES_BUILD[@]}" "${PACKAGES_TEST[@]}" "${PACKAGES_PICTURES[@]}"
cmake --preset dev >/dev/null
taken=$(mktemp -d)
trap 'rm -rf "$taken"' EXIT
mkdir -p docs/images
take_library
[ "${1:-}" = --library ] || take_dialogs
ls -l docs/images
