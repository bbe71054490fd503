#!/usr/bin/env bash
# Proves on Linux that a Mac compiles its sources: CMake configures as on a Mac, and all that it would build there is
# compiled for macOS 14 on Apple silicon against Darwin's C headers, libc++, Qt's headers and the declarations in
# tools/macos-check/decls, which are audited against a description of the macOS SDK. docs/macos.md tells what that shows.
# Usage: scripts/check-macos.sh [--root DIR] [--audit | FILE...]
#   --root DIR  check that checkout instead of this one
#   --audit     only compare the declarations with the SDK, and read the sources for what the compiler lets pass
#   FILE...     only compile these sources (paths below the root)
set -euo pipefail
self=$(cd "$(dirname "$0")/.." && pwd)

root=$self
if [ "${1:-}" = --root ]; then
  root=$(cd "${2:?--root needs a folder}" && pwd)
  shift 2
fi

if [ "$(uname -s)" = Darwin ]; then
  echo "Not needed here: a Mac builds its own sources."
  exit 0
fi

tools=$self/tools/macos-check
sdk=$("$tools/sdk.sh")
if [ "${1:-}" = --audit ]; then
  "$tools/audit_decls.py" "$sdk"
  exec "$tools/audit_sources.py" "$sdk" "$root"
fi

cd "$root"
build=build/check-macos
log=$build.log
mkdir -p "$build"
export PATH=$tools/stand-ins:$PATH CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1

# What depends on the tools or the headers is not compiled anew when only they change, so another set of them is
# another build.
mark=$sdk:$(cat "$tools"/cmake/* "$tools"/stand-ins/* | sha256sum)
if [ ! -f "$build/build.ninja" ] || [ "$(cat "$build/mark" 2>/dev/null)" != "$mark" ]; then
  rm -rf "$build"
  architecture=$(dpkg-architecture -qDEB_HOST_MULTIARCH)
  cmake -G Ninja -S . -B "$build" --toolchain "$tools/cmake/Mac.cmake" -DVELLMOOR_MACOS_SDK="$sdk" \
    -DVELLMOOR_LINUX_ARCHITECTURE="$architecture" -DQt6_DIR="/usr/lib/$architecture/cmake/Qt6" >"$log" 2>&1 \
    || { cat "$log" >&2; exit 1; }
  printf '%s' "$mark" >"$build/mark"
fi

if [ $# -gt 0 ]; then
  exec "$tools/compile_files.py" "$build" "$@"
fi

failed=no
# Of a failure all is shown but the progress and the commands.
ninja -C "$build" -k 0 >"$log" 2>&1 || { grep -vE '^(\[[0-9]+/[0-9]+\]|/usr/bin/|: && |cd /)' "$log" >&2; failed=yes; }
# Headers of Linux stand in this folder; Qt's D-Bus is for Linux.
if grep -E -- '-(isystem|I) ?/usr/include[ "]|QT_DBUS_LIB' "$build/compile_commands.json" >&2; then
  echo "The build for the Mac looks into Linux's own headers." >&2
  failed=yes
fi
"$tools/audit_decls.py" "$sdk" || failed=yes
"$tools/audit_sources.py" "$sdk" "$root" || failed=yes
# Of which sources tests are built here; only what is said is needed, not the build.
linux=build/dev
if [ ! -f "$linux/compile_commands.json" ]; then
  linux=build/check-macos-linux
  cmake -G Ninja -S . -B "$linux" --toolchain cmake/DevCompiler.cmake -DCMAKE_BUILD_TYPE=Debug >"$log" 2>&1 \
    || { cat "$log" >&2; exit 1; }
fi
"$tools/lines_run.py" "$root" "$build/compile_commands.json" "$linux/compile_commands.json" || failed=yes
[ "$failed" = no ] && echo "$(grep -c '"file":' "$build/compile_commands.json") sources compile for macOS"
