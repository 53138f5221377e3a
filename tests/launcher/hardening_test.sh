#!/bin/sh
# Looks at how the programs of the bundle were built. usage: hardening_test.sh <program>...
set -eu
failed=0
for program in "$@"; do
    name=${program##*/}
    require() { # what, text to look in, pattern
        printf '%s\n' "$2" | grep -Eq "$3" || { echo "$name: $1"; failed=1; }
    }
    header=$(readelf -hW "$program")
    segments=$(readelf -lW "$program")
    dynamic=$(readelf -dW "$program")
    require "is not position independent" "$header" 'Type: +DYN'
    require "is a library, not a program" "$dynamic" 'FLAGS_1.*PIE'
    require "has no read-only relocations" "$segments" 'GNU_RELRO'
    require "binds its symbols late" "$dynamic" 'BIND_NOW|FLAGS_1.*NOW'
    require "has an executable stack" "$segments" 'GNU_STACK .* RW '
    require "has no stack protector" "$(readelf --dyn-syms -W "$program")" '__stack_chk_fail'
    require "has no marked branch targets" "$(objdump -d --no-show-raw-insn "$program" | grep -c endbr64)" '^[0-9]{2,}$'
done
exit $failed
