#!/usr/bin/env bash
# Builds the last commit in two folders and compares what is installed, byte by byte: the libraries, the programs, the
# headers and the files beside them. Two optimised builds without a cache take some minutes. Usage:
#   ./scripts/reproducible.sh
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh
case "${1:-}" in
    "") ;;
    -h|--help) sed -n '2,5s/^# \{0,1\}//p' "$0"; exit 0 ;;
    *) echo "unknown option: $1 (see --help)" >&2; exit 2 ;;
esac
install_missing "${PACKAGES_BUILD[@]}"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export CCACHE_DISABLE=1 # else the second build would be the first one's objects
for folder in "$work/a" "$work/another-folder"; do
    mkdir -p "$folder"
    git archive HEAD | tar -x -C "$folder"
    cmake --preset deb -S "$folder" >"$work/log" || { cat "$work/log" >&2; exit 1; }
    cmake --build "$folder/build/deb" >"$work/log" || { cat "$work/log" >&2; exit 1; }
    DESTDIR=$folder/installed cmake --install "$folder/build/deb" >/dev/null
done

cd "$work"
compared=0
while IFS= read -r -d '' file; do
    cmp "a/$file" "another-folder/$file"
    compared=$((compared + 1))
done < <(cd a && find installed -type f -print0)
diff <(cd a && find installed | sort) <(cd "another-folder" && find installed | sort)
[ "$compared" -gt 100 ] || { echo "only $compared files were installed" >&2; exit 1; }
echo "reproducible: $compared installed files are the same from both folders"
