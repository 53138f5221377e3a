#!/usr/bin/env bash
# Makes the Debian packages and tries them in a copy of a system that vanishes afterwards: lintian, programs built
# against the shared and the static library, the launcher started by its menu entry, removal. Needs root. Usage:
#   packages_test.sh             in a copy of this system
#   packages_test.sh --bare      the launcher in a bare Debian 12 (debootstrap and the network; some minutes)
#   packages_test.sh --release   in a copy of this system, packages without debug symbols: they are made in build/release
#                                and take over what is compiled there, which makes this quick
set -euo pipefail
tree=$(cd "$(dirname "$0")/../.." && pwd)
packages=(libvfoundation1 libvfoundation-dev quillmark-launcher)

if [ "${1:-}" != --inside ]; then
    cd "$tree"
    . scripts/lib/packages.sh
    install_missing "${PACKAGES_BUILD[@]}" "${PACKAGES_TEST[@]}" "${PACKAGES_PACKAGE[@]}"
    build=$tree/build/deb options=()
    if [ "${1:-}" = --release ]; then
        build=$tree/build/release
        trap 'rm -f "$build/CMakeCache.txt"' EXIT # these are not the options of the release preset
        options=(-DCMAKE_CXX_FLAGS= -DVFOUNDATION_BUILD_LAUNCHER=ON -DVFOUNDATION_WITH_PUGIXML=ON)
    fi
    rm -f "$build"/*.deb "$build"/*.ddeb
    cmake --preset deb -B "$build" "${options[@]}" >/dev/null
    cmake --build "$build"
    (cd "$build" && cpack >/dev/null)
    lintian --allow-root --fail-on error,warning "$build"/*.deb
    [ "$(dpkg-deb --field "$build"/libvfoundation1_*.deb Multi-Arch)" = same ]
    dpkg-deb --ctrl-tarfile "$build"/libvfoundation1_*.deb | tar -xO ./symbols >"$build/packaging/symbols.packed"
    grep -q '^ _ZN11VFoundation' "$build/packaging/symbols.packed"
    ! grep '#MISSING' "$build/packaging/symbols.packed" || { echo "these symbols are gone" >&2; exit 1; }
    base=/
    if [ "${1:-}" = --bare ]; then
        base=$(mktemp -d)
        trap 'rm -rf "$base"' EXIT
        mirror=$(apt-get indextargets --format '$(SITE)' 'Created-By: Packages' | grep '/debian$' | head -n 1)
        debootstrap --variant=minbase bookworm "$base" "$mirror" >/dev/null
    fi
    unshare --mount --propagation private "$0" --inside "$base" "$build"
    exit
fi

base=$2 build=$3
work=$(mktemp -d)
mount -t tmpfs tmpfs "$work"
mkdir "$work/upper" "$work/work" "$work/root"
mount -t overlay overlay -o "lowerdir=$base,upperdir=$work/upper,workdir=$work/work" "$work/root"
mount --rbind /dev "$work/root/dev"
mount -t proc proc "$work/root/proc"
mount -t tmpfs tmpfs "$work/root/tmp"
mount --bind "$tree" "$work/root/mnt"
debs=("${packages[@]/#//mnt/${build#"$tree"/}/}")
debs=("${debs[@]/%/_*.deb}")

in_root() { # a shell line in the copy
    chroot "$work/root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root DEBIAN_FRONTEND=noninteractive \
        PYTHONDONTWRITEBYTECODE=1 sh -euc "$1" sh "${@:2}"
}
purge() { in_root 'dpkg --purge "$@" >/dev/null' "${packages[@]}"; }
files() { # but for what package tools note down
    in_root 'cd / && find etc opt srv usr var ! -path "var/cache/*" ! -path "var/log/*" ! -path "var/lib/dpkg/*" | LC_ALL=C sort'
}

if [ "$base" != / ]; then
    cp /etc/resolv.conf "$work/root/etc/" 2>/dev/null || true
    in_root "apt-get update -qq && apt-get install -y -qq ${debs[*]} >/tmp/log 2>&1 || { cat /tmp/log; exit 1; }"
    purge # what they depend on stays
    in_root 'apt-get install -y -qq python3 dbus sudo xvfb xdotool >/tmp/log 2>&1 || { cat /tmp/log; exit 1; }'
fi
files >"$work/before"
in_root "dpkg --install ${debs[*]} >/tmp/log 2>&1 || { cat /tmp/log; exit 1; }"

fortified=("$work"/root/usr/lib/*/libVFoundation.so.1.*
    "$work"/root/usr/libexec/quillmark/QuillmarkLauncher.app/Contents/MacOS/*)
"$tree/tests/launcher/hardening_test.sh" --fortified "${fortified[@]}"
"$tree/tests/launcher/hardening_test.sh" "$work/root/usr/bin/vfinspect"
for file in "${fortified[@]}" "$work/root/usr/bin/vfinspect"; do
    ! readelf -dW "$file" | grep -E 'RPATH|RUNPATH' || { echo "$file looks for libraries elsewhere" >&2; exit 1; }
done
if [ "$base" = / ]; then
    symbols=stripped
    if [ "$build" != "$tree/build/release" ]; then # they describe the classes
        symbols=
        in_root "dpkg --install ${debs[0]%_*}-dbgsym_*.ddeb >/dev/null"
        packages=(libvfoundation1-dbgsym "${packages[@]}")
    fi
    in_root 'vfinspect --help >/dev/null && ls /usr/share/gdb/auto-load/usr/lib/*/libVFoundation.so.*-gdb.py >/dev/null'
    for kind in shared static; do
        in_root '/mnt/tests/install/check_prefix.sh /usr "/tmp/$1" c++ "$@"' $kind $symbols
    done
fi

# The menu entry's command as ordinary users; the package has no guide, the sample is one.
elevation='/usr/bin/python3 /mnt/tests/elevation/elevation_test.py /usr/libexec/quillmark --packaged'
in_root "$elevation without_guide"
DESTDIR=$work/root cmake --install "$build" --component Sample >/dev/null
in_root "$elevation with_guide"
rm -r "$work/root/usr/libexec/quillmark/ZephGuide.app"

purge
files | diff "$work/before" - || { echo "the purged packages left something, or took it" >&2; exit 1; }
echo "packages: installed, used and removed without a trace"
