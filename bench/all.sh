#!/usr/bin/env bash
# Measures everything that the README says about speed and writes it there, between its two marks; adds the ratios to
# bench/history.csv. To be run on a machine that does nothing else; takes about half an hour (a clean of 20,000 folders is
# done 22 times, and as often by the loop beside it), as root with a cold cache, too.
#   bench/all.sh [--dry]     --dry prints and changes no file
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=scripts/common.sh
. scripts/common.sh

dry=no
[ "${1:-}" = --dry ] && dry=yes
mkdir -p build
work=$(mktemp -d "$PWD/build/bench-XXXXXX")
finish() {
  if [ "$1" -eq 0 ]; then
    rm -rf "$work"
  else
    say "What was measured before it failed: $work"
  fi
}
trap 'finish $?' EXIT
export VELLMOOR_BENCH_FIGURES=$work/figures
export VELLMOOR_BENCH_BUILD=build/release
: >"$VELLMOOR_BENCH_FIGURES"

build_preset release vellmoor vellmoor-probe empty_window first_frame scroll_bench list_bench memory_bench walk_bench \
  bare_walk make_tree run_interleaved scan_bench move_bench >&2
export VELLMOOR_BENCH_BUILT=yes # half an hour later the sources may be others

{
  printf '#### The walk under every scan\n\n'
  bench/compare.sh --million | sed "s|^/[^:]*: ||"
  printf '#### A whole Smart Scan\n\n'
  bench/compare-scan.sh
  printf '\n#### A clean\n\n'
  printf '| Work | Engine, median ms | Bare loop, median ms | Engine / bare loop |\n|---|---:|---:|---:|\n'
  build/release/bench/move_bench "$work"
  build/release/bench/move_bench "$work" --empty
  printf '\n#### The window, on a virtual display with the software renderer\n\n'
  bench/compare-window.sh
} >"$work/tables"

{
  # shellcheck disable=SC2016 # the backquotes are Markdown's
  printf 'Measured by `bench/all.sh` at ordinary priority, each pair in turn: the median of 11 or more, with half the width of\n'
  printf 'their middle half. %s processors, Linux %s. The goals first, then the tables behind them.\n\n' "$(nproc)" \
    "$(uname -r | cut -d- -f1)"
  bench/goals.py "$work/figures"
  printf '\n'
  cat "$work/tables"
} >"$work/whole"

if [ "$dry" = yes ]; then
  cat "$work/whole"
  exit
fi
awk -v tables="$work/whole" '
  /^<!-- measured: begin -->$/ { print; print ""; while ((getline line < tables) > 0) print line; print ""; skip = 1 }
  /^<!-- measured: end -->$/ { skip = 0 }
  !skip { if (!/^<!-- measured: begin -->$/) print }' README.md >"$work/readme"
cat "$work/readme" >README.md
[ -e bench/history.csv ] || echo "commit,what,median,spread" >bench/history.csv
grep -vE ' (ms|MiB),|^resident |,noisy,' "$work/figures" | grep ' / ' | sed "s/^/$(git rev-parse --short HEAD),/" >>bench/history.csv
