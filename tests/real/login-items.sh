#!/usr/bin/env bash
# Login items as systemd sees them: what its generator makes of the autostart folder, and what it says of units, before
# and after they are switched off. A user manager is asked where one answers; the generator and the offline checks need
# none.
# Usage: tests/real/login-items.sh      (VELLMOOR_PROBE names another probe)
cd "$(dirname "$0")/../.."
# shellcheck source=tests/real/common.sh
. tests/real/common.sh
generator=/usr/lib/systemd/user-generators/systemd-xdg-autostart-generator
need systemctl systemd-analyze python3 "$generator" "$probe"

if systemctl --user is-system-running 2> /dev/null | grep -Eqx 'running|degraded|starting'; then
  echo "a user manager answers"
else
  echo "no user manager answers here: units are checked offline"
fi

autostart=$HOME/.config/autostart
units=$HOME/.config/systemd/user
mkdir -p "$autostart" "$units"
entry() { printf '[Desktop Entry]\nType=Application\nName=%s\nExec=/bin/sleep 60\n' "$2" > "$autostart/$1.desktop"; }

# generated: the services that the generator makes for the next login.
generated() {
  rm -rf "$work/units"
  mkdir -p "$work/units/normal" "$work/units/early" "$work/units/late"
  XDG_CURRENT_DESKTOP=GNOME XDG_CONFIG_DIRS=$work/etc \
    "$generator" "$work/units/normal" "$work/units/early" "$work/units/late"
  (cd "$work/units/late" && find . -maxdepth 1 -name '*.service' -printf '%f\n' | sort)
}

# items: name, file and whether it starts, of each enabled item.
items() {
  vellmoor startup list | python3 -c '
import json, os, sys
for item in json.load(sys.stdin):
    if item["isEnabled"]:
        print(item["name"], os.path.basename(item["plistURL"]), item["startsAtLogin"], sep="|")'
}

# switch disable|enable FILE: by the item of that file.
switch() { vellmoor startup "$1" "$2" > "$work/answer.json" || cat "$work/answer.json"; }

echo "== entries"
entry "org.foo-bar baz" "Foo"
entry xterm-one "XTerm"
entry xterm-two "XTerm"
same "the generator names the units as we do" \
  "$(printf '%s\n' 'app-org.foo\x2dbar\x20baz@autostart.service' 'app-xterm\x2done@autostart.service' \
    'app-xterm\x2dtwo@autostart.service')" "$(generated)"
same "items of one name are told apart" \
  "$(printf '%s\n' 'Foo|org.foo-bar baz.desktop|True' 'XTerm (xterm-one.desktop)|xterm-one.desktop|True' \
    'XTerm (xterm-two.desktop)|xterm-two.desktop|True')" "$(items)"
switch disable "$autostart/xterm-one.desktop"
same "a disabled entry is generated no more" \
  "$(printf '%s\n' 'app-org.foo\x2dbar\x20baz@autostart.service' 'app-xterm\x2dtwo@autostart.service')" "$(generated)"
switch enable "$HOME/.config/autostart.disabled/xterm-one.desktop"
same "an enabled one again" 3 "$(generated | wc -l)"

echo "== services"
job() { printf '[Unit]\nDescription=Job\n%s\n[Service]\nExecStart=/bin/sleep %s\n' "$2" "$3" > "$1/job.service"; }
vendor=$HOME/.local/share/systemd/user
mkdir -p "$vendor"
job "$vendor" "" 11
job "$units" "a line that is no assignment" 12
check "systemd reads the unit in spite of its odd line" systemd-analyze --user verify job.service
same "so do we" "Job|job.service|False" "$(items | grep Job)"
state() { systemctl --user is-enabled job.service 2> /dev/null || true; }
switch disable "$units/job.service"
same "the service of the system does not take over" masked "$(state)"
check "the mask is systemd's own" test "$(readlink "$units/job.service")" = /dev/null
switch enable "$HOME/.config/systemd/user.disabled/job.service"
check "the user's own service is back" grep -q 'sleep 12' "$units/job.service"
check "and no mask" test "$(state)" != masked
finish
