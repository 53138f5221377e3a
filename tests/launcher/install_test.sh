#!/bin/sh
# Installs the launcher into a staging folder and looks at what came: files, modes, paths, and what the system's own
# checkers say. The elevation test runs it from there. usage: install_test.sh <cmake> <build> <staging> <prefix>
set -eu
cmake=$1 build=$2 staging=$3 prefix=$4
rm -rf "$staging"
icons=share/icons/hicolor
(umask 022 && mkdir -p "$staging$prefix" && cd "$staging$prefix" && # what every system has
    mkdir -p libexec share/applications $icons/48x48/apps $icons/128x128/apps $icons/scalable/apps share/man/man1 \
        share/metainfo share/polkit-1/actions)
umask 077 # whoever installs may be this strict
for component in Launcher Sample; do
    DESTDIR=$staging "$cmake" --install "$build" --component $component --prefix "$prefix" >/dev/null
done

cd "$staging$prefix"
bundle=libexec/quillmark/QuillmarkLauncher.app/Contents
id=com.quillmark.Launcher
expected="$bundle/Info.plist 644
$bundle/MacOS/QuillmarkBroker 755
$bundle/MacOS/QuillmarkDialog 755
$bundle/MacOS/QuillmarkLauncher 755
$bundle/Resources/AuthIcon.png 644
libexec/quillmark/ZephGuide.app/Contents/Info.plist 644
libexec/quillmark/ZephGuide.app/Contents/MacOS/ZephGuide 755
share/applications/$id.desktop 644
share/icons/hicolor/128x128/apps/$id.png 644
share/icons/hicolor/48x48/apps/$id.png 644
share/icons/hicolor/scalable/apps/$id.svg 644
share/man/man1/QuillmarkLauncher.1 644
share/metainfo/$id.metainfo.xml 644
share/polkit-1/actions/$id.policy 644"
found=$(find . -type f ! -name '*.mo' -printf '%P %m\n' | LC_ALL=C sort)
[ "$found" = "$expected" ] || { printf '%s\n' "$found" | diff - /dev/fd/3 3<<END || exit 1; }
$expected
END
[ -z "$(find . -type d ! -perm 755)" ] || { echo "folders that are not 755"; exit 1; }
[ -z "$(find . -type l)" ] || { echo "links"; exit 1; }
if command -v msgfmt >/dev/null; then
    [ "$(find "$bundle/Resources/locale" -name 'quillmark-launcher.mo' -perm 644 | wc -l)" -eq 2 ]
fi
for program in "$bundle"/MacOS/*; do
    if readelf -dW "$program" | grep -E 'RPATH|RUNPATH'; then
        echo "$program looks for libraries in a folder of its own"
        exit 1
    fi
done
grep -qx "Exec=\"$prefix/$bundle/MacOS/QuillmarkLauncher\"" share/applications/$id.desktop
grep -q ">$prefix/$bundle/MacOS/QuillmarkBroker<" share/polkit-1/actions/$id.policy
[ "$(grep -c '>auth_admin<' share/polkit-1/actions/$id.policy)" -eq 3 ] # always asked, never kept
for size in 48 128; do
    [ "$(od -An -j16 -N4 -tu1 share/icons/hicolor/${size}x$size/apps/$id.png | tr -d ' ')" = "000$size" ]
done
check() { # a checker with its arguments; in CI a missing one is a failure
    if command -v "$1" >/dev/null; then
        "$@"
    elif [ "${CI:-}" = true ]; then
        echo "$1 is missing"
        exit 1
    fi
}
check desktop-file-validate share/applications/$id.desktop
check appstreamcli validate --no-net share/metainfo/$id.metainfo.xml
