#!/usr/bin/env bash
# A Flatpak of the user, made here and installed by flatpak itself, whose name ends in "Evolution", beside the mail of
# the host's program of that name: what the uninstaller offers, and what is left when all of it is cleaned.
# Usage: tests/real/flatpak-leftovers.sh      (VELLMOOR_PROBE names another probe)
cd "$(dirname "$0")/../.."
# shellcheck source=tests/real/common.sh
. tests/real/common.sh
need flatpak ostree python3 "$probe"

id=org.example.Evolution
app=$work/app
mkdir -p "$app/files/bin" "$app/export/share/applications"
machine=$(flatpak --default-arch)
printf '[Application]\nname=%s\nruntime=org.example.Platform/%s/stable\nsdk=org.example.Platform/%s/stable\ncommand=evolution\n' \
  $id "$machine" "$machine" > "$app/metadata"
printf '#!/bin/sh\nexec sleep 60\n' > "$app/files/bin/evolution"
chmod 755 "$app/files/bin/evolution"
printf '[Desktop Entry]\nType=Application\nName=Evolution\nExec=evolution\n' \
  > "$app/export/share/applications/$id.desktop"
{
  ostree --repo="$work/repo" init --mode=archive-z2
  flatpak build-export --disable-sandbox "$work/repo" "$app" stable
  flatpak --user remote-add --no-gpg-verify local "file://$work/repo"
  flatpak --user install --noninteractive --assumeyes --no-deps local $id
} > "$work/flatpak.log" 2>&1
same "flatpak has installed it" $id "$(flatpak --user list --app --columns=application)"

# The mail, contacts and passwords of the host, data of the Flatpak, and of another one.
for folder in .config/evolution .local/share/evolution/mail .cache/evolution .config/code .config/opencode; do
  mkdir -p "$HOME/$folder"
  echo "precious" > "$HOME/$folder/data"
done
mkdir -p "$HOME/.var/app/$id/config" "$HOME/.var/app/$id.Other" "$HOME/.config/$id"
echo "sandbox" > "$HOME/.var/app/$id/config/settings"
echo "other" > "$HOME/.var/app/$id.Other/data"
echo "own" > "$HOME/.config/$id/data"
# A program of the user's that is called so, and has no entry.
mkdir -p "$HOME/Applications"
printf '\177ELF\2\1\1\0AI\2' > "$HOME/Applications/code.AppImage"

# targets TITLE: the paths of a row, relative to the home folder.
targets() {
  vellmoor scan appUninstaller | python3 -c '
import json, os, sys
home = os.path.realpath(sys.argv[1])
for item in json.load(sys.stdin)["cleanupItems"]:
    if item["title"] == sys.argv[2]:
        for target in item["targets"]:
            print(os.path.relpath(target["url"], home))' "$HOME" "$1"
}
same "the row holds the Flatpak and what its ID names" \
  "$(printf '%s\n' ".local/share/flatpak/app/$id" ".config/$id" ".var/app/$id")" "$(targets Evolution)"
same "a name fits the whole name of a folder only" \
  "$(printf '%s\n' Applications/code.AppImage .config/code)" "$(targets code)"

sum() { (cd "$HOME" && find .config/evolution .local/share/evolution .cache/evolution .config/opencode .config/code \
  ".var/app/$id.Other" -type f -exec sha256sum {} + | sort); }
before=$(sum)
vellmoor clean appUninstaller --select none --tick Evolution > "$work/report.json"
cat "$work/report.json"
same "flatpak has uninstalled it" "" "$(flatpak --user list --app --columns=application)"
check "the repository is whole" flatpak --user repair --dry-run
check "its body is gone" test ! -e "$HOME/.local/share/flatpak/app/$id"
check "its data is gone from its place" test ! -e "$HOME/.var/app/$id"
check "its data lies in the Trash" grep -rqx sandbox "$HOME/.local/share/Trash/files"
same "everything else is as it was" "$before" "$(sum)"
finish
