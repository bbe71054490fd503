#!/usr/bin/env bash
# Installs what building, testing and running Vellmoor needs. Quick when nothing is missing.
# Usage: scripts/setup.sh [--check]   (--check only says what is missing; exit 1 if anything is)
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=scripts/common.sh
. scripts/common.sh

debian_packages=(
  build-essential cmake ninja-build ccache pkg-config git ca-certificates
  qt6-base-dev qt6-declarative-dev qt6-declarative-dev-tools "qt6-svg-dev|libqt6svg6-dev" libgl-dev
  qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript qml6-module-qtquick
  qml6-module-qtquick-controls qml6-module-qtquick-layouts qml6-module-qtquick-shapes
  qml6-module-qtquick-templates qml6-module-qtquick-window qml6-module-qttest
  libglib2.0-dev libicu-dev libxcb1-dev libplist-dev bootstrap-icons
  libgtest-dev libgmock-dev libbenchmark-dev nlohmann-json3-dev libgnustep-base-dev
  clang-19 lld-19 clang-format-19 clang-tidy-19 libclang-rt-19-dev shellcheck
  xvfb xauth openbox x11-utils xdotool trayer dbus dbus-x11 at-spi2-core python3 python3-yaml python3-pyatspi gir1.2-atspi-2.0
  gvfs libglib2.0-bin desktop-file-utils pngquant fonts-noto-core fonts-noto-cjk
)
brew_packages=(cmake ninja ccache qtbase qtdeclarative qtsvg googletest google-benchmark nlohmann-json shellcheck)

# The check of the macOS sources fetches headers with npm; whose npm it is does not matter.
command -v npm >/dev/null || debian_packages+=(npm)

setup_macos() {
  [ "$(uname -m)" = arm64 ] || { say "Vellmoor runs on Macs with Apple silicon."; exit 1; }
  if ! xcode-select -p >/dev/null 2>&1; then
    say "The command line tools are missing; their installation starts now. Start again when it is done."
    [ "${1:-}" = --check ] || xcode-select --install
    exit 1
  fi
  # Older ones cannot compile std::expected as it is used here.
  local version
  version=$(clang --version | sed -n 's/^Apple clang version \([0-9]*\).*/\1/p')
  if [ "${version:-0}" -lt 16 ]; then
    say "Vellmoor needs Xcode 16 or its command line tools; clang here is of version ${version:-unknown}."
    say "Install them from the App Store or developer.apple.com, or: softwareupdate --list, then --install."
    exit 1
  fi
  command -v brew >/dev/null || { say "Install Homebrew first: https://brew.sh"; exit 1; }
  local installed
  installed=$(brew list --formula -1)
  read_missing < <(comm -23 <(printf '%s\n' "${brew_packages[@]}" | sort -u) <(sort -u <<<"$installed"))
  [ "${#missing[@]}" -eq 0 ] && return 0
  if [ "${1:-}" = --check ]; then
    say "Missing formulae: ${missing[*]}"
    exit 1
  fi
  brew install --quiet "${missing[@]}" >&2
}

if is_mac; then
  setup_macos "${1:-}"
elif command -v apt-get >/dev/null; then
  install_debian "${1:-}" "${debian_packages[@]}"
else
  say "This system has no apt-get. Install the counterparts of these Debian packages, then build with CMake:"
  say "${debian_packages[*]}"
  exit 1
fi
