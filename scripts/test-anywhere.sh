#!/usr/bin/env bash
# Runs the built tests (build/dev) on machines as they also are: each round changes one thing around them.
# Usage: scripts/test-anywhere.sh [ROUND...] [-- CTEST-OPTION...]      all rounds by default; --list names them
#   scripts/test-anywhere.sh odd-variables -- -L desktop
# A round that this user cannot have is named with the reason and counts as not run. Exits with 1 when a test failed.
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=scripts/common.sh
. scripts/common.sh

build=$PWD/build/dev
logs=$build/anywhere
rounds=(cold-caches loaded one-processor odd-variables no-variables tmpfs no-network other-user)
chosen=()
while [ $# -gt 0 ]; do
  case $1 in
    --list) printf '%s\n' "${rounds[@]}"; exit 0 ;;
    --) shift; break ;;
    -*) echo "usage: scripts/test-anywhere.sh [--list] [ROUND...] [-- CTEST-OPTION...]" >&2; exit 2 ;;
    *) chosen+=("$1"); shift ;;
  esac
done
options=("$@")
[ "${#chosen[@]}" -gt 0 ] || chosen=("${rounds[@]}")
[ -f "$build/CTestTestfile.cmake" ] || { echo "Build the tests first: scripts/test.sh" >&2; exit 2; }
mkdir -p "$logs"

scratch=$(mktemp -d "${TMPDIR:-/tmp}/vellmoor-anywhere.XXXXXX")
started=()
mounted=
user=
cleanup() {
  [ "${#started[@]}" -eq 0 ] || kill "${started[@]}" 2>/dev/null || true
  [ -z "$mounted" ] || umount "$mounted"
  [ -z "$user" ] || userdel "$user" 2>/dev/null || true
  rm -rf "$scratch"
}
trap cleanup EXIT

is_root() { [ "$(id -u)" -eq 0 ]; }

# Each round starts its arguments, the tests, in its own way; 77 with a line of why: not on this machine.
not_here() { echo "$1"; return 77; }

run_cold-caches() {
  is_root || { not_here "only root drops caches"; return; }
  sync
  echo 3 >/proc/sys/vm/drop_caches || { not_here "this kernel does not let the caches be dropped"; return; }
  "$@"
}

run_loaded() {
  local status=0
  for _ in $(seq "$(nproc)"); do
    # Two for each processor: a test gets a third of one.
    (while :; do :; done) &
    started+=("$!")
    (while :; do :; done) &
    started+=("$!")
  done
  "$@" || status=$?
  kill "${started[@]}"
  wait "${started[@]}" 2>/dev/null || true
  started=()
  return "$status"
}

run_one-processor() { taskset -c 0 "$@"; }

# Values that are set and mean something: the tests have to set their own.
run_odd-variables() {
  local odd=$scratch/odd
  mkdir -p "$odd/home" "$odd/run"
  chmod 700 "$odd/run"
  env TZ=Pacific/Chatham LANG=tr_TR.UTF-8 LANGUAGE=zh_CN:ar LC_ALL=de_DE.UTF-8 HOME="$odd/home" \
    XDG_CONFIG_HOME="$odd/config with spaces" XDG_CACHE_HOME=relative/cache XDG_DATA_HOME="$odd/data" XDG_STATE_HOME= \
    XDG_RUNTIME_DIR="$odd/run" XDG_CONFIG_DIRS="$odd/etc" XDG_DATA_DIRS="$odd/share::" XDG_CURRENT_DESKTOP=Odd:KDE \
    CARGO_HOME="$odd/cargo" GOPATH="$odd/go" GOCACHE="$odd/gocache" PIP_CACHE_DIR="$odd/pip" npm_config_cache="$odd/npm" \
    GRADLE_USER_HOME="$odd/gradle" HF_HOME="$odd/hf" PNPM_HOME="$odd/pnpm" NUGET_PACKAGES="$odd/nuget" \
    FLATPAK_USER_DIR="$odd/flatpak" APPIMAGE="$odd/Vellmoor.AppImage" SNAP=/snap/odd/1 \
    DISPLAY=:4711 WAYLAND_DISPLAY=none DBUS_SESSION_BUS_ADDRESS=unix:path="$odd/no-bus" \
    QT_QPA_PLATFORM=wayland QT_SCALE_FACTOR=1.75 QT_STYLE_OVERRIDE=odd \
    PYTHONUTF8=0 bash -c 'umask 077; exec "$@"' bash "$@"
}

run_no-variables() { env -i PATH="$PATH" "$@"; }

run_tmpfs() {
  local folder=$scratch/tmpfs
  mkdir "$folder"
  chmod 711 "$scratch" # some tests go on as another user
  if is_root && mount -t tmpfs -o size=3g,mode=1777 tmpfs "$folder" 2>/dev/null; then
    mounted=$folder
  elif [ "$(stat -f -c %T /dev/shm 2>/dev/null)" = tmpfs ]; then
    folder=$(mktemp -d /dev/shm/vellmoor.XXXXXX)
  else
    not_here "no tmpfs can be had"
    return
  fi
  local status=0
  TMPDIR=$folder "$@" || status=$?
  if [ -n "$mounted" ]; then
    umount "$mounted"
    mounted=
  else
    rm -rf "$folder"
  fi
  return "$status"
}

run_no-network() {
  unshare --net true 2>/dev/null || { not_here "this user cannot leave the network"; return; }
  unshare --net "$@"
}

# As root: as a new account without any group or home of its own. ctest writes its logs below the build.
run_other-user() {
  is_root || { not_here "the tests ran as user $(id -un) in every round; root takes another one"; return; }
  user=vellmoor-anywhere
  useradd --no-create-home --home-dir "$scratch/account" --shell /bin/bash "$user"
  mkdir -p "$scratch/account" "$build/Testing/Temporary"
  chmod 711 "$scratch"
  chown -R "$user" "$scratch/account" "$build/Testing"
  local status=0
  if ! setpriv --reuid "$user" --clear-groups --regid "$(id -g "$user")" test -r "$build/CTestTestfile.cmake"; then
    not_here "another user cannot read $build" || status=$?
  else
    setpriv --reuid "$user" --regid "$(id -g "$user")" --clear-groups \
      env -i PATH="$PATH" HOME="$scratch/account" USER="$user" LOGNAME="$user" LANG=C.UTF-8 "$@" || status=$?
  fi
  chown -R "$(id -u)" "$build/Testing"
  userdel "$user"
  user=
  return "$status"
}

failed=no
for round in "${chosen[@]}"; do
  declare -F "run_$round" >/dev/null || { echo "There is no round $round (--list names them)" >&2; exit 2; }
  log=$logs/$round.log
  start=$SECONDS
  status=0
  "run_$round" ctest --test-dir "$build" -j $((2 * $(processors))) --output-on-failure ${options[@]+"${options[@]}"} >"$log" 2>&1 || status=$?
  case $status in
    0) result=$(grep -E 'tests passed' "$log" || tail -n 1 "$log") ;;
    77) result="not run: $(tail -n 1 "$log")" ;;
    *) result="FAILED ($log)"; failed=yes ;;
  esac
  printf '%-14s %5d s  %s\n' "$round" $((SECONDS - start)) "$result"
  [ "$status" -eq 0 ] || [ "$status" -eq 77 ] || sed -n '/The following tests FAILED/,$p' "$log"
done
[ "$failed" = no ]
