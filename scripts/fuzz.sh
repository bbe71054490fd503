#!/usr/bin/env bash
# Fuzzes the readers of what tools print and of what /proc holds (tests/fuzz) with libFuzzer.
# Usage: scripts/fuzz.sh [--runs N | --seconds S] [--build DIR] [TARGET...]
#   --runs N      N inputs for each target, always the same ones
#   --seconds S   S seconds for each target (60), going on from what earlier calls found
#   TARGET        VmStat, Ps, Proc; all of them by default
# Exits with 77, saying why, where there is no clang with libFuzzer.
set -euo pipefail
cd "$(dirname "$0")/.."

limit=(-max_total_time=60)
build=build/fuzz
repeatable=no
targets=()
while [ $# -gt 0 ]; do
  case $1 in
    --runs) limit=("-runs=$2" -seed=1); repeatable=yes; shift 2 ;;
    --seconds) limit=("-max_total_time=$2"); shift 2 ;;
    --build) build=$2; shift 2 ;;
    -*) echo "usage: scripts/fuzz.sh [--runs N | --seconds S] [--build DIR] [TARGET...]" >&2; exit 2 ;;
    *) targets+=("$1"); shift ;;
  esac
done
[ "${#targets[@]}" -gt 0 ] || targets=(VmStat Ps Proc)
mkdir -p "$build"

# The first clang that can link a fuzzer: the run-time library is a package of its own.
flags=(-std=c++2b -g -O1 -Wall -Wextra "-fsanitize=fuzzer,address,undefined" -fno-sanitize-recover=all)
compiler=
for candidate in clang++-19 clang++; do
  if command -v "$candidate" >/dev/null \
    && echo 'extern "C" int LLVMFuzzerTestOneInput(const unsigned char*, unsigned long) { return 0; }' \
    | "$candidate" "${flags[@]}" -x c++ - -o "$build/probe" 2>/dev/null; then
    compiler=$candidate
    break
  fi
done
if [ -z "$compiler" ]; then
  echo "Skipped: no clang++-19 (or clang++) with libFuzzer here; scripts/setup.sh installs it."
  exit 77
fi

readers=(src/engine/MemoryText.cpp src/engine/ControlGroups.cpp)
for target in "${targets[@]}"; do
  source=tests/fuzz/${target}Fuzz.cpp
  program=$build/$target
  if [ ! -x "$program" ] || [ -n "$(find "$source" tests/fuzz/Fuzz.h "${readers[@]}" "${readers[@]/%.cpp/.h}" \
    -newer "$program" -print -quit)" ]; then
    "$compiler" "${flags[@]}" -Isrc/engine "$source" "${readers[@]}" -o "$program"
  fi
  found=$build/found-$target
  [ "$repeatable" = yes ] && rm -rf "$found"
  mkdir -p "$found"
  echo "== $target ($compiler)"
  "$program" "${limit[@]}" -max_len=4096 -print_final_stats=1 -verbosity=0 -artifact_prefix="$build/$target-" \
    "$found" "tests/fuzz/seeds/$target" >"$build/$target.log" 2>&1 || { cat "$build/$target.log" >&2; exit 1; }
  grep number_of_executed_units "$build/$target.log"
done
