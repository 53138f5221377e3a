#!/usr/bin/env bash
# check_prefix.sh <prefix> <work folder> <compiler> <static|shared> [stripped]: what a stranger gets from an installed
# library. A project finds it through CMake and through pkg-config, and runs. A shared library that is not stripped
# describes its classes to gdb.
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

component=
[ "$kind" = shared ] || component=Static
quietly cmake -G Ninja -S "$consumer" -B "$work/consumer" -DCMAKE_PREFIX_PATH="$prefix" -DCOMPONENT=$component
quietly cmake --build "$work/consumer"
quietly "$work/consumer/consumer"

export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
version=$(pkg-config --modversion vfoundation)
if [ "$kind" = shared ]; then
    flags=$(pkg-config --cflags --libs vfoundation)
else # the archive, also where the shared library lies beside it
    flags=$(pkg-config --static --cflags --libs vfoundation | sed 's/-lVFoundation/-l:libVFoundation.a/')
fi
# shellcheck disable=SC2086
"$compiler" -std=c++20 "-DINSTALLED_VERSION=\"$version\"" "$consumer/main.cpp" -o "$work/by-pkg-config" \
    "$work"/consumer/libplugin.so $flags
LD_LIBRARY_PATH=$prefix/lib:$work/consumer quietly "$work/by-pkg-config"

for program in "$work/consumer/consumer" "$work/by-pkg-config"; do
    linked=static
    ! readelf -dW "$program" | grep -q 'NEEDED.*libVFoundation' || linked=shared
    [ "$linked" = "$kind" ] || { echo "$program links the $linked library" >&2; exit 1; }
done

# gdb prints objects: of the shared library in its place by itself, else after one line, for a program that describes
# the classes (docs/tools.md).
if gdb -nx -batch -ex run /bin/true 2>&1 | grep -q 'exited normally'; then
    describe=() source=()
    if [ "$kind" = static ] || [ "${5:-}" = stripped ]; then
        describe=(-femit-class-debug-always)
        ! "$compiler" --version | grep -q clang || describe=(-fstandalone-debug)
    fi
    if [ "$kind" = static ]; then
        source=(-ex "source $prefix/share/VFoundation/gdb/vfoundation-gdb.py")
    fi
    # shellcheck disable=SC2086
    "$compiler" -std=c++20 -g "${describe[@]}" "$consumer/printed.cpp" -o "$work/printed" $flags
    line=$(grep -n 'the debugger stops here' "$consumer/printed.cpp" | cut -d : -f 1)
    gdb -nx -batch "${source[@]}" -ex "break printed.cpp:$line" -ex run -ex 'print text' -ex 'print array' \
        "$work/printed" >"$work/log" 2>&1
    [ "$(grep '^\$' "$work/log")" = '$1 = "in the program"
$2 = VObjectArray of 1 = {"in the program"}' ] || { cat "$work/log" >&2; exit 1; }
else
    echo "check_prefix: there is no gdb that can run a program: printers not tried" >&2
    [ -z "${CI:-}" ]
fi

# Without what the static library calls, the package is not found, which may be what a project is prepared for.
mkdir "$work/quiet"
cat >"$work/quiet/CMakeLists.txt" <<END
cmake_minimum_required(VERSION 3.25)
project(Quiet LANGUAGES CXX)
find_package(VFoundation QUIET COMPONENTS Static)
if(VFoundation_FOUND OR TARGET VFoundation::VFoundation)
    message(FATAL_ERROR "found without its dependencies")
endif()
END
PKG_CONFIG_LIBDIR=/nowhere PKG_CONFIG_PATH='' quietly cmake -S "$work/quiet" -B "$work/quiet/build" \
    -DCMAKE_PREFIX_PATH="$prefix" -DPKG_CONFIG_USE_CMAKE_PREFIX_PATH=OFF
