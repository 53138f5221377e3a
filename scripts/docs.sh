#!/usr/bin/env bash
# Builds the documentation site: the headers, the pages of docs/ and the tour, by Doxygen. Installs what that needs.
# A warning or a dead link is an error; so is a search that finds nothing, where chromium is installed. Usage:
#   ./scripts/docs.sh              to build/docs/html; open index.html there
#   ./scripts/docs.sh FOLDER       to FOLDER/html
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh
install_missing "${PACKAGES_DOCS[@]}"
[ -z "${CI:-}" ] || install_missing chromium

VFOUNDATION_SITE=${1:-build/docs}
VFOUNDATION_VERSION=$(sed -n 's/^ *VERSION \([0-9.]*\)$/\1/p' CMakeLists.txt)
export VFOUNDATION_SITE VFOUNDATION_VERSION

mkdir -p "$VFOUNDATION_SITE"
rm -rf "$VFOUNDATION_SITE/html"
doxygen docs/Doxyfile
# A class whose only nested classes are private gets a link to a section that it does not have.
grep -L 'name="nested-classes"' "$VFOUNDATION_SITE"/html/*.html | xargs sed -i 's|<a href="#nested-classes">Classes</a> &#124;||'
python3 scripts/lib/check_site.py "$VFOUNDATION_SITE/html"
if command -v chromium >/dev/null; then
    python3 scripts/lib/check_search.py "$VFOUNDATION_SITE/html" VJobPool
fi
echo "documentation: $VFOUNDATION_SITE/html/index.html"
