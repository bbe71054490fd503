#!/usr/bin/env bash
# Installs what is missing, checks format and lint, builds with the sanitizers and runs every test.
# On a Mac it builds and tests: how the sources have to look is decided by the tools of the Linux gate.
# Usage: scripts/test.sh [--tsan] [--all-tidy]
#   --tsan      afterwards also build with the thread sanitizer and run the walk, engine, model and store tests
#   --all-tidy  clang-tidy over every source, not only over those that differ from the commit before
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=scripts/common.sh
. scripts/common.sh

tsan=no
tidy=changed
for argument in "$@"; do
  case $argument in
    --tsan) tsan=yes ;;
    --all-tidy) tidy=all ;;
    *) echo "usage: scripts/test.sh [--tsan] [--all-tidy]" >&2; exit 2 ;;
  esac
done

phase() { printf '== %s\n' "$*"; }

phase "Packages"
scripts/setup.sh
mkdir -p build

if ! is_mac; then
  phase "Format and scripts"
  scripts/check-format.sh
fi

phase "Build"
build_preset dev

if ! is_mac; then
  phase "Lint"
  scripts/lint.sh "$tidy"

  phase "What a Mac builds"
  scripts/check-macos.sh
  scripts/check-macos-planted.sh --quick
fi

phase "Tests"
export UBSAN_OPTIONS=print_stacktrace=1
if [ "$tsan" = yes ]; then
  build_preset tsan walk_tests walk_darwin_tests model_tests engine_tests store_tests
  for program in walk/walk walk/walk_darwin model/model engine/engine store/store; do
    "build/tsan/tests/${program}_tests" --gtest_brief=1
  done
fi
status=0
# ext4 looks long for a free inode after many files were deleted, which is what tests do all the time.
with_files_in_memory ctest --preset dev -j $((2 * $(processors))) || status=$?
scripts/count-tests.py build/dev || status=1
exit "$status"
