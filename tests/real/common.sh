# What the checks with real programs share. Each runs in a throw-away home and says what it saw.
# shellcheck shell=bash
set -euo pipefail

real_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
probe=${VELLMOOR_PROBE:-$real_root/build/dev/tools/probe/vellmoor-probe}
work=$(mktemp -d "${TMPDIR:-/tmp}/vellmoor-real.XXXXXX")
trap 'rm -rf "$work"' EXIT
failures=0

# A home of its own; nothing of the user's session is seen from here.
mkdir -p "$work/home" "$work/run" "$work/elsewhere"
chmod 700 "$work/run"
export HOME=$work/home
unset DBUS_SESSION_BUS_ADDRESS XDG_CONFIG_HOME XDG_CACHE_HOME XDG_DATA_HOME XDG_STATE_HOME
export XDG_RUNTIME_DIR=$work/run

# The probe on that home; it changes nothing in what it takes for the user's own.
vellmoor() { HOME=$work/elsewhere "$probe" --home "$work/home" "$@"; }

# need PROGRAM...: ends, and says so, where one is missing.
need() {
  for program in "$@"; do
    if ! command -v "$program" > /dev/null && [ ! -x "$program" ]; then
      echo "passed over: $program is not here"
      exit 77
    fi
  done
}

# check WHAT COMMAND...: whether the command succeeds.
check() {
  local what=$1
  shift
  if "$@"; then
    echo "ok    $what"
  else
    echo "FAIL  $what"
    failures=$((failures + 1))
  fi
}

# same WHAT EXPECTED SEEN
same() {
  check "$1" test "$2" = "$3"
  if [ "$2" != "$3" ]; then
    printf 'expected:\n%s\nseen:\n%s\n' "$2" "$3"
  fi
}

finish() {
  echo "$failures failures"
  test "$failures" = 0
}
