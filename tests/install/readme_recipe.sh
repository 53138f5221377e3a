#!/usr/bin/env bash
# Runs the install recipe of the README exactly as it stands there, with a home of its own, and uses what it installed.
set -euo pipefail
cd "$(dirname "$0")/../.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

recipe=$(awk '/^### Installing the library$/ { found = 1 } found && /^```$/ { exit } inside; found && /^```sh$/ { inside = 1 }' \
    README.md)
[ -n "$recipe" ] || { echo "README.md has no recipe under 'Installing the library'" >&2; exit 1; }
as_root='sudo() { "$@"; }' # already root, where there may be no sudo
[ "$(id -u)" -eq 0 ] || as_root=:
HOME=$work DEBIAN_FRONTEND=noninteractive bash -euo pipefail -c "$as_root
$recipe"
tests/install/check_prefix.sh "$work/vfoundation" "$work/use" "${CXX:-c++}" static
