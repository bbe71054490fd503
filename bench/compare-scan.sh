#!/usr/bin/env bash
# Measures a Smart Scan of a home of 300,000 files against one bare walk of every folder that it must look into, and
# against bleachbit's preview of the cleaners that look at the same things, where it is installed; warm cache, at
# ordinary priority, pair by pair in turn: the median of 11 paired ratios with its spread.
#   bench/compare-scan.sh [--regenerate]
# The home is made once, in build/bench or in the folder of $VELLMOOR_BENCH_TREES.
set -euo pipefail
cd "$(dirname "$0")/.."
build=${VELLMOOR_BENCH_BUILD:-build/bench}
trees=${VELLMOOR_BENCH_TREES:-build/bench/trees}
home=$trees/home

[ -n "${VELLMOOR_BENCH_BUILT:-}" ] || {
  [ -e "$build/build.ninja" ] || cmake --preset release -B "$build" -DVELLMOOR_BUILD_WINDOW=OFF -DBUILD_TESTING=OFF
  cmake --build "$build" --target scan_bench bare_walk make_tree run_interleaved
} >&2

# The demo home has every kind of content; trees of small files make it as large as a busy home.
make_home() {
  echo "making a home of 300,000 files in $home" >&2
  rm -rf "$home" "$home.made"
  scripts/make-demo-home.sh "$home"
  local tree
  for tree in .cache/thumbnails/many .cache/browser-like/cache .npm/_cacache/many .cargo/registry/src/many \
    Documents/project Downloads/unpacked .local/share/Trash/files/old-project Pictures/photos \
    .config/google-chrome/Default/IndexedDB/many .local/opt/blender/lib/many; do
    mkdir -p "$(dirname "$home/$tree")"
    "$build/bench/make_tree" "$home/$tree" 30000 300
  done
  touch "$home.made"
}

if [ "${1:-}" = --regenerate ] || [ ! -e "$home.made" ]; then
  make_home
fi
home=$(cd "$home" && pwd)

mapfile -t folders < <("$build/bench/scan_bench" "$home" --folders)
echo "$(find "$home" -type f | wc -l) files in the home; $(nproc) processors, $(df --output=fstype "$home" | tail -1)"
echo
programs=("Smart Scan" "$build/bench/scan_bench" "$home"
  -- "bare walk of its folders" "$build/bench/bare_walk" "${folders[@]}")
if command -v bleachbit >/dev/null; then
  programs+=(-- "bleachbit --preview" env HOME="$home" bleachbit --preview
    system.cache system.trash thumbnails.cache
    google_chrome.{cache,cookies,history,session,dom} firefox.{cache,cookies,url_history,session_restore,dom})
else
  echo "bleachbit is not installed and was left out" >&2
fi
"$build/bench/run_interleaved" 11 "${programs[@]}"
echo
empty=$(mktemp -d)
"$build/bench/run_interleaved" 21 "Smart Scan of an empty home" "$build/bench/scan_bench" "$empty" -- "no scan at all" true
rmdir "$empty" 2>/dev/null || rm -rf "$empty"
echo
echo "A Smart Scan cancelled at ten moments ended after at most $("$build/bench/scan_bench" "$home" --cancel) ms."
