#!/usr/bin/env bash
# Makes what users install of the commit that is checked out, and looks at it. All of it goes to dist/, with SHA256SUMS.
# Usage: scripts/package.sh deb | appimage | dmg | compare | check
#   deb       the Debian packages vellmoor and vellmoor-cli, for the release of Debian or Ubuntu that this is
#   appimage  Vellmoor-VERSION-ARCHITECTURE.AppImage, for any Linux that is at least as new as this one
#   dmg       Vellmoor-VERSION.dmg, on a Mac (scripts/bundle-macos.sh, whose options it takes)
#   compare   the Debian packages, built once more elsewhere and compared byte by byte
#   check     what takes long: makes the packages and the AppImage; installs, uses, upgrades, removes and purges them in a fresh
#             minimal system, and starts the AppImage in another one; builds once more elsewhere and compares byte by byte
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=scripts/common.sh
. scripts/common.sh

top=$PWD
work=$top/build/package
version=$(sed -n 's/^Vellmoor \([0-9.]*\) .*/\1/p;' NEWS | head -n 1)
fail() { say "$@"; exit 1; }
phase() { printf '== %s\n' "$*"; }

# A folder with what is committed, and nothing else: what lies about here gets into no package.
export_commit() {
  [ -z "$(git status --porcelain)" ] || say "There are changes that are not committed; they are not packaged."
  rm -rf "$1"
  mkdir -p "$1"
  git archive --format=tar HEAD | tar -x -C "$1"
}

write_sums() {
  local sums
  sums=$(cd dist && find . -maxdepth 1 -type f ! -name SHA256SUMS -printf '%f\n' | LC_ALL=C sort | xargs -r sha256sum)
  printf '%s\n' "$sums" >dist/SHA256SUMS
  printf 'In dist/:\n%s\n' "$sums"
}

# build_deb FOLDER LOG: the packages of the sources in FOLDER, beside it.
build_deb() {
  (
    cd "$1"
    DEB_BUILD_OPTIONS=parallel=$(nproc)
    export DEB_BUILD_OPTIONS LC_ALL=C.UTF-8
    # A cache of compiled files leaves traces of where and how they were compiled first.
    export CCACHE_DISABLE=1
    dpkg-buildpackage --build=binary --unsigned-changes --unsigned-buildinfo
  ) >"$2" 2>&1 || { tail -n 60 "$2" >&2; fail "The packages cannot be built: $2"; }
}

need_for_deb() {
  install_debian "" dpkg-dev debhelper build-essential git
  # What debian/control asks for, by the name that this release has.
  if ! dpkg-checkbuilddeps 2>/dev/null; then
    export DEBIAN_FRONTEND=noninteractive
    as_root apt-get update -qq
    as_root apt-get build-dep -y -qq --no-install-recommends "$top" >/dev/null
  fi
}

# What the packages would install, below $work/installed.
unpack_deb() {
  local package
  rm -rf "$work/installed"
  for package in "$work"/*_"$version"_*.deb; do
    case $package in
      *-dbgsym_*) ;;
      *) dpkg-deb -x "$package" "$work/installed" ;;
    esac
  done
}

look_at_deb() {
  local log=$1 root=$work/installed
  install_debian "" lintian blhc appstream desktop-file-utils
  phase "Release notes, desktop file and metadata"
  scripts/release-notes.py --check
  desktop-file-validate "$root"/usr/share/applications/*.desktop
  appstreamcli validate --pedantic --no-net "$root"/usr/share/metainfo/*.xml
  phase "lintian"
  lintian --profile debian --allow-root --fail-on error,warning --info "$work"/vellmoor_"$version"_*.changes
  phase "Hardening (blhc)"
  blhc --all --debian "$log"
}

# The packages of this commit in $work, unless they are there.
have_deb() {
  local commit
  commit=$(git rev-parse HEAD)
  [ "$(cat "$work/built" 2>/dev/null)" = "$commit" ] && return 0
  need_for_deb
  mkdir -p "$work" dist
  rm -f "$work"/*.deb "$work"/*.changes "$work"/*.buildinfo "$work/built"
  phase "Packages of Vellmoor $version"
  export_commit "$work/vellmoor-$version"
  build_deb "$work/vellmoor-$version" "$work/deb.log"
  unpack_deb
  echo "$commit" >"$work/built"
}

make_deb() {
  have_deb
  look_at_deb "$work/deb.log"
  rm -f dist/*.deb
  cp "$work"/*.deb dist/
  write_sums
}

make_appimage() {
  have_deb
  phase "AppImage of Vellmoor $version"
  packaging/appimage/make.sh "$version" "$work/installed"
  write_sums
}

make_dmg() {
  is_mac || fail "A disk image is made on a Mac."
  scripts/bundle-macos.sh "$@"
  mv dist/Vellmoor.dmg "dist/Vellmoor-$version.dmg"
  # macOS has no sha256sum before 15.
  (cd dist && shasum -a 256 "Vellmoor-$version.dmg" >SHA256SUMS && cat SHA256SUMS)
}

# The packages in dist/ and those of a second build in another folder, which takes nothing from the first.
check_equality() {
  local second=$work/second/elsewhere/deeper package other differ=no
  phase "A second build, elsewhere"
  rm -rf "$work/second"
  mkdir -p "$second"
  export_commit "$second/vellmoor-$version"
  build_deb "$second/vellmoor-$version" "$work/second/deb.log"
  rm -rf "$second/vellmoor-$version"
  for package in "$second"/*.deb; do
    other=dist/$(basename "$package")
    if ! cmp "$package" "$other"; then
      differ=yes
      install_debian "" "diffoscope-minimal|diffoscope"
      diffoscope --max-report-size 20000 "$package" "$other" || true
    fi
  done
  [ "$differ" = no ] || fail "Two builds of one commit differ."
  echo "Both builds are equal, byte by byte."
}

command=${1:-}
[ $# -eq 0 ] || shift
[ "$command" = dmg ] || [ $# -eq 0 ] || fail "scripts/package.sh $command takes no further words"
case $command in
  deb) make_deb ;;
  appimage) make_appimage ;;
  dmg) make_dmg "$@" ;;
  compare)
    make_deb
    check_equality
    ;;
  check)
    make_deb
    make_appimage
    packaging/check/roots.sh "$version"
    check_equality
    ;;
  *) fail "usage: scripts/package.sh deb | appimage | dmg | compare | check" ;;
esac
