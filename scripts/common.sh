# Shared by the scripts of this folder; source it. macOS has bash 3.2: no mapfile, and an empty array is unset to it.
# shellcheck shell=bash

# Homebrew's tools, also for a shell that has not heard of them.
if [ -x /opt/homebrew/bin/brew ]; then
  PATH=/opt/homebrew/bin:$PATH
fi

is_mac() { [ "$(uname -s)" = Darwin ]; }

# Configures a preset once, then builds it; with further arguments only those targets. One log line per phase.
build_preset() {
  local preset=$1
  shift
  if [ ! -f "build/$preset/build.ninja" ]; then
    cmake --preset "$preset" >"build/$preset.log" 2>&1 || { cat "build/$preset.log" >&2; return 1; }
  fi
  local targets=()
  [ $# -gt 0 ] && targets=(--target "$@")
  cmake --build "build/$preset" ${targets[@]+"${targets[@]}"} >>"build/$preset.log" 2>&1 || {
    tail -n 80 "build/$preset.log" >&2
    return 1
  }
}

# How many processors this process may use.
processors() { nproc 2>/dev/null || getconf _NPROCESSORS_ONLN; }

# Runs a command with its temporary files in memory, which nobody else sees; as it is where nobody but root may mount.
with_files_in_memory() {
  local folder status=0
  # shellcheck disable=SC2016 # for the other bash
  local mounted='mount -t tmpfs -o mode=1777 tmpfs "$1" && shift && exec "$@"'
  folder=$(mktemp -d "${TMPDIR:-/tmp}/vellmoor-tests.XXXXXX")
  if [ "$(id -u)" -eq 0 ] && unshare --mount bash -c "$mounted" bash "$folder" true 2>/dev/null; then
    unshare --mount bash -c "$mounted" bash "$folder" env TMPDIR="$folder" "$@" || status=$?
  else
    "$@" || status=$?
  fi
  rmdir "$folder"
  return "$status"
}

has_display() { is_mac || [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; }

# ccache keeps what is built with a precompiled header only with this (its manual, "Precompiled headers").
export CCACHE_SLOPPINESS=${CCACHE_SLOPPINESS:-pch_defines,time_macros}

# Each release of Qt formats QML in another way, and warns of other things; this one's way is kept to.
qml_release=6.4
is_of_qml_release() { [[ "$("$1" --version) " == *" $qml_release."* ]]; }

say() { printf '%s\n' "$*" >&2; }

# Of "a|b" among the arguments one is enough; those that are not installed, by the first name that this release knows.
missing_debian() {
  local installed entry name names
  read -r -a names <<<"$(tr '|' ' ' <<<"$*")"
  # dpkg-query fails when it does not know one of them: that one is missing.
  installed=$({ dpkg-query -W -f '${db:Status-Abbrev} ${Package}\n' "${names[@]}" 2>/dev/null || true; } \
    | sed -n 's/^ii  *//p')
  for entry in "$@"; do
    for name in ${entry//|/ }; do
      grep -qxF "$name" <<<"$installed" && continue 2
    done
    for name in ${entry//|/ }; do
      [ "$entry" = "$name" ] && break
      apt-cache show "$name" >/dev/null 2>&1 && break
    done
    printf '%s\n' "$name"
  done
}

# Fills `missing` with the lines that it reads.
read_missing() {
  local line
  missing=()
  while IFS= read -r line; do
    missing+=("$line")
  done
}

# What only root may do: itself for root, sudo for everybody else.
as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo --preserve-env=DEBIAN_FRONTEND "$@"
  else
    say "This needs root, and there is no sudo here: $*"
    exit 1
  fi
}

# Installs what is missing; with --check as the first argument it only says so and fails. An empty one is none.
install_debian() {
  local check=${1:-}
  shift
  read_missing < <(missing_debian "$@")
  [ "${#missing[@]}" -eq 0 ] && return 0
  if [ "$check" = --check ]; then
    say "Missing packages: ${missing[*]}"
    exit 1
  fi
  export DEBIAN_FRONTEND=noninteractive
  as_root apt-get update -qq
  read_missing < <(missing_debian "$@") # by their names: a fresh system knows none before
  say "Installing: ${missing[*]}"
  as_root apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}
