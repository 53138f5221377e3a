#!/usr/bin/env bash
# install_test.sh <source tree> <its build> <work folder> <compiler>: installs the static library of the build that the
# test belongs to into an empty prefix, and uses it as a stranger would. packages_test.sh does the same with both
# libraries of the packages.
set -euo pipefail
source=$1 build=$2 work=$3 compiler=$4
here=$(cd "$(dirname "$0")" && pwd)
rm -rf "$work"
mkdir -p "$work"

quietly() { # what a failed step said, and nothing of the others
    "$@" >"$work/log" 2>&1 || { cat "$work/log" >&2; return 1; }
}

quietly cmake --install "$build" --component Development --prefix "$work/static"
"$here/check_prefix.sh" "$work/static" "$work/with-static" "$compiler" static

# What the library cannot be built for is told in one message.
refused() { # what it says, the options of CMake
    rm -rf "$work/refused"
    ! cmake -S "$source" -B "$work/refused" -DCMAKE_CXX_COMPILER="$compiler" "${@:2}" >"$work/log" 2>&1 &&
        tr -s ' \n' ' ' <"$work/log" | grep "$1" >/dev/null || { cat "$work/log" >&2; return 1; }
}
refused 'does not know FreeBSD yet: docs/porting.md' -DCMAKE_SYSTEM_NAME=FreeBSD
if [ "$(uname -m)" = x86_64 ]; then
    refused 'VFoundation needs a system with 64-bit pointers' -DCMAKE_CXX_FLAGS=-m32 \
        -DCMAKE_TRY_COMPILE_TARGET_TYPE=STATIC_LIBRARY # there may be no 32-bit libraries to link to
fi

# The pkg-config file names absolute folders as they are; the prefix is the one that is installed to.
quietly cmake -G Ninja -S "$source" -B "$work/build" -DCMAKE_CXX_COMPILER="$compiler" -DVFOUNDATION_BUILD_TESTS=OFF \
    -DVFOUNDATION_BUILD_LAUNCHER=OFF -DVFOUNDATION_BUILD_EXAMPLES=OFF -DVFOUNDATION_BUILD_TOOLS=OFF \
    -DCMAKE_INSTALL_LIBDIR=/somewhere/lib
touch "$work/build/foundation/libVFoundation.a"
DESTDIR=$work/staged quietly cmake --install "$work/build" --component Development --prefix /else/where
pc=$work/staged/somewhere/lib/pkgconfig
[ "$(PKG_CONFIG_LIBDIR=$pc pkg-config --variable=libdir vfoundation)" = /somewhere/lib ]
[ "$(PKG_CONFIG_LIBDIR=$pc pkg-config --variable=includedir vfoundation)" = /else/where/include/VFoundation ]
