#!/usr/bin/env bash
# install_test.sh <source tree> <work folder> <compiler>
set -euo pipefail
source=$1 work=$2 compiler=$3
rm -rf "$work"
export CXX=$compiler

for shared in OFF ON; do
    build=$work/build-$shared prefix=$work/prefix-$shared
    cmake -G Ninja -S "$source" -B "$build" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0 \
        -DBUILD_SHARED_LIBS=$shared -DVFOUNDATION_BUILD_TESTS=OFF -DVFOUNDATION_BUILD_LAUNCHER=OFF \
        -DVFOUNDATION_BUILD_EXAMPLES=OFF -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR=lib >/dev/null
    cmake --build "$build" >/dev/null
    cmake --install "$build" >/dev/null

    # Every public header is there, and none that is not.
    (cd "$prefix/include/VFoundation" && find . -name '*.h') | grep -q '^./foundation/VFoundation.h$'

    cmake -G Ninja -S "$source/tests/install/consumer" -B "$build/consumer" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
    cmake --build "$build/consumer" >/dev/null
    "$build/consumer/consumer"

    export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
    static=; [ $shared = OFF ] && static=--static
    # shellcheck disable=SC2046
    "$compiler" -std=c++20 "$source/tests/install/consumer/main.cpp" -o "$build/by-pkg-config" \
        "$build"/consumer/libplugin.so $(pkg-config $static --cflags --libs vfoundation)
    LD_LIBRARY_PATH=$prefix/lib:$build/consumer "$build/by-pkg-config"
done
