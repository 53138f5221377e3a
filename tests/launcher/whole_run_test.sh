#!/bin/sh
# Runs the real launcher as root and compares what it writes with the golden text; looks at what it links.
# usage: whole_run_test.sh <launcher> <folder of the golden files>
set -eu
launcher=$1
golden=$2
folder=${launcher%/*/*/*/*}

linked=$(readelf -d "$launcher" | grep NEEDED)
echo "$linked" | grep -q 'libc\.so' || { echo "cannot read what the launcher links"; exit 1; }
if echo "$linked" | grep -E 'gtk|gdk|glib|gobject|gio|polkit|X11|wayland'; then
    echo "the launcher must load no toolkit"
    exit 1
fi

[ "$(id -u)" -eq 0 ] || { echo "the rest needs root: another user would be asked for a password"; exit 77; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# The guide takes the place of standard output for good; a wait for its last line keeps the two apart.
status=0
"$launcher" >"$work/out" 2>"$work/err" || status=$?
[ "$status" -eq 0 ] || { echo "exit status $status"; cat "$work/err"; exit 1; }
tries=0
until grep -q '^ZephGuide: done$' "$work/out"; do
    tries=$((tries + 1))
    [ "$tries" -lt 600 ] || { echo "the guide did not run"; exit 1; }
    sleep 0.1
done
grep -v '^ZephGuide' "$work/out" >"$work/stdout"
# Counts, sizes and times after the last step vary with the build; a number takes the blanks before it along.
sed -E "s|$folder|@|g; s|^Uname = .*|Uname = USER|; /UninitializeLibrary - START/,\$ s/ *[0-9]+(\.[0-9]+)?/ #/g" \
    "$work/err" >"$work/stderr"
diff -u "$golden/whole_run.stdout" "$work/stdout"
diff -u "$golden/whole_run.stderr" "$work/stderr"
