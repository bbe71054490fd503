#!/usr/bin/env bash
# Run by roots.sh in a minimal system without Qt: the AppImage starts, says what it is, and leaves nothing in the temporary folder.
set -euo pipefail
version=${1:?the version}
cd /vellmoor
# Without a display, a session and a single font around it, Qt says so.
complaints() {
  grep -v -e '^This plugin does not support' -e '^QStandardPaths: XDG_RUNTIME_DIR not set' -e '^Fontconfig error: Cannot load default' \
    -e '^QFontDatabase: ' window.log || true
}
phase() { printf '== %s\n' "$*"; }
fail() { printf '%s\n' "$*" >&2; exit 1; }
# Not a function: in the background that would be a shell of its own, which a signal ends instead of the program.
as_user=(setpriv --reuid tester --regid tester --clear-groups env HOME=/home/tester TMPDIR=/tmp)
nothing_left() {
  local left
  left=$(find /tmp -mindepth 1 -maxdepth 1 -name '.vellmoor-appimage-*')
  [ -z "$left" ] || fail "Left behind: $left"
}

useradd --create-home tester
find / -xdev -name 'libQt6*' -not -path '/proc/*' | grep -q . && fail "This system has Qt."

phase "The AppImage on a system without Qt"
[ "$("${as_user[@]}" ./Vellmoor.AppImage --version)" = "vellmoor $version" ] || fail "It does not know its version."
status=0
"${as_user[@]}" ./Vellmoor.AppImage --no-such-option 2>error.log || status=$?
[ "$status" -eq 2 ] || fail "Its exit status is not the program's, but $status."
nothing_left
"${as_user[@]}" env QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software ./Vellmoor.AppImage >window.log 2>&1 &
window=$!
program=
for _ in $(seq 120); do
  program=$(grep -lx vellmoor /proc/[0-9]*/comm 2>/dev/null | cut -d/ -f3 || true)
  [ -z "$program" ] || break
  sleep 0.5
done
sleep 8
[ -e "/proc/$program/environ" ] || program=
[ -n "$program" ] || { cat window.log >&2; fail "The window has ended."; }
tr '\0' '\n' <"/proc/$program/environ" >environment
grep -qx 'APPIMAGE=/vellmoor/Vellmoor.AppImage' environment || fail "APPIMAGE does not name the file."
grep -q '^APPDIR=/tmp/.vellmoor-appimage-' environment || fail "APPDIR does not name the folder."
! grep -E '^(LD_LIBRARY_PATH|QT_PLUGIN_PATH|QML2?_IMPORT_PATH)=' environment || fail "What it starts would find its libraries."
kill -TERM "$window"
wait "$window" || { cat window.log >&2; fail "It ended with a failure."; }
nothing_left
[ -z "$(complaints)" ] || fail "It complained: $(complaints)"

phase "The AppImage on a display"
apt-get update -qq
apt-get install -y -qq --no-install-recommends xvfb xdotool >apt.log 2>&1
Xvfb :77 -screen 0 1400x1000x24 -nolisten tcp >/dev/null 2>&1 &
for _ in $(seq 100); do
  [ ! -e /tmp/.X11-unix/X77 ] || break
  sleep 0.2
done
"${as_user[@]}" env DISPLAY=:77 ./Vellmoor.AppImage >window.log 2>&1 &
window=$!
for _ in $(seq 60); do
  found=$(DISPLAY=:77 xdotool search --onlyvisible --name '^Vellmoor$' 2>/dev/null || true)
  [ -z "$found" ] || break
  sleep 0.5
done
[ -n "$found" ] || { cat window.log >&2; fail "No window."; }
kill -TERM "$window"
wait "$window" || { cat window.log >&2; fail "It ended with a failure."; }
nothing_left

phase "The AppImage unpacked by itself"
mkdir /tmp/unpacked && chown tester: /tmp/unpacked
(cd /tmp/unpacked && "${as_user[@]}" /vellmoor/Vellmoor.AppImage --appimage-extract >list && "${as_user[@]}" squashfs-root/AppRun --version)
[ -x /tmp/unpacked/squashfs-root/usr/bin/vellmoor ] || fail "It did not unpack."
