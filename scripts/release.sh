#!/usr/bin/env bash
# Checks that the tree is fit for a release, and makes its source archive with a checksum in build/. Usage:
#   ./scripts/release.sh             everything that CI does, and the builds that only a release needs
#   ./scripts/release.sh --check     only look whether version, changelog and tree agree
# Nothing is tagged or published: the last lines say how.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh

version=$(sed -n 's/^    VERSION \([0-9.]*\)$/\1/p' CMakeLists.txt)
[ -n "$version" ] || { echo "CMakeLists.txt names no version" >&2; exit 1; }
grep -q "^## \[$version\]" CHANGELOG.md || { echo "CHANGELOG.md has no section for $version" >&2; exit 1; }
case "${1:-}" in
    --check)
        echo "version $version: CHANGELOG.md has its section"
        exit 0 ;;
    "") ;;
    -h|--help) sed -n '2,5s/^# \{0,1\}//p' "$0"; exit 0 ;;
    *) echo "unknown option: $1 (see --help)" >&2; exit 2 ;;
esac
grep -q "^## \[$version\] - [0-9]" CHANGELOG.md || {
    echo "CHANGELOG.md gives $version no date yet" >&2
    exit 1
}
[ -z "$(git status --porcelain)" ] || { echo "the tree has uncommitted changes" >&2; exit 1; }

.ci/run
./scripts/lint.sh --deep
./scripts/test.sh --preset bench
./scripts/cross.sh arm64
tests/install/packages_test.sh
tests/install/packages_test.sh --bare
./scripts/reproducible.sh

# other_build NAME OPTION...: the dev build with other options, and its tests.
other_build() {
    local build=build/release-$1
    shift
    cmake --preset dev -B "$build" "$@"
    cmake --build "$build"
    ctest --test-dir "$build" --output-on-failure --no-tests=error -j "$(nproc)"
}
install_missing "${PACKAGES_LINT[@]}"
other_build clang -DCMAKE_CXX_COMPILER=clang++
other_build unsigned-char -DCMAKE_CXX_FLAGS="-D_GLIBCXX_ASSERTIONS -funsigned-char"
python3 scripts/lib/each_command.py build/dev g++ -std=c++23

archive=build/vfoundation-$version.tar.gz
git archive --prefix="vfoundation-$version/" -o "$archive" HEAD
(cd build && sha256sum "${archive#build/}" >"${archive#build/}.sha256")
echo "made $archive; to release it: git tag -a v$version -m 'VFoundation $version' && git push origin v$version"
