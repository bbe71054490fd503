#!/usr/bin/env bash
# The packages and the AppImage of dist/ in fresh minimal systems of this release, made for this and removed afterwards: what
# a person with a new machine does, step by step. Needs root (or sudo).
# Usage: packaging/check/roots.sh VERSION [package | appimage]   (both without a name)
set -euo pipefail
cd "$(dirname "$0")/../.."
# shellcheck source=scripts/common.sh
. scripts/common.sh

version=${1:?the version}
what=${2:-both}
install_debian "" mmdebstrap
if [ "$(id -u)" -ne 0 ]; then
  exec sudo "$0" "$@"
fi
# shellcheck source=/dev/null
. /etc/os-release
machine=$(dpkg --print-architecture)
minimal=$PWD/build/package/minimal-$ID-$VERSION_ID.tar
roots=$(mktemp -d /var/tmp/vellmoor-roots.XXXXXX)
trap 'rm -rf --one-file-system "$roots"' EXIT

sources() {
  if [ "$ID" = ubuntu ]; then
    local mirror=http://archive.ubuntu.com/ubuntu
    printf '%s\n' "deb $mirror $VERSION_CODENAME main universe" "deb $mirror $VERSION_CODENAME-updates main universe"
  else
    local mirror=http://deb.debian.org
    printf '%s\n' "deb $mirror/debian $VERSION_CODENAME main" "deb $mirror/debian $VERSION_CODENAME-updates main" \
      "deb $mirror/debian-security $VERSION_CODENAME-security main"
  fi
}

# What is essential, and apt; of Ubuntu what is of priority "required", too: nobody can be added without it, and apt never
# takes such a package away again.
variant=apt
[ "$ID" != ubuntu ] || variant=minbase

# The system is made once and copied; a week later it is made again.
make_root() {
  if [ -z "$(find "$minimal" -mtime -7 2>/dev/null)" ]; then
    echo "== A minimal $PRETTY_NAME"
    sources | mmdebstrap --quiet --variant="$variant" --include=apt --format=tar "$VERSION_CODENAME" "$minimal.new" -
    mv "$minimal.new" "$minimal"
  fi
  mkdir "$roots/$1"
  tar -x -f "$minimal" -C "$roots/$1"
  cp /etc/resolv.conf /etc/hosts "$roots/$1/etc/"
  mkdir -p "$roots/$1/vellmoor"
}

# A process space of its own: whatever was started in it ends with it.
in_root() {
  local root=$roots/$1
  shift
  # shellcheck disable=SC2016 # for the other bash
  unshare --mount --pid --fork --kill-child bash -c '
    set -e
    mount --bind "$1" "$1"
    mount -t proc proc "$1/proc"
    mount --rbind /dev "$1/dev"
    mount -t tmpfs tmpfs "$1/dev/shm"
    exec chroot "$@"' bash "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
    ${http_proxy:+http_proxy=$http_proxy} "$@"
}

if [ "$what" != appimage ]; then
  make_root package
  mkdir "$roots/package/vellmoor/sources"
  git archive --format=tar HEAD tests/desktop packaging src/model debian/tests scripts | tar -x -C "$roots/package/vellmoor/sources"
  cp dist/vellmoor_"$version"_"$machine".deb dist/vellmoor-cli_"$version"_"$machine".deb "$roots/package/vellmoor/"
  in_root package bash /vellmoor/sources/packaging/check/package-in-root.sh "$version"
fi

if [ "$what" != package ]; then
  make_root appimage
  cp "dist/Vellmoor-$version-$(uname -m).AppImage" "$roots/appimage/vellmoor/Vellmoor.AppImage"
  cp packaging/check/appimage-in-root.sh "$roots/appimage/vellmoor/"
  in_root appimage bash /vellmoor/appimage-in-root.sh "$version"
fi
echo "It works, and goes without a trace."
