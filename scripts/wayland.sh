#!/usr/bin/env bash
# The window on Wayland: runs tests/wayland over the built program (the dev build, or the one that VELLMOOR_BINARY names) in sway
# without a screen. Not in the gate: it needs a compositor that few machines have.
# Usage: scripts/wayland.sh [TEST...]   (WaylandTest.test_..., all by default)
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=scripts/common.sh
. scripts/common.sh

install_debian "" sway wtype wl-clipboard grim qt6-wayland at-spi2-core dbus python3-gi gir1.2-atspi-2.0 \
  gcc libwayland-dev wayland-protocols
VELLMOOR_BINARY=${VELLMOOR_BINARY:-$PWD/build/dev/src/app/vellmoor}
mkdir -p build/wayland
protocol=$(pkg-config --variable=pkgdatadir wayland-protocols)/staging/xdg-activation/xdg-activation-v1.xml
wayland-scanner client-header "$protocol" build/wayland/xdg-activation-v1.h
wayland-scanner private-code "$protocol" build/wayland/xdg-activation-v1.c
gcc -Ibuild/wayland tests/wayland/token.c build/wayland/xdg-activation-v1.c -o build/wayland/token -lwayland-client
VELLMOOR_WAYLAND_TOKEN=$PWD/build/wayland/token
export VELLMOOR_BINARY VELLMOOR_WAYLAND_TOKEN
cd tests/wayland
if [ $# -gt 0 ]; then
  tests=("$@")
else
  # Each class's own: those of a base class are run once.
  mapfile -t tests < <(awk '/^class /{split($2, name, "("); class = name[1]} /^    def test_/{sub(/\(.*/, "", $2); print class "." $2}' wayland_test.py)
fi
# sway does not run as root.
runner=()
if [ "$(id -u)" -eq 0 ]; then
  runner=(setpriv --reuid nobody --regid nogroup --clear-groups)
fi
failed=no
for test in "${tests[@]}"; do
  # A process for each: the library of screen readers is bound to the first bus that it meets.
  if "${runner[@]}" /usr/bin/python3 -X utf8 -B -W ignore::DeprecationWarning -m unittest "wayland_test.$test" >"/tmp/vellmoor-wayland.$$" 2>&1; then
    echo "passed  $test"
  else
    echo "FAILED  $test"
    cat "/tmp/vellmoor-wayland.$$"
    failed=yes
  fi
  rm -f "/tmp/vellmoor-wayland.$$"
done
[ "$failed" = no ]
