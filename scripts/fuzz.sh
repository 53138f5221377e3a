#!/usr/bin/env bash
# Builds the fuzz targets with clang's fuzzer and runs each for a while. Installs what that needs. Usage:
#   ./scripts/fuzz.sh                      every target, 60 s each
#   ./scripts/fuzz.sh 600                  every target, 600 s each
#   ./scripts/fuzz.sh 60 targa text        these targets
# Inputs that reach new code are kept in build/fuzz/corpus/<target>, inputs that fail in build/fuzz/findings/<target>.
# Ends with 1 when something was found. A finding is run again with build/fuzz/fuzz/fuzz_<target> FILE; once mended,
# its input goes to fuzz/corpus/<target>, which the tests run.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh

case "${1:-}" in -h|--help) sed -n '2,9s/^# \{0,1\}//p' "$0"; exit 0 ;; esac
seconds=${1:-60}
[[ "$seconds" =~ ^[0-9]+$ ]] || { echo "not a number of seconds: $seconds (see --help)" >&2; exit 2; }
shift $(($# > 0))
install_missing "${PACKAGES_BUILD[@]}" "${PACKAGES_LINT[@]}" libclang-rt-14-dev

targets=("$@")
cmake --preset fuzz
cmake --build --preset fuzz ${targets:+--target "${targets[@]/#/fuzz_}"}
if [ ${#targets[@]} -eq 0 ]; then
    for program in build/fuzz/fuzz/fuzz_*; do
        [ -x "$program" ] && targets+=("${program##*/fuzz_}")
    done
fi

export ASAN_OPTIONS=detect_leaks=1:allocator_may_return_null=1
export UBSAN_OPTIONS=print_stacktrace=1
failed=()
for target in "${targets[@]}"; do
    corpus=build/fuzz/corpus/$target
    findings=build/fuzz/findings/$target
    mkdir -p "$corpus" "$findings"
    echo "== $target, $seconds s"
    # What the library says about bad input goes nowhere (-close_fd_mask).
    if ! build/fuzz/fuzz/"fuzz_$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -close_fd_mask=2 \
        -artifact_prefix="$findings/" -print_final_stats=1 "$corpus" "fuzz/corpus/$target" \
        >"$findings/log" 2>&1; then
        failed+=("$target")
        tail -n 60 "$findings/log"
    fi
    grep -E 'number_of_executed_units|peak_rss' "$findings/log" || true
done
if [ ${#failed[@]} -gt 0 ]; then
    echo "fuzz: found something in: ${failed[*]} (inputs in build/fuzz/findings)" >&2
    exit 1
fi
echo "fuzz: nothing found"
