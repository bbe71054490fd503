#!/usr/bin/env bash
# Measures Vellmoor's window against an empty QML window of the same size, on a virtual display, in one run: time to the
# first frame and until the window is complete, smoothness of lists of 10,000 rows, memory after a Smart Scan, and what
# the window costs while nothing happens.
#   bench/compare-window.sh [--default-renderer]
# Both are drawn by Qt Quick's software renderer; with --default-renderer each chooses its own.
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=scripts/common.sh
. scripts/common.sh

rounds=15
idle_seconds=10
vellmoor=build/release/src/app/vellmoor
empty=build/release/bench/empty_window/empty_window

# The rest runs again with a display, a session bus and a home of its own.
if [ "${1:-}" != --inside ]; then
  mkdir -p build
  [ -n "${VELLMOOR_BENCH_BUILT:-}" ] || build_preset release vellmoor empty_window first_frame scroll_bench list_bench memory_bench >&2
  home=$(mktemp -d "${TMPDIR:-/tmp}/vellmoor-bench.XXXXXX")
  trap 'chmod -R u+rwX "$home"; rm -rf "$home"' EXIT
  scripts/make-demo-home.sh "$home" >/dev/null
  [ "${1:-}" = --default-renderer ] || export QT_QUICK_BACKEND=software
  env -u XDG_CONFIG_HOME -u XDG_CACHE_HOME -u XDG_DATA_HOME -u XDG_STATE_HOME HOME="$home" QT_QPA_PLATFORM=xcb \
    dbus-run-session -- xvfb-run -a -s "-screen 0 1600x1000x24 -noreset" "$0" --inside 2>/dev/null
  exit
fi

# The id of the program's window, once there is one.
window_of() { timeout 30 xdotool search --sync --onlyvisible --pid "$1" --name . | head -1; }
# Processor time of a process so far, in ticks.
ticks_of() { awk '{ print $14 + $15 }' "/proc/$1/stat"; }
memory_of() { awk '/^VmRSS/ { printf "%.1f", $2 / 1024 }' "/proc/$1/status"; }

# Waits until the process has used no processor time for a second.
settle() {
  local before after=-1 i
  for ((i = 0; i < 60; i++)); do
    before=$after
    sleep 1
    after=$(ticks_of "$1")
    [ "$after" = "$before" ] && return
  done
  return 1
}

# show PROGRAM [KEY]: starts it, presses the key in its window, and says its memory and what it then costs when idle.
show() {
  local program=$1 key=${2:-} pid window before
  "$program" &
  pid=$!
  window=$(window_of "$pid")
  settle "$pid"
  if [ -n "$key" ]; then
    xdotool windowfocus --sync "$window" key "$key"
    settle "$pid"
  fi
  before=$(ticks_of "$pid")
  sleep "$idle_seconds"
  echo "$(memory_of "$pid") $(($(ticks_of "$pid") - before))"
  kill "$pid"
  wait "$pid" || true
}

build/release/bench/first_frame $rounds Vellmoor $vellmoor -- "empty QML window" $empty
echo
build/release/bench/scroll_bench
echo
build/release/bench/list_bench
echo
read -r empty_memory empty_ticks < <(show $empty)
read -r memory ticks < <(show $vellmoor F5)
cat <<TABLE
| When nothing happens | Resident MiB | Ticks of processor time in $idle_seconds s |
|---|---:|---:|
| Vellmoor after a Smart Scan | $memory | $ticks |
| empty QML window | $empty_memory | $empty_ticks |
TABLE
echo
many=$(mktemp -d "$HOME/many.XXXXXX")
build/release/bench/memory_bench "$many" 20000
if [ -n "${VELLMOOR_BENCH_FIGURES:-}" ]; then
  awk -v ours="$memory" -v empty="$empty_memory" 'BEGIN { printf "resident after a Smart Scan,%.1f,0\n", ours - empty }' \
    >>"$VELLMOOR_BENCH_FIGURES"
fi
