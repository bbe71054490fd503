#!/usr/bin/env bash
# Makes dist/Vellmoor.app, which carries its Qt and so runs on Macs without Homebrew. On a Mac only.
# Usage: scripts/bundle-macos.sh
#   VELLMOOR_SIGN_ID  signs with this identity of the keychain; without it the bundle runs where it is not quarantined
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=scripts/common.sh
. scripts/common.sh

is_mac || { echo "A bundle is made on a Mac." >&2; exit 1; }
scripts/setup.sh
mkdir -p build dist
build_preset release vellmoor

identity=${VELLMOOR_SIGN_ID:--}
homebrew=$(brew --prefix)
bundle=dist/Vellmoor.app
program=$bundle/Contents/MacOS/Vellmoor
rm -rf "$bundle"
cp -R build/release/Vellmoor.app "$bundle"

# Plug-ins whose Qt module is not installed are left out with a warning; the check below finds what is left of them.
"$(command -v macdeployqt)" "$bundle" -qmldir=src/ui -libpath="$homebrew/lib" -always-overwrite -verbose=1

libraries() { find "$bundle/Contents" -type f -name '*.dylib'; }
frameworks() { find "$bundle/Contents/Frameworks" -maxdepth 1 -name '*.framework'; }

# Homebrew's libraries look for each other at places that only Homebrew has.
libraries | while IFS= read -r file; do
  install_name_tool -add_rpath @executable_path/../Frameworks "$file" 2>/dev/null || true # it has it already
done
install_name_tool -delete_rpath "$homebrew/lib" "$program" 2>/dev/null || true # it has none

# Whatever still names Homebrew would be missing on another Mac.
strays=$(find "$bundle" -type f \( -name '*.dylib' -o -perm -u+x \) | while IFS= read -r file; do
  otool -L "$file" | grep -F "$homebrew" | sed "s|^|$file needs|" || true
done)
if [ -n "$strays" ]; then
  printf '%s\n' "$strays" >&2
  exit 1
fi

# Inner code first: the seal of the bundle covers it. Every change above has broken a signature.
sign() { codesign --force --sign "$identity" "$@"; }
libraries | while IFS= read -r file; do sign "$file"; done
frameworks | while IFS= read -r folder; do sign "$folder"; done
sign "$bundle"
codesign --verify --deep --strict "$bundle"
echo "Made $bundle."
