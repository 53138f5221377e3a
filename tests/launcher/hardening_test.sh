#!/bin/sh
# Looks at how programs and libraries were built. usage: hardening_test.sh [--fortified] <file>...
#   --fortified   built with optimisation, where calls that overrun their buffer end the program
#   OBJDUMP       the disassembler, if it is not this machine's
set -eu
fortified=false
if [ "$1" = --fortified ]; then
    fortified=true
    shift
fi
[ $# -gt 0 ] || { echo "usage: hardening_test.sh [--fortified] <file>..." >&2; exit 2; }
failed=0
for file in "$@"; do
    name=${file##*/}
    require() { # what, text to look in, pattern
        printf '%s\n' "$2" | grep -Eq "$3" || { echo "$name: $1"; failed=1; }
    }
    header=$(readelf -hW "$file")
    segments=$(readelf -lW "$file")
    dynamic=$(readelf -dW "$file")
    symbols=$(readelf --dyn-syms -W "$file")
    require "is not position independent" "$header" 'Type: +DYN'
    case "$name" in
        *.so.*) ;;
        *) require "is a library, not a program" "$dynamic" 'FLAGS_1.*PIE' ;;
    esac
    require "has no read-only relocations" "$segments" 'GNU_RELRO'
    require "binds its symbols late" "$dynamic" 'BIND_NOW|FLAGS_1.*NOW'
    require "has an executable stack" "$segments" 'GNU_STACK .* RW '
    require "has no stack protector" "$symbols" '__stack_chk_fail'
    if $fortified; then
        require "is not fortified" "$symbols" '__[a-z_]+_chk\b'
    fi
    case "$header" in
        *X86-64*) mark=endbr64 ;;
        *AArch64*) mark='paciasp|bti' ;;
    esac
    require "has no marked branch targets" "$("${OBJDUMP:-objdump}" -d --no-show-raw-insn "$file" | grep -Ec "$mark")" '^[0-9]{2,}$'
done
exit $failed
