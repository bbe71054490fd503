#!/usr/bin/env bash
# clang-tidy and qmllint over the dev build. Usage: scripts/lint.sh [changed|all]
# "changed": the sources that differ from the commit before, which keeps the gate quick; "all": every source.
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=scripts/common.sh
. scripts/common.sh

mode=${1:-changed}
clang_tidy=$(command -v clang-tidy-19 || command -v clang-tidy)

if [ "$mode" = all ]; then
  mapfile -t sources < <(git ls-files 'src/*.cpp' 'tools/*.cpp')
else
  base=$(git rev-parse HEAD~1 2>/dev/null || git rev-parse HEAD)
  mapfile -t sources < <({ git diff --name-only --diff-filter=d "$base" -- 'src/*.cpp' 'tools/*.cpp'
    git ls-files -o --exclude-standard 'src/*.cpp' 'tools/*.cpp'; } | sort -u)
fi

# What only a Mac compiles has no compile command here; scripts/check-macos.sh looks at it.
compiled=$(grep -oE '"file": "[^"]+"' build/dev/compile_commands.json)
here=()
for source in "${sources[@]}"; do
  if grep -qF "\"$PWD/$source\"" <<<"$compiled"; then
    here+=("$source")
  fi
done
sources=("${here[@]}")

if [ "${#sources[@]}" -gt 0 ]; then
  printf '%s\n' "${sources[@]}" \
    | xargs -P 2 -n 4 "$clang_tidy" -p build/dev --quiet --extra-arg=-Wno-unknown-warning-option --warnings-as-errors='*' 2>build/clang-tidy.log \
    || { cat build/clang-tidy.log >&2; exit 1; }
fi

qmllint=$(command -v qmllint6 || { [ -x /usr/lib/qt6/bin/qmllint ] && echo /usr/lib/qt6/bin/qmllint; } || command -v qmllint)
if ! is_of_qml_release "$qmllint"; then
  say "QML is checked with Qt $qml_release, not with $("$qmllint" --version)."
elif grep -q all_qmllint build/dev/build.ninja 2>/dev/null; then
  cmake --build build/dev --target all_qmllint >build/qmllint.log 2>&1 || { cat build/qmllint.log >&2; exit 1; }
  if grep -q '^Warning:' build/qmllint.log; then
    cat build/qmllint.log >&2
    exit 1
  fi
fi
