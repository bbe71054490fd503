#!/usr/bin/env bash
# Cleans throw-away homes while system calls fail, the program is killed, or somebody swaps folders for links, and compares
# the disk, the Trash and the report with what must hold (tests/faults).
# Usage: scripts/faults.sh [N] [--seed FIRST] [--jobs J] [--keep-going]
#   N              how many runs (1000); --seed FIRST: the first of them (1), as a failed run names it
#   --keep-going   do not stop after 20 broken promises
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=scripts/common.sh
. scripts/common.sh

runs=1000
case ${1:-} in
  '' | --*) ;;
  *) runs=$1; shift ;;
esac
mkdir -p build
build_preset dev plain_probe vellmoor_faults
exec /usr/bin/python3 -X utf8 -B tests/faults/campaign.py --cleaner "$PWD/build/dev/tests/faults/plain_probe" \
  --faults "$PWD/build/dev/tests/faults/libvellmoor_faults.so" --runs "$runs" "$@"
