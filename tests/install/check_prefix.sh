#!/usr/bin/env bash
# check_prefix.sh <prefix> <work folder> <compiler> <static|shared>: what a stranger gets from an installed library.
# A project finds it through CMake and through pkg-config, and runs.
set -euo pipefail
consumer=$(cd "$(dirname "$0")/consumer" && pwd)
prefix=$1 work=$2 compiler=$3 kind=$4
rm -rf "$work"
mkdir -p "$work"
export CXX=$compiler

quietly() { # what a failed step said, and nothing of the others
    "$@" >"$work/log" 2>&1 || { cat "$work/log" >&2; return 1; }
}

# VFoundation.h includes exactly the headers that were installed.
include=$prefix/include/VFoundation
diff <(cd "$include" && find foundation -name '*.h' ! -name VFoundation.h | sort) \
    <(sed -n 's/^#include "\(.*\)"$/\1/p' "$include/foundation/VFoundation.h" | sort)

quietly cmake -G Ninja -S "$consumer" -B "$work/consumer" -DCMAKE_PREFIX_PATH="$prefix"
quietly cmake --build "$work/consumer"
"$work/consumer/consumer"

export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
static=
[ "$kind" = shared ] || static=--static
# shellcheck disable=SC2046
"$compiler" -std=c++20 "$consumer/main.cpp" -o "$work/by-pkg-config" \
    "$work"/consumer/libplugin.so $(pkg-config $static --cflags --libs vfoundation)
LD_LIBRARY_PATH=$prefix/lib:$work/consumer "$work/by-pkg-config"
