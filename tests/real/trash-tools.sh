#!/usr/bin/env bash
# What gio and trash-cli make of a Trash that a clean of ours filled, and we of one that they filled: listed, put back byte
# for byte, emptied.
# Usage: tests/real/trash-tools.sh      (VELLMOOR_PROBE names another probe)
cd "$(dirname "$0")/../.."
# shellcheck source=tests/real/common.sh
. tests/real/common.sh
need python3 "$probe"

trash=$HOME/.local/share/Trash

# Names that an encoding may stumble over, a folder, and two of one name.
fill() {
  mkdir -p "$HOME/.cache/player/deep/er" "$HOME/.cache/two words" "$HOME/.local/state/a" "$HOME/.local/state/b"
  head -c 70000 /dev/urandom >"$HOME/.cache/player/deep/er/data"
  echo words >"$HOME/.cache/two words/100% \"of\" it"
  echo a >"$HOME/.local/state/a/session.log"
  echo b >"$HOME/.local/state/b/session.log"
  long=$(printf 'n%.0s' $(seq 1 250))
  echo long >"$HOME/.cache/$long"
}
# Both tools list these, but put them back under other names, whoever trashed them: gio spells out every byte but ASCII's,
# trash-cli makes U+FFFD of what is no UTF-8.
fill_odd() {
  mkdir -p "$HOME/.cache"
  echo accents >"$HOME/.cache/Größe 垃圾"
  echo lines >"$HOME/.cache/$(printf 'new\nline')"
  echo bytes >"$HOME/.cache/$(printf 'half\345')"
}
digests() { (cd "$HOME" && find .cache .local/state -type f ! -path '*/vellmoor/*' -print0 | sort -z | xargs -0r sha256sum); }
clean() { vellmoor clean "$@" >"$work/report.json"; }
removed() { python3 -c 'import json, sys; print(json.load(open(sys.argv[1]))["removedCount"])' "$work/report.json"; }
left() { find "$trash/files" "$trash/info" -mindepth 1 -maxdepth 1 | wc -l; }
# GNOME's Trash is a service on a bus of its own.
on_bus() { timeout 120 dbus-run-session -- sh -c "sleep 0.1; $1" 2>/dev/null; }

echo "== what we trashed"
fill
before=$(digests)
clean systemJunk --select all
same "the clean moved all five" 5 "$(removed)"
same "nothing is left in its place" "" "$(digests)"

if command -v trash-list >/dev/null; then
  same "trash-list lists them" 5 "$(trash-list | grep -c -E '^[0-9]{4}-[0-9]{2}-[0-9]{2} ')"
  # It lists by time and asks for a number; the first is put back until none is left.
  for _ in 1 2 3 4 5; do
    (cd "$HOME" && echo 0 | trash-restore / >"$work/restore.log" 2>&1) || cat "$work/restore.log"
  done
  same "trash-restore puts them back byte for byte" "$before" "$(digests)"
  same "and nothing stays in the Trash" 0 "$(left)"
  clean systemJunk --select all
  trash-rm 'two words' >/dev/null 2>&1
  same "trash-rm removes one by its name" 4 "$(trash-list | grep -c -E '^[0-9]{4}-[0-9]{2}-[0-9]{2} ')"
  fill_odd
  clean systemJunk --select all
  same "it lists odd names, too" 7 "$(trash-list | grep -c -E '^[0-9]{4}-[0-9]{2}-[0-9]{2} ')"
  trash-empty -f >/dev/null 2>&1 || trash-empty >/dev/null 2>&1 </dev/null
  same "trash-empty empties it" 0 "$(left)"
else
  echo "passed over: trash-cli is not here"
fi

if command -v gio >/dev/null && command -v dbus-run-session >/dev/null && [ -x /usr/lib/gvfs/gvfsd-trash ] \
  || [ -x /usr/libexec/gvfsd-trash ]; then
  rm -rf "$trash" "$HOME/.cache" "$HOME/.local/state"
  fill
  before=$(digests)
  clean systemJunk --select all
  same "gio lists them" 5 "$(on_bus 'gio trash --list' | grep -c '^trash:')"
  # shellcheck disable=SC2016 # the inner shell's
  on_bus 'gio trash --list | cut -f 1 | while IFS= read -r item; do gio trash --restore "$item"; done'
  same "gio puts them back byte for byte" "$before" "$(digests)"
  clean systemJunk --select all
  fill_odd
  clean systemJunk --select all
  same "it lists odd names, too" 8 "$(on_bus 'gio trash --list' | grep -c '^trash:')"
  # shellcheck disable=SC2016 # the inner shell's
  on_bus 'gio trash --empty; for _ in $(seq 1 100); do [ -z "$(ls -A .local/share/Trash/files)" ] && break; sleep 0.1; done'
  same "gio empties it" 0 "$(left)"
else
  echo "passed over: gio with GVfs and a bus is not here"
fi

echo "== what they trashed"
rm -rf "$trash"
mkdir -p "$HOME/Documents"
for name in one "two words" "$(printf 'half\345')"; do
  echo "$name" >"$HOME/Documents/$name"
  if command -v gio >/dev/null; then gio trash "$HOME/Documents/$name"; else trash-put "$HOME/Documents/$name"; fi
done
if command -v trash-put >/dev/null; then
  mkdir "$HOME/Documents/folder" && echo inside >"$HOME/Documents/folder/file"
  trash-put "$HOME/Documents/folder"
fi
there=$(find "$trash/files" -mindepth 1 -maxdepth 1 | wc -l)
check "they trashed something" test "$there" -ge 3
clean trash --select all
same "the clean removes all of it" "$there" "$(removed)"
same "with its notes" 0 "$(left)"
if [ -e "$trash/directorysizes" ]; then
  same "and its lines of sizes" "" "$(cat "$trash/directorysizes")"
fi
finish
