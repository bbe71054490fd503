#!/usr/bin/env bash
# Fills an empty folder with a home full of junk of every kind. Usage: scripts/make-demo-home.sh FOLDER
set -euo pipefail

home=${1:?usage: scripts/make-demo-home.sh FOLDER}
mkdir -p "$home"
if [ -n "$(ls -A "$home")" ]; then
  echo "$home is not empty; a demo home is made in an empty folder only." >&2
  exit 1
fi
home=$(cd "$home" && pwd)

# blob PATH MEGABYTES [DAYS]: a file that really takes that much room.
blob() {
  mkdir -p "$(dirname "$home/$1")"
  fallocate -l "$2M" "$home/$1" 2>/dev/null || dd if=/dev/zero of="$home/$1" bs=1M count="$2" status=none
  touch -d "${3:-1} days ago" "$home/$1"
}

# text PATH [DAYS]: a small file made from standard input.
text() {
  mkdir -p "$(dirname "$home/$1")"
  cat >"$home/$1"
  touch -d "${2:-1} days ago" "$home/$1"
}

caches() {
  local name
  for name in thumbnails mesa_shader_cache fontconfig gstreamer-1.0 spotify zoom nemo; do
    blob ".cache/$name/data" 6 12
  done
  blob .cache/thumbnails/large/a.png 3 40
  blob .cache/rclone/vfs/waits-for-upload 2 # never a target
  blob .cache/obexd/received.jpg 2          # never a target
  blob .cache/librewolf/cd34.default/cache2/entries/A 7 3
  blob .var/app/org.gnome.Maps/cache/tiles 24 5
  blob snap/vlc/common/.cache/art 5 9
}

logs() {
  blob .xsession-errors 2 3
  blob .local/share/xorg/Xorg.0.log 1 2
  blob .local/state/wireplumber/session.log 1 2
  mkdir -p "$home/.config/Slack/GPUCache"
  blob .config/Slack/logs/default/main.log 4 6
  blob hs_err_pid4711.log 1 30
  mkdir -p "$home/.config/hexchat/logs" && echo "a chat, not a log" >"$home/.config/hexchat/logs/chat.log"
}

developer() {
  blob .npm/_cacache/content-v2/a 40 20
  blob .cargo/registry/cache/index/a.crate 30 50
  blob .cache/pip/http/a 25 15
  blob .gradle/caches/modules-2/a.jar 35 60
  blob go/pkg/mod/example.org/lib@v1.0.0/a.go 4 90
  chmod 555 "$home/go/pkg/mod/example.org/lib@v1.0.0"
  blob ".config/Code/Cache/data_0" 12 4
}

downloads() {
  blob Downloads/editor_1.94_amd64.deb 90 21
  blob Downloads/Fedora-Workstation.iso 320 45
  blob Downloads/fonts.zip 12 33
  blob Downloads/fresh-today.zip 8 0
  blob Downloads/Tool-x86_64.AppImage 60 70
}

large() {
  blob "Videos/Holiday 2023.mkv" 420 400
  blob Videos/screencast.webm 300 35
  blob Documents/archive-2021.tar.gz 280 800
  blob Pictures/panorama.tiff 265 95
  blob Desktop/dataset.bin 350 10
}

browsers() {
  local profile=.mozilla/firefox/ab12cd34.default-release chrome=.config/google-chrome/Default
  text .mozilla/firefox/profiles.ini <<EOF
[Profile0]
Name=default-release
IsRelative=1
Path=ab12cd34.default-release
Default=1
EOF
  echo 'user_pref("a", 1);' | text $profile/prefs.js
  blob $profile/places.sqlite 6 1
  blob $profile/cookies.sqlite 1 1
  blob "$profile/storage/default/https+++example.org/ls/data.sqlite" 3 2
  echo '{}' | text $profile/logins.json
  blob .cache/mozilla/firefox/ab12cd34.default-release/cache2/entries/A 30 2
  echo '{}' | text $chrome/Preferences
  blob $chrome/History 5 1
  blob $chrome/Cookies 1 1
  echo '{"roots":{}}' | text $chrome/Bookmarks
  blob "$chrome/Local Storage/leveldb/000003.log" 2 3
  blob "$chrome/IndexedDB/https_example.org_0.indexeddb.leveldb/000003.log" 2 3
  blob "$chrome/IndexedDB/chrome-extension_cjpalhdlnbpafiamejdnhcphjbkeiagm_0.indexeddb.leveldb/000003.log" 1 3 # never
  blob $chrome/DawnGraphiteCache/data_1 1 3
  blob .cache/google-chrome/Default/Cache/Cache_Data/data_1 45 1
  echo 'user_pref("a", 1);' | text .librewolf/cd34.default/prefs.js
  blob .librewolf/cd34.default/cookies.sqlite 1 2
}

applications() {
  printf '\177ELF\002\001\001\000AI\002' >"$home/appimage-head"
  mkdir -p "$home/Applications"
  mv "$home/appimage-head" "$home/Applications/Krita-5.2-x86_64.AppImage"
  fallocate -l 110M "$home/Applications/Krita-5.2-x86_64.AppImage" 2>/dev/null || true
  chmod +x "$home/Applications/Krita-5.2-x86_64.AppImage"
  text .local/share/applications/org.kde.krita.desktop <<EOF
[Desktop Entry]
Type=Application
Name=Krita
Exec=$home/Applications/Krita-5.2-x86_64.AppImage %U
Icon=krita
EOF
  blob .config/kritarc 1 9
  blob .local/share/krita/brushes.bundle 8 9
  mkdir -p "$home/.local/opt/blender/bin"
  printf '\177ELF\002\001\001\000' >"$home/.local/opt/blender/bin/blender"
  chmod +x "$home/.local/opt/blender/bin/blender"
  blob .local/opt/blender/lib/data.pak 75 30
}

startup() {
  text .config/autostart/syncthing.desktop <<EOF
[Desktop Entry]
Type=Application
Name=Syncthing
Name[zh_CN]=Syncthing 文件同步
Exec=sh -c "exit 0"
EOF
  text .config/autostart/redshift.desktop <<EOF
[Desktop Entry]
Type=Application
Name=Redshift
Exec=redshift
X-GNOME-Autostart-enabled=true
EOF
  text .config/autostart.disabled/old-updater.desktop <<EOF
[Desktop Entry]
Type=Application
Name=Old Updater
Exec=/opt/old/updater --quiet
EOF
  text .config/systemd/user/backup-watch.service <<EOF
[Unit]
Description=Watches folders and starts the backup
[Service]
ExecStart=/bin/true
Restart=on-failure
[Install]
WantedBy=default.target
EOF
}

# trash NAME MEGABYTES DAYS: as a file manager leaves it, restorable.
trash() {
  blob ".local/share/Trash/files/$1" "$2" "$3"
  mkdir -p "$home/.local/share/Trash/info"
  printf '[Trash Info]\nPath=%s\nDeletionDate=%s\n' "$home/Documents/$1" "$(date -d "$3 days ago" +%Y-%m-%dT%H:%M:%S)" \
    >"$home/.local/share/Trash/info/$1.trashinfo"
}

caches
logs
developer
downloads
large
browsers
applications
startup
trash Report-old.odt 3 14
trash Recording.wav 48 30
trash .hidden-note 1 5
