#!/usr/bin/env bash
# install_test.sh <source tree> <work folder> <compiler>
set -euo pipefail
source=$1 work=$2 compiler=$3
rm -rf "$work"
export CXX=$compiler

quietly() { # what a failed step said, and nothing of the others
    "$@" >"$work/log" 2>&1 || { cat "$work/log" >&2; return 1; }
}
mkdir -p "$work"

for shared in OFF ON; do
    build=$work/build-$shared prefix=$work/prefix-$shared
    quietly cmake -G Ninja -S "$source" -B "$build" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0 \
        -DBUILD_SHARED_LIBS=$shared -DVFOUNDATION_BUILD_TESTS=OFF -DVFOUNDATION_BUILD_LAUNCHER=OFF \
        -DVFOUNDATION_BUILD_EXAMPLES=OFF -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR=lib
    quietly cmake --build "$build"
    quietly cmake --install "$build"

    # VFoundation.h includes exactly the headers that were installed.
    include=$prefix/include/VFoundation
    diff <(cd "$include" && find foundation -name '*.h' ! -name VFoundation.h | sort) \
        <(sed -n 's/^#include "\(.*\)"$/\1/p' "$include/foundation/VFoundation.h" | sort)

    quietly cmake -G Ninja -S "$source/tests/install/consumer" -B "$build/consumer" -DCMAKE_PREFIX_PATH="$prefix"
    quietly cmake --build "$build/consumer"
    "$build/consumer/consumer"

    export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
    static=; [ $shared = OFF ] && static=--static
    # shellcheck disable=SC2046
    "$compiler" -std=c++20 "$source/tests/install/consumer/main.cpp" -o "$build/by-pkg-config" \
        "$build"/consumer/libplugin.so $(pkg-config $static --cflags --libs vfoundation)
    LD_LIBRARY_PATH=$prefix/lib:$build/consumer "$build/by-pkg-config"
done
