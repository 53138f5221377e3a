#!/bin/sh
# Every text of the dialogs is there in every language, and names the same places. usage: catalogues_test.sh <launcher>
set -eu
cd "$1"
command -v msgcmp >/dev/null || { echo "gettext is missing"; [ "${CI:-}" = true ] && exit 1; exit 77; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
xgettext --keyword=Translated --from-code=UTF-8 --package-name=x --output="$work/texts.pot" linux/*.cpp linux/dialog/*.cpp
grep -q '^msgid "_Cancel"$' "$work/texts.pot"
for catalogue in po/*.po; do
    msgcmp "$catalogue" "$work/texts.pot"
    msgattrib --translated --no-wrap "$catalogue" | python3 -c '
import re, sys
for entry in sys.stdin.read().split("\n\n")[1:]:
    text, translation = entry.split("\nmsgstr ")
    for pattern in (r"\{\w+\}", "_"):
        assert sorted(re.findall(pattern, text)) == sorted(re.findall(pattern, translation)), entry'
done
