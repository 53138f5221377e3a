#!/usr/bin/env bash
# install_test.sh <source tree> <its build> <work folder> <compiler>: installs the static library of the build that the
# test belongs to, and a shared one built here, each into an empty prefix, and uses both as a stranger would.
set -euo pipefail
source=$1 build=$2 work=$3 compiler=$4
here=$(cd "$(dirname "$0")" && pwd)
rm -rf "$work"
mkdir -p "$work"

quietly() { # what a failed step said, and nothing of the others
    "$@" >"$work/log" 2>&1 || { cat "$work/log" >&2; return 1; }
}

quietly cmake --install "$build" --prefix "$work/static"
"$here/check_prefix.sh" "$work/static" "$work/with-static" "$compiler" static

quietly cmake -G Ninja -S "$source" -B "$work/build" -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_CXX_FLAGS_DEBUG=-O0 -DBUILD_SHARED_LIBS=ON -DVFOUNDATION_BUILD_TESTS=OFF \
    -DVFOUNDATION_BUILD_LAUNCHER=OFF -DVFOUNDATION_BUILD_EXAMPLES=OFF -DCMAKE_INSTALL_LIBDIR=lib
quietly cmake --build "$work/build"
quietly cmake --install "$work/build" --prefix "$work/shared"
"$here/check_prefix.sh" "$work/shared" "$work/with-shared" "$compiler" shared
