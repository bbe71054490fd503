# Shared by the scripts of this folder; source it.
# shellcheck shell=bash

# Configures a preset once, then builds it; with further arguments only those targets. One log line per phase.
build_preset() {
  local preset=$1
  shift
  if [ ! -f "build/$preset/build.ninja" ]; then
    cmake --preset "$preset" >"build/$preset.log" 2>&1 || { cat "build/$preset.log" >&2; return 1; }
  fi
  local targets=()
  [ $# -gt 0 ] && targets=(--target "$@")
  cmake --build "build/$preset" "${targets[@]}" >>"build/$preset.log" 2>&1 || {
    tail -n 80 "build/$preset.log" >&2
    return 1
  }
}

has_display() { [ "$(uname -s)" = Darwin ] || [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; }
