#!/usr/bin/env bash
# Builds the bench preset and runs the benchmarks, every subject beside its peers. Usage:
#   ./scripts/bench.sh [NAME...]                 for example: ./scripts/bench.sh Object VString
#   ./scripts/bench.sh --build                   only build them, and check that the report finds its benchmarks
#   ./scripts/bench.sh --report [AREA...]        write the tables of docs/performance.md and their pictures
#   ./scripts/bench.sh --compare REV [AREA...]   build another revision too and print the ratios
# BENCH_ARGS is passed to every program, for example --benchmark_min_time=0.1
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh
install_missing "${PACKAGES_BUILD[@]}" "${PACKAGES_TEST[@]}" "${PACKAGES_BENCHMARK[@]}"

action=run
case "${1:-}" in
    --build | --report) action=${1#--} && shift ;;
    --compare)
        [ $# -ge 2 ] || { echo "usage: $0 --compare REV [AREA...]" >&2; exit 2; }
        action=compare other=$(git rev-parse --verify "$2^{commit}") && shift 2 ;;
    -*) sed -n '2,7s/^# \?//p' "$0" >&2; exit 2 ;;
esac

cmake --preset bench >/dev/null
cmake --build --preset bench --target benchmarks
case $action in
    build) python3 scripts/lib/bench_report.py check build/bench ;;
    report) python3 scripts/lib/bench_report.py report build/bench "$@" ;;
    compare)
        tree=build/compare/$other
        [ -d "$tree" ] || git worktree add --detach "$tree" "$other"
        (cd "$tree" && cmake --preset bench -DVFOUNDATION_BUILD_TESTS=OFF >/dev/null && cmake --build --preset bench)
        python3 scripts/lib/bench_report.py compare build/bench "$tree/build/bench" "$@" ;;
    run)
        programs=(build/bench/benchmarks/bench_*)
        [ $# -eq 0 ] || programs=("${@/#/build/bench/benchmarks/bench_}")
        for program in "${programs[@]}"; do
            echo "== ${program##*/bench_}"
            # shellcheck disable=SC2086
            "$program" ${BENCH_ARGS:-}
        done ;;
esac
