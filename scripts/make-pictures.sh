#!/usr/bin/env bash
# Draws the window over scripted results, in Chinese and English: every page in each of its states, every sheet, every
# confirmation, and what the longest names and the largest figures do to them. No display is needed.
#   scripts/make-pictures.sh [--all] [FOLDER]
# FOLDER gets a folder for each size and theme; without it, docs/pictures. All pictures are drawn; without --all only the
# telling ones are kept, so that the sources stay small. Each has a palette of 256 colours. VELLMOOR_PICTURES names a
# built vellmoor-pictures to draw with; without it the release build's is built and taken.
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=scripts/common.sh
. scripts/common.sh

all=false
if [ "${1:-}" = --all ]; then
  all=true
  shift
fi
folder=${1:-docs/pictures}
tool=${VELLMOOR_PICTURES:-build/release/tests/ui/vellmoor-pictures}

pages='smartScan|systemJunk|largeFiles|privacy|appUninstaller|performance|memoryOptimization|trash'
states='smartScan-(before|scanning|cleaning)|appUninstaller-unfolded|trash-history'
sheets='details|result-sums|result-many-failures|confirm-(clean|close)|restore|kept'

scripts/setup.sh
command -v pngquant >/dev/null || { echo "pngquant is missing: apt-get install pngquant" >&2; exit 1; }
mkdir -p build
[ -n "${VELLMOOR_PICTURES:-}" ] || build_preset release vellmoor-pictures

# draw NAME SIZE SCALE THEME KEPT [SET]: draws one size into FOLDER/NAME, all or only a set of the tool's, and keeps the
# pictures whose names match KEPT.
draw() {
  local name=$1 size=$2 scale=$3 theme=$4 kept=$5 only=${6:-} fresh
  fresh=$(mktemp -d "${TMPDIR:-/tmp}/vellmoor-pictures.XXXXXX")
  QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software QT_SCALE_FACTOR=$scale \
    "$tool" --size "$size" --theme "$theme" --only "$only" --out "$fresh"
  $all || find "$fresh" -name '*.png' | grep -vE "/($kept)-(zh|en)\.png$" | xargs -r rm
  find "$fresh" -name '*.png' -print0 | xargs -0 -n 8 -P 2 pngquant --nofs --speed 3 --strip --ext .png --force 256
  rm -rf "${folder:?}/$name"
  mkdir -p "$folder/$name"
  mv "$fresh"/*.png "$folder/$name"
  rmdir "$fresh"
  echo "$(find "$folder/$name" -name '*.png' | wc -l) pictures in $folder/$name, $(du -sh "$folder/$name" | cut -f1)"
}

draw 1080x720 1080x720 1 light "$pages|$states|$sheets"
draw 1080x720-dark 1080x720 1 dark "$pages|details|trash-history"
draw 800x560 800x560 1 light "smartScan|largeFiles" results
draw 1440x900 1440x900 1 light "smartScan|memoryOptimization" results
draw 1080x720-200-percent 1080x720 2 light "smartScan" results
