#!/usr/bin/env bash
# Makes dist/Vellmoor.app, which carries its Qt and so runs on Macs without Homebrew, and dist/Vellmoor.dmg with it.
# On a Mac only.
# Usage: scripts/bundle-macos.sh [--notarize PROFILE]
#   --notarize PROFILE  hands both to Apple with the credentials that `xcrun notarytool store-credentials PROFILE` keeps
#   VELLMOOR_SIGN_ID    signs with this Developer ID of the keychain; without it the bundle runs where it is not quarantined
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=scripts/common.sh
. scripts/common.sh

say() { printf '%s\n' "$*" >&2; }
fail() { say "$@"; exit 1; }

profile=
case ${1:-} in
  '') ;;
  --notarize) profile=${2:?--notarize needs the name of a profile} ;;
  *) fail "usage: scripts/bundle-macos.sh [--notarize PROFILE]" ;;
esac
is_mac || fail "A bundle is made on a Mac."
identity=${VELLMOOR_SIGN_ID:--}
[ -z "$profile" ] || [ "$identity" != - ] || fail "Apple notarizes only what a Developer ID signed: set VELLMOOR_SIGN_ID."

scripts/setup.sh
mkdir -p build dist
build_preset release vellmoor

homebrew=$(brew --prefix)
bundle=dist/Vellmoor.app
image=dist/Vellmoor.dmg
program=$bundle/Contents/MacOS/Vellmoor
rm -rf "$bundle" "$image"
cp -R build/release/Vellmoor.app "$bundle"

# Plug-ins whose Qt module is not installed are left out with a warning; the check below finds what is left of them.
"$(command -v macdeployqt)" "$bundle" -qmldir=src/ui -libpath="$homebrew/lib" -always-overwrite -verbose=1

# By the first bytes, for a framework's library is neither named as one nor executable.
is_code() {
  case $(od -An -tx1 -N4 "$1" | tr -d ' ') in
    cffaedfe | cafebabe) return 0 ;;
    *) return 1 ;;
  esac
}

# Every program and library in the bundle, the innermost first.
code_files() {
  find "$bundle" -type f | awk -F/ '{ print NF "\t" $0 }' | sort -rn | cut -f2- | while IFS= read -r file; do
    if is_code "$file"; then printf '%s\n' "$file"; fi
  done
}

# What stands on every Mac, or in the bundle.
is_at_home() {
  case $1 in
    /usr/lib/* | /System/* | @executable_path | @executable_path/* | @rpath | @rpath/*) return 0 ;;
    *) return 1 ;;
  esac
}

rpaths() { otool -l "$1" | awk '$1 == "cmd" { found = $2 == "LC_RPATH" } found && $1 == "path" { print $2 }'; }
needed() { otool -L "$1" | tail -n +2 | awk '{ print $1 }'; }

# Homebrew's libraries look for each other at places that only Homebrew has.
code_files | while IFS= read -r file; do
  rpaths "$file" | while IFS= read -r place; do
    is_at_home "$place" || install_name_tool -delete_rpath "$place" "$file"
  done
  case $file in
    *.dylib) install_name_tool -add_rpath @executable_path/../Frameworks "$file" 2>/dev/null || true ;; # it has it already
  esac
done

# Whatever still names another place would be missing on another Mac.
strays=$(code_files | while IFS= read -r file; do
  { needed "$file"; rpaths "$file"; } | while IFS= read -r place; do
    is_at_home "$place" || printf '%s needs %s\n' "$file" "$place"
  done
done)
[ -z "$strays" ] || fail "$strays"

# Inner code first: each seal covers what lies inside. Every change above has broken a signature. The hardened runtime
# and Apple's time stamp need an identity: with none, libraries of other signers could not be loaded.
sign() {
  if [ "$identity" = - ]; then
    codesign --force --sign - "$@"
  else
    codesign --force --sign "$identity" --options runtime --timestamp "$@"
  fi
}
code_files | while IFS= read -r file; do
  case $file in
    "$program") ;; # with the bundle
    *) sign "$file" ;;
  esac
done
find "$bundle/Contents" -type d -name '*.framework' | sort -r | while IFS= read -r folder; do sign "$folder"; done
sign --entitlements packaging/macos/Vellmoor.entitlements "$bundle"
codesign --verify --deep --strict "$bundle"

# The window to drag from: the bundle beside a link to the folder of applications.
stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
cp -R "$bundle" "$stage/"
make_image() {
  rm -f "$image"
  cpack --config packaging/macos/DiskImage.cmake -D CPACK_INSTALLED_DIRECTORIES="$stage;." -B dist
  [ "$identity" = - ] || codesign --force --sign "$identity" --timestamp "$image"
}

if [ -n "$profile" ]; then
  ditto -c -k --keepParent "$bundle" "$stage.zip"
  xcrun notarytool submit "$stage.zip" --keychain-profile "$profile" --wait
  rm -f "$stage.zip"
  xcrun stapler staple "$bundle"
  spctl --assess --type execute "$bundle"
  rm -rf "$stage/Vellmoor.app"
  cp -R "$bundle" "$stage/"
  make_image
  xcrun notarytool submit "$image" --keychain-profile "$profile" --wait
  xcrun stapler staple "$image"
  spctl --assess --type open --context context:primary-signature "$image"
else
  make_image
fi

[ "$identity" != - ] || say "Without an identity: no hardened runtime, no time stamp, no notarization. Other Macs ask before they open it."
[ -n "$profile" ] || [ "$identity" = - ] || say "Not notarized: other Macs ask before they open it."
echo "Made $bundle and $image."
