#!/usr/bin/env bash
# Measures everything that the README says about speed and writes it there, between its two marks; adds the ratios to
# bench/history.csv. To be run on a machine that does nothing else. --dry prints and changes no file.
#   bench/all.sh [--dry]
set -euo pipefail
cd "$(dirname "$0")/.."

dry=no
[ "${1:-}" = --dry ] && dry=yes
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export VELLMOOR_BENCH_RATIOS=$work/ratios
: >"$VELLMOOR_BENCH_RATIOS"

{
  # shellcheck disable=SC2016 # the backquotes are Markdown's
  printf 'Measured by `bench/all.sh` at ordinary priority, each pair in turn: the median of 11 or more paired ratios, with half the width of\n'
  printf 'their middle half. %s processors, Linux %s.\n' "$(nproc)" "$(uname -r | cut -d- -f1)"
  printf '\n#### The walk under every scan\n\n'
  bench/compare.sh | sed "s|^/[^:]*: ||"
  printf '#### A whole Smart Scan\n\n'
  bench/compare-scan.sh
  printf '\n#### The window, on a virtual display with the software renderer\n\n'
  bench/compare-window.sh
} >"$work/tables"

if [ "$dry" = yes ]; then
  cat "$work/tables"
  exit
fi
awk -v tables="$work/tables" '
  /^<!-- measured: begin -->$/ { print; print ""; while ((getline line < tables) > 0) print line; print ""; skip = 1 }
  /^<!-- measured: end -->$/ { skip = 0 }
  !skip { if (!/^<!-- measured: begin -->$/) print }' README.md >"$work/readme"
cat "$work/readme" >README.md
[ -e bench/history.csv ] || echo "commit,what,median,spread" >bench/history.csv
sed "s/^/$(git rev-parse --short HEAD),/" "$work/ratios" >>bench/history.csv
