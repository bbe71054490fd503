#!/usr/bin/env bash
# Checks with real programs (tests/real): file managers' Trash tools, browsers on profiles that they made themselves,
# Flatpak, systemd's generator, applications on a display. Each runs in a throw-away home. Not part of the gate.
# Usage: scripts/real.sh [NAME...]   names as the files of tests/real are called; all of them by default
# Says what ran, what was passed over and why; the whole output lies in build/real. Exits with 1 when a check failed.
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=scripts/common.sh
. scripts/common.sh

mkdir -p build/real
preset=${VELLMOOR_PRESET:-release}
build_preset "$preset" vellmoor-probe memory_tool
export VELLMOOR_PROBE=$PWD/build/$preset/tools/probe/vellmoor-probe

# What a check is called with.
arguments_of() {
  case $1 in
    browsers.py) echo "$VELLMOOR_PROBE" ;;
    memory_test.py) echo "$PWD/build/$preset/tests/real/memory_tool" ;;
  esac
}

# The checks: what can be started, but for what the checks share.
checks=()
for file in tests/real/*; do
  if [ -x "$file" ] && [ -f "$file" ]; then
    checks+=("$(basename "$file")")
  fi
done
[ $# -eq 0 ] || checks=("$@")

failed=0 passed=0 skipped=0
for check in "${checks[@]}"; do
  log=build/real/$check.log
  read -r -a arguments <<<"$(arguments_of "$check")"
  status=0
  "tests/real/$check" ${arguments[@]+"${arguments[@]}"} >"$log" 2>&1 || status=$?
  case $status in
    0) echo "ok           $check: $(grep -c '^ *ok ' "$log" || true) observations"; passed=$((passed + 1)) ;;
    77) echo "passed over  $check: $(tail -n 1 "$log")"; skipped=$((skipped + 1)) ;;
    *) echo "FAILED       $check (status $status); the end of $log:"; tail -n 15 "$log" | sed 's/^/    /'; failed=$((failed + 1)) ;;
  esac
  grep -h 'passed over' "$log" | sed "s/^/    $check: /" || true
done
echo "$passed ok, $failed failed, $skipped passed over"
[ "$failed" = 0 ]
