#!/usr/bin/env bash
# Fuzzes the readers of what tools print, of what kernels tell and of configuration files (tests/fuzz) with libFuzzer.
# Usage: scripts/fuzz.sh [--runs N | --seconds S] [--build DIR] [TARGET...]
#   --runs N      N inputs for each target, always the same ones
#   --seconds S   S seconds for each target (60), going on from what earlier calls found
#   TARGET        VmStat, Ps, Proc, Exec, DesktopEntry, LaunchAgent, AttributeRecord; all of them by default
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
[ "${#targets[@]}" -gt 0 ] || targets=(VmStat Ps Proc Exec DesktopEntry LaunchAgent AttributeRecord)
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

include=(-Isrc/model -Isrc/platform -Isrc/platform/linux -Isrc/engine -Itests/support/stand_in
  -Isrc/walk -Isrc/walk/macos -isystem tests/support/darwin/types)
for target in "${targets[@]}"; do
  source=tests/fuzz/${target}Fuzz.cpp
  program=$build/$target
  packages=()
  case $target in
    Exec) readers=(src/engine/desktop/ExecLine.cpp) ;;
    DesktopEntry)
      readers=(src/engine/desktop/{ExecLine,DesktopEntries}.cpp src/model/FileIdentity.cpp src/model/texts/{L,EnglishTable,FurtherTexts}.cpp
        src/platform/Platform.cpp src/platform/disk/{Paths,PosixFiles}.cpp src/platform/linux/KeyFiles.cpp src/platform/linux/disk/{Files,OpenFolders,Rename}.cpp)
      packages=(glib-2.0) ;;
    LaunchAgent)
      readers=(tests/support/stand_in/linux/PropertyLists.cpp src/model/FileIdentity.cpp src/platform/{Platform,PropertyValue}.cpp src/platform/disk/{Paths,PosixFiles}.cpp src/platform/linux/disk/{Files,OpenFolders,Rename}.cpp)
      packages=(libplist-2.0) ;;
    AttributeRecord) readers=(src/walk/macos/AttributeRecord.cpp) ;;
    *) readers=(src/engine/processes/MemoryText.cpp src/engine/processes/ControlGroups.cpp src/platform/ProcessLine.cpp) ;;
  esac
  headers=()
  for reader in "${readers[@]}"; do
    [ ! -e "${reader%.cpp}.h" ] || headers+=("${reader%.cpp}.h")
  done
  if [ ! -x "$program" ] \
    || [ -n "$(find "$source" tests/fuzz/Fuzz.h "${readers[@]}" "${headers[@]}" -newer "$program" -print -quit)" ]; then
    compile=() link=()
    if [ "${#packages[@]}" -gt 0 ]; then
      read -ra compile < <(pkg-config --cflags "${packages[@]}")
      read -ra link < <(pkg-config --libs "${packages[@]}")
    fi
    "$compiler" "${flags[@]}" "${include[@]}" "${compile[@]}" "$source" "${readers[@]}" "${link[@]}" -o "$program"
  fi
  found=$build/found-$target
  [ "$repeatable" = yes ] && rm -rf "$found"
  mkdir -p "$found"
  echo "== $target ($compiler)"
  "$program" "${limit[@]}" -max_len=4096 -print_final_stats=1 -verbosity=0 -artifact_prefix="$build/$target-" \
    "$found" "tests/fuzz/seeds/$target" >"$build/$target.log" 2>&1 || { cat "$build/$target.log" >&2; exit 1; }
  grep number_of_executed_units "$build/$target.log"
done
