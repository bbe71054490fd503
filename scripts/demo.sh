#!/usr/bin/env bash
# Starts Vellmoor in a throw-away home full of junk; nothing of the real home is touched. Without a display it
# leaves a picture of every page, in both languages, in build/pictures/. On a Mac, where the account alone says what
# the home folder is, it takes such pictures over made-up results.
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=scripts/common.sh
. scripts/common.sh

scripts/setup.sh
mkdir -p build

if is_mac; then
  build_preset release vellmoor-pictures
  mkdir -p build/pictures
  build/release/tests/ui/vellmoor-pictures --out build/pictures
  echo "The pictures are in build/pictures/."
  exit 0
fi

home=$(mktemp -d "${TMPDIR:-/tmp}/vellmoor-demo.XXXXXX")
cleanup() {
  chmod -R u+rwX "$home" 2>/dev/null || true
  rm -rf "$home"
}
trap cleanup EXIT
scripts/make-demo-home.sh "$home"

if has_display; then
  build_preset release vellmoor
  echo "Vellmoor runs in $home, which is removed when it ends."
  env -u XDG_CONFIG_HOME -u XDG_CACHE_HOME -u XDG_DATA_HOME -u XDG_STATE_HOME HOME="$home" \
    build/release/src/app/vellmoor
  exit 0
fi

build_preset release vellmoor-pictures
mkdir -p build/pictures
echo "There is no display here; taking pictures of every page instead."
env -u XDG_CONFIG_HOME -u XDG_CACHE_HOME -u XDG_DATA_HOME -u XDG_STATE_HOME HOME="$home" \
  QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software \
  build/release/tests/ui/vellmoor-pictures --home "$home" --out build/pictures
echo "The pictures are in build/pictures/."
