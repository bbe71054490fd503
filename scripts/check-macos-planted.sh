#!/usr/bin/env bash
# Checks scripts/check-macos.sh itself: plants errors one by one into a copy and shows that each is reported.
# Usage: scripts/check-macos-planted.sh [--quick | --tests | --only WORDS]   (--quick: a few of them, without building the
# whole copy; --tests: only those that compile, which the tests over the stand-ins must see; --only: those whose names
# match a regular expression)
set -euo pipefail
if [ "$(uname -s)" = Darwin ]; then
  echo "Not needed here: a Mac builds its own sources."
  exit 0
fi
exec "$(dirname "$0")/../tools/macos-check/planted.py" "$@"
