#!/usr/bin/env bash
# Builds the bench preset and runs the benchmarks, every subject beside its peers. Usage:
#   ./scripts/bench.sh [name...]       for example: ./scripts/bench.sh Object VString
#   ./scripts/bench.sh --build         only build them
# BENCH_ARGS is passed to every program, for example --benchmark_min_time=0.1
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh
install_missing "${PACKAGES_BUILD[@]}" "${PACKAGES_TEST[@]}" "${PACKAGES_BENCHMARK[@]}"

cmake --preset bench >/dev/null
cmake --build --preset bench
[ "${1:-}" = --build ] && exit 0
programs=(build/bench/benchmarks/bench_*)
if [ $# -gt 0 ]; then
    programs=("${@/#/build/bench/benchmarks/bench_}")
fi
for program in "${programs[@]}"; do
    echo "== ${program##*/bench_}"
    # shellcheck disable=SC2086
    "$program" ${BENCH_ARGS:-}
done
