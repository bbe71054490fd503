#!/usr/bin/env bash
# Makes the headers that stand in for a Mac's, once, in a cache outside the repository, and prints their folder:
# usr/include (Darwin's C headers, libc++ 19), others (GoogleTest, JSON), names (what the macOS SDK declares).
# Fails when something cannot be had or is not what pins.txt says.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
pins=$here/pins.txt
cache=${VELLMOOR_MACOS_CHECK_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/vellmoor/macos-check}
folder=$cache/sdk-$(cat "$pins" "${BASH_SOURCE[0]}" | sha256sum | cut -c1-16)

say() { printf '%s\n' "$*" >&2; }
fail() { say "$@"; exit 1; }

mkdir -p "$cache"
exec 9>"$cache/lock"
flock 9
if [ -e "$folder/ready" ]; then
  printf '%s\n' "$folder"
  exit 0
fi

# verify FILE SHA256
verify() { [ "$(sha256sum "$1" | cut -d' ' -f1)" = "$2" ] || fail "$1 is not the file that is pinned."; }

fetch_npm() {
  local kind name version arch hash file
  while read -r kind name version arch hash; do
    [ "$kind" = npm ] || continue
    file=$(npm pack --silent --ignore-scripts "$name@$version" | tail -n 1) || fail "npm cannot fetch $name $version."
    verify "$file" "$hash"
    mv "$file" "$(basename "$name").tgz"
  done <"$pins"
  tar xzf lib.tgz package/libc/include/any-darwin-any
  tar xzf macos-node-api.tgz package/types
}

# download NAME: the version of this system's release; apt compares its contents with the signed index.
download() {
  # As root, apt means to download as a user who cannot write here, and says so.
  apt-get download -qq "$1" 2>/dev/null && return 0
  # A machine that was never updated knows no packages.
  if [ "$(id -u)" -eq 0 ]; then apt-get update -qq; else sudo apt-get update -qq; fi
  apt-get download -qq "$1"
}

fetch_libcxx() {
  local package=libc++-19-dev file version arch hash
  download "$package" >&2 || fail "apt cannot fetch $package."
  file=$(echo "$package"_*.deb)
  version=$(dpkg-deb -f "$file" Version)
  arch=$(dpkg-deb -f "$file" Architecture)
  case $version in
    19.* | *:19.*) ;;
    *) fail "$package is of version $version; the check needs 19." ;;
  esac
  hash=$(awk -v name="$package" -v version="$version" -v arch="$arch" \
    '$1 == "deb" && $2 == name && $3 == version && $4 == arch { print $5 }' "$pins")
  if [ -n "$hash" ]; then
    verify "$file" "$hash"
  else
    say "No pin for $package $version $arch; taken as apt verified it: $(sha256sum "$file" | cut -d' ' -f1)"
  fi
  dpkg-deb -x "$file" deb
}

arrange() {
  local config=usr/include/c++/v1/__config_site name
  mkdir -p usr/include/c++ others
  cp -r package/libc/include/any-darwin-any/. usr/include/
  mv package/types names
  cp -r deb/usr/lib/llvm-19/include/c++/v1 usr/include/c++/v1
  # Until this line is gone, Debian's libc++ does not say since which macOS it has something.
  sed -i '/^#define _LIBCPP_HAS_NO_VENDOR_AVAILABILITY_ANNOTATIONS/w removed' "$config"
  sed -i '/^#define _LIBCPP_HAS_NO_VENDOR_AVAILABILITY_ANNOTATIONS/d' "$config"
  [ -s removed ] || fail "libc++'s configuration is not as expected."
  # The system's include folder holds Linux's own headers, so these libraries are shown apart from it.
  for name in gtest gmock nlohmann; do
    ln -s "/usr/include/$name" "others/$name"
  done
  rm -rf package deb removed ./*.tgz ./*.deb
  touch ready
}

say "Fetching the headers of the macOS check into $folder (once)"
work=$(mktemp -d "$cache/new.XXXXXX")
trap 'rm -rf "$work"' EXIT
cd "$work"
fetch_npm
fetch_libcxx
arrange
rm -rf "$folder"
mv "$work" "$folder"
printf '%s\n' "$folder"
