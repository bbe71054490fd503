#!/usr/bin/env bash
# Installs what is missing, builds Vellmoor and starts it.
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=scripts/common.sh
. scripts/common.sh

scripts/setup.sh
mkdir -p build
if has_display; then
  build_preset release vellmoor
  if is_mac; then
    exec open build/release/Vellmoor.app
  fi
  exec build/release/src/app/vellmoor
fi

build_preset release vellmoor-probe
echo "There is no display here. This is what a Smart Scan of your home folder finds; nothing is changed:"
echo
build/release/tools/probe/vellmoor-probe report smartScan
echo
echo "To see the window in pictures, on a throw-away home: ./scripts/demo.sh"
