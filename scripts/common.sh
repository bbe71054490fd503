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

has_display() { is_mac || [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; }

# ccache keeps what is built with a precompiled header only with this (its manual, "Precompiled headers").
export CCACHE_SLOPPINESS=${CCACHE_SLOPPINESS:-pch_defines,time_macros}
