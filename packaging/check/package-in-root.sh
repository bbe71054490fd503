#!/usr/bin/env bash
# Run by roots.sh in a minimal system: installs the packages, uses them, upgrades, removes and purges them.
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
apt() { apt-get -y -qq --no-install-recommends "$@" >/vellmoor/apt.log 2>&1 || { cat /vellmoor/apt.log >&2; exit 1; }; }
# Not a function: in the background that would be a shell of its own, which a signal ends instead of the program.
as_user=(setpriv --reuid tester --regid tester --clear-groups env HOME=/home/tester USER=tester LOGNAME=tester)

# Everything but what apt, dpkg and the kernel keep for themselves, and the place to which Ubuntu's libraries divert /lib.
inventory() {
  find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path /tmp -o -path /run -o -path /vellmoor -o -path /home \
    -o -path /lib.usr-is-merged -o -path /var/lib/dpkg -o -path /var/lib/apt -o -path /var/cache -o -path /var/log \) -prune -o -print | LC_ALL=C sort
}
# dconf, which Qt's theme asks, touches its own cache at each start of any program.
home_inventory() { find /home/tester -path /home/tester/.cache/dconf -prune -o -printf '%P %y %m %s %T@ %l\n' | LC_ALL=C sort; }

# Starts the window without a display, as the user; its process is $window.
start_window() {
  "${as_user[@]}" env QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software vellmoor >/vellmoor/window.log 2>&1 &
  window=$!
  sleep 8
  kill -0 "$window" 2>/dev/null || { cat window.log >&2; fail "The window has ended."; }
}
end_window() {
  kill -0 "$window" || { cat window.log >&2; fail "The window did not outlive it."; }
  kill -TERM "$window"
  wait "$window" || { cat window.log >&2; fail "The window ended with a failure."; }
  [ -z "$(complaints)" ] || fail "The window complained: $(complaints)"
}

useradd --create-home tester
apt-get update -qq
inventory >before

phase "Installing with nothing else"
apt install ./vellmoor_"$version"_*.deb ./vellmoor-cli_"$version"_*.deb
[ "$(vellmoor --version)" = "vellmoor $version" ] || fail "It does not know its version."
[ "$(vellmoor-cli --version | grep -o '[0-9.]*$')" = "$version" ] || fail "vellmoor-cli does not know its version."
start_window
end_window

phase "Purging again: nothing may stay"
apt purge --autoremove vellmoor vellmoor-cli
inventory >after
diff before after || fail "The package left something behind."

phase "A throw-away home, cleaned in the terminal and in the window"
apt install ./vellmoor_"$version"_*.deb ./vellmoor-cli_"$version"_*.deb
"${as_user[@]}" sources/debian/tests/terminal
apt install at-spi2-core dbus gir1.2-atspi-2.0 openbox python3-gi trayer x11-utils xdotool xvfb
"${as_user[@]}" sources/debian/tests/window

phase "Upgrading, removing and purging under a running window"
mkdir upgrade
for package in vellmoor vellmoor-cli; do
  dpkg-deb -R "$package"_"$version"_*.deb "upgrade/$package"
  sed -i "s/^Version: .*/Version: $version+later/" "upgrade/$package/DEBIAN/control"
  dpkg-deb -b "upgrade/$package" "upgrade/$package.deb" >/dev/null
done
sources/scripts/make-demo-home.sh /home/tester/demo
chown -R tester: /home/tester
start_window
home_inventory >home-before
apt install ./upgrade/vellmoor.deb ./upgrade/vellmoor-cli.deb
[ "$(dpkg-query -W -f '${Version}' vellmoor)" = "$version+later" ] || fail "The upgrade did not take place."
end_window
start_window
apt remove vellmoor vellmoor-cli
dpkg --purge vellmoor vellmoor-cli # nothing of them may be known any more
[ ! -e /usr/bin/vellmoor ] || fail "The program is still there."
end_window
home_inventory >home-after
diff home-before home-after || fail "The home changed."
left=$(find / -xdev \( -path /proc -o -path /vellmoor -o -path /home -o -path /tmp -o -path /var/cache/apt \) -prune -o -iname '*vellmoor*' -print)
[ -z "$left" ] || fail "Left behind: $left"
