#!/usr/bin/env bash
# gdb sessions on a program with one object of each kind and on the photo catalogue, compared with the transcripts that
# were reviewed. Usage: gdb_test.sh GDB-CATALOGUE SOURCE-FOLDER [PHOTO-CATALOGUE]. The latter has debug information. Exit status 77: there is no gdb that can run a program.
set -euo pipefail
catalogue=$1 source=$2 photos=${3:-}

command -v gdb >/dev/null || { echo "skipped: gdb is not installed"; exit 77; }
gdb -nx -batch -ex 'python import gdb.printing' >/dev/null 2>&1 || { echo "skipped: gdb without Python"; exit 77; }
gdb -nx -batch -ex run /bin/true 2>&1 | grep -q 'exited normally' ||
    { echo "skipped: gdb may not trace programs here"; exit 77; }

# session GOLDEN PLACE PROGRAM ARGUMENT... - EXPRESSION...: stops there and prints the values.
session() {
    local golden=$source/tests/data/tools/$1 place=$2 expression program=()
    shift 2
    while [ "$1" != - ]; do
        program+=("$1")
        shift
    done
    shift
    local arguments=(-nx -batch -ex 'set print pretty off' -ex 'set print repeats 0' -ex 'set print elements 400'
        -ex "source $source/tools/gdb/vfoundation-gdb.py" -ex "break $place" -ex run -ex 'echo STOPPED\n')
    for expression in "$@"; do
        arguments+=(-ex "printf \"$expression = \"" -ex "output $expression" -ex 'echo \n')
    done
    LC_ALL=C.UTF-8 gdb "${arguments[@]}" -ex kill --args "${program[@]}" 2>&1 | sed '1,/^STOPPED$/d' |
        grep -v 'Inferior 1\|^Kill' | sed 's/0x[0-9a-f]\{4,\}/ADDRESS/g' >session.txt
    diff "$golden" session.txt
}

# Objects without a printer are shown as pointers to their own class. What is not there ends a value, not the session.
c=catalogue
session gdb.txt Stop "$catalogue" - $c.empty $c.shortText $c.longText $c.colour $c.plainColour $c.objects $c.texts \
    $c.pointers $c.settings $c.number $c.nothing $c.text $c.object $c.integer $c.reference $c.noReference $c.other \
    '*(VFoundation::VString*)8'

if [ -n "$photos" ]; then
    work=$(mktemp -d)
    trap 'rm -rf "$work"' EXIT
    mkdir "$work/pictures"
    cp "$source"/tests/data/image/colour{,-progressive}.jpg "$work/pictures"
    cp "$source/tests/data/image/tall.png" "$work/pictures"
    cd "$work"
    "$photos" make pictures album 1 >/dev/null
    first='m_photos.ObjectAtIndexTyped(0)' node='m_similar->Nodes().ObjectAtIndexTyped(0)'
    session gdb-photos.txt catalogue::Catalogue::Similar "$photos" show album - m_photos "$first->path" "$first->width" \
        "$first->thumbnail" m_similar 'm_similar->Nodes()' 'm_similar->Edges()' "$node->Properties()"
fi
