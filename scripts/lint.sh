#!/usr/bin/env bash
# What the compiler of the tests does not see: layout (clang-format), clang++'s warnings as a syntax pass, headers
# that compile alone, and clang-tidy. Installs what that needs. Usage:
#   ./scripts/lint.sh            everything but clang's static analyzer
#   ./scripts/lint.sh --fast     without clang-tidy
#   ./scripts/lint.sh --deep     with the analyzer, which takes three quarters of clang-tidy's time
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh
install_missing "${PACKAGES_BUILD[@]}" "${PACKAGES_TEST[@]}" "${PACKAGES_LINT[@]}"

most_lines=600

cmake --preset dev >/dev/null
build=build/dev
mapfile -t sources < <(git ls-files 'foundation/*.cpp' 'launcher/*.cpp' 'tests/*.cpp' 'examples/*.cpp' 'tools/*.cpp')
mapfile -t headers < <(git ls-files 'foundation/*.h' 'launcher/*.h' 'tests/*.h' 'tools/*.h')

echo "clang-format: ${#sources[@]} sources, ${#headers[@]} headers"
clang-format --dry-run --Werror "${sources[@]}" "${headers[@]}"

echo "docs/oddities.md and docs/security.md name what exists"
python3 scripts/lib/check_named_tests.py

echo "one condition for each check"
python3 scripts/lib/check_tests.py

echo "rooms"
python3 scripts/lib/check_rooms.py

echo "systems"
python3 scripts/lib/check_systems.py

echo "memory orders"
python3 scripts/lib/check_orders.py

# The constructor retains what the factory's caller owns already: the object would never die.
echo "new objects are adopted: VObjectRef<T>(T::New()) leaks one, MakeObject<T>() does not"
if git grep -nE 'VObjectRef<[^;()]*>( (const )?[A-Za-z_]+)?[({] *([A-Za-z_:<>]*::New[A-Za-z]*\(|new )' \
    -- '*.h' '*.cpp' '*.md'; then
    exit 1
fi

echo "files of at most $most_lines lines"
git ls-files '*.h' '*.cpp' '*.py' '*.sh' | xargs wc -l |
    awk -v most="$most_lines" '$2 != "total" && $1 > most { print $2 " has " $1 " lines"; long = 1 } END { exit long }'

echo "headers that compile alone"
python3 scripts/lib/each_command.py --headers "$build" g++

# clang-tidy compiles what it reads, with the same warnings.
tidied='(foundation|launcher|tools)/'
if [ "${1:-}" = --fast ]; then
    echo "clang++ -fsyntax-only"
    python3 scripts/lib/each_command.py "$build" clang++ -Wthread-safety
else
    echo "clang++ -fsyntax-only: tests, examples, fuzz"
    python3 scripts/lib/each_command.py --except "$tidied" "$build" clang++ -Wthread-safety
    analyzer='--checks=-clang-analyzer-*'
    [ "${1:-}" != --deep ] || analyzer=
    echo "clang-tidy: foundation, launcher, tools"
    mkdir -p build/tidy # the same commands without what only g++ knows
    sed 's/ -fno-gnu-unique//' "$build/compile_commands.json" > build/tidy/compile_commands.json
    git ls-files 'foundation/*.cpp' 'launcher/*.cpp' 'tools/*.cpp' |
        xargs -P "$(nproc)" -n 4 clang-tidy --quiet -p build/tidy ${analyzer:+"$analyzer"} --extra-arg=-Wthread-safety \
            2> >(grep -v 'warnings generated\|warning generated\|Suppressed\|Use -header-filter' >&2)
fi
echo "lint: nothing found"
