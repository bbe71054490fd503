#!/usr/bin/env bash
# Format of C++ (clang-format), QML (qmlformat) and shell (shellcheck). --fix rewrites C++ and QML.
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=scripts/common.sh
. scripts/common.sh
export LC_ALL=C.UTF-8 # Qt's tool writes a line about any other

fix=no
[ "${1:-}" = --fix ] && fix=yes
clang_format=$(command -v clang-format-19 || command -v clang-format)
qmlformat=$(command -v qmlformat6 || { [ -x /usr/lib/qt6/bin/qmlformat ] && echo /usr/lib/qt6/bin/qmlformat; } || command -v qmlformat)

mapfile -t sources < <(git ls-files -co --exclude-standard '*.cpp' '*.h' '*.mm')
mapfile -t qml < <(git ls-files -co --exclude-standard '*.qml')
mapfile -t shell < <(git ls-files -co --exclude-standard '*.sh' .ci/run)
failed=no

if [ "${#sources[@]}" -gt 0 ]; then
  if [ "$fix" = yes ]; then
    "$clang_format" -i "${sources[@]}"
  else
    "$clang_format" --dry-run -Werror "${sources[@]}" || failed=yes
  fi
fi

if ! is_of_qml_release "$qmlformat"; then
  say "The form of QML is checked with Qt $qml_release, not with $("$qmlformat" --version)."
  qml=()
fi
for file in "${qml[@]}"; do
  if [ "$fix" = yes ]; then
    "$qmlformat" -i "$file"
    rm -f "$file~"
  elif ! "$qmlformat" "$file" | cmp -s - "$file"; then
    echo "$file: not as qmlformat writes it (scripts/check-format.sh --fix)" >&2
    failed=yes
  fi
done

shellcheck -x "${shell[@]}" || failed=yes
[ "$failed" = no ]
