#!/usr/bin/env bash
# Runs the allocation sweep without its samples: every single allocation fails once, alone and with all later ones.
# Takes several minutes. Usage: ./scripts/sweep.sh [GoogleTest filter]
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset dev >/dev/null
cmake --build --preset dev --target test_allocation
VFOUNDATION_FULL_SWEEP=1 build/dev/tests/lifecycle/test_allocation --gtest_filter="${1:-*}"
