#!/usr/bin/env bash
# A gdb session on the catalogue, compared with the transcript that was reviewed.
# Usage: gdb_test.sh CATALOGUE SOURCE-FOLDER. Exit status 77: there is no gdb that can run a program.
set -euo pipefail
catalogue=$1 source=$2

command -v gdb >/dev/null || { echo "skipped: gdb is not installed"; exit 77; }
gdb -nx -batch -ex 'python import gdb.printing' >/dev/null 2>&1 || { echo "skipped: gdb without Python"; exit 77; }
gdb -nx -batch -ex run /bin/true 2>&1 | grep -q 'exited normally' ||
    { echo "skipped: gdb may not trace programs here"; exit 77; }

expressions=(empty shortText longText colour plainColour objects texts pointers settings number nothing text object
    integer reference noReference)
arguments=(-nx -batch -ex 'set print pretty off' -ex 'set print repeats 0' -ex 'set print elements 400'
    -ex "source $source/tools/gdb/vfoundation-gdb.py" -ex 'break Stop' -ex run)
for expression in "${expressions[@]}"; do
    arguments+=(-ex "printf \"$expression = \"" -ex "output catalogue.$expression" -ex 'echo \n')
done
# Objects without a printer are shown as pointers to their own class.
arguments+=(-ex 'printf "other = "' -ex 'output catalogue.other' -ex 'echo \n')
# What is not there ends a value, not the session.
arguments+=(-ex 'printf "unreadable = "' -ex 'output *(VFoundation::VString*)8' -ex 'echo \n' -ex kill)

LC_ALL=C.UTF-8 gdb "${arguments[@]}" "$catalogue" 2>&1 | sed -n '/^empty/,$p' | grep -v 'Inferior 1\|^Kill' |
    sed 's/0x[0-9a-f]\{4,\}/ADDRESS/g' >session.txt
diff "$source/tests/data/tools/gdb.txt" session.txt
