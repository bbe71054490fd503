#!/usr/bin/env bash
# Proves on Linux that a Mac compiles its sources: each one is compiled for macOS 14 on Apple silicon against Darwin's C
# headers, libc++, Qt's headers and the declarations in tools/macos-check/decls, which are audited against a description
# of the macOS SDK. docs/macos.md tells what that shows and what it does not.
# Usage: scripts/check-macos.sh [--root DIR] [FILE...]
#   --root DIR  check that checkout instead of this one
#   FILE...     only these files (paths below the root), without the audit
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
decls=$tools/decls
sdk=$("$tools/sdk.sh")
cd "$root"
out=build/check-macos
mkdir -p "$out"

# What a Mac compiles: everything but the folders of Linux, the benchmarks, and what says that it is for Linux.
mapfile -t sources < <(git ls-files -co --exclude-standard -- 'src/*.cpp' 'src/*.mm' 'tools/probe/*.cpp' 'tests/*.cpp' \
  | grep -vE '(^|/)linux/')
mapfile -t headers < <(git ls-files -co --exclude-standard -- 'src/*.h' 'tools/probe/*.h' 'tests/*.h' \
  | grep -vE '(^|/)linux/')

only=()
for file in "$@"; do
  only+=("$(realpath --relative-to="$root" "$file")")
done

# The project's own warnings, as CMake gives them to clang.
mapfile -t warnings < <(sed -e 's/#.*//' -e '/\$</d' cmake/Warnings.cmake | grep -oE -- '-W[a-z0-9=-]+')
[ "${#warnings[@]}" -gt 10 ] || { echo "cmake/Warnings.cmake lists too few warnings." >&2; exit 1; }
warnings+=(-Wunguarded-availability -Wundeclared-selector -Wnullable-to-nonnull-conversion)

flags=(--target=arm64-apple-macos14.0 -isysroot "$sdk" -Wno-darwin-sdk-settings -std=c++23
  -isystem "$decls" -isystem "$sdk/others")
qt=$(qmake6 -query QT_INSTALL_HEADERS)
flags+=(-isystem "$qt")
for module in Core Gui Qml QmlIntegration QmlModels Quick QuickControls2 Svg Network Test QuickTest; do
  flags+=(-isystem "$qt/Qt$module")
done
while read -r folder; do
  flags+=(-I "$folder")
done < <(printf '%s\n' "${headers[@]}" | xargs -n 1 dirname | sort -u)
launcher=$(command -v ccache || true)
moc=$(qmake6 -query QT_INSTALL_LIBEXECS)/moc

{
  cat <<RULES
ninja_required_version = 1.10
builddir = $out
flags = ${flags[*]} ${warnings[*]}
rule cxx
  command = $launcher clang++-19 \$flags -DVELLMOOR_SOURCE_DIR='"/"' -DVELLMOOR_PROBE='"/"' -MMD -MF \$out.d -c \$language \$in -o \$out
  depfile = \$out.d
  deps = gcc
  description = \$in
rule analyze
  command = clang++-19 --analyze \$flags \$language -MMD -MF \$out.d -Xclang -analyzer-output=text -Xclang -analyzer-werror $
    -Xclang -analyzer-checker=osx,nullability \$in -o \$out.text && touch \$out
  depfile = \$out.d
  deps = gcc
  description = analysis of \$in
rule moc
  command = $moc -D__APPLE__ -DQ_OS_MACOS -DQ_OS_DARWIN -I src -f \$name \$in -o \$out
  description = moc \$in
RULES
  for file in "${sources[@]}" "${only[@]}"; do
    case $file in
      *.mm) language='-x objective-c++ -fobjc-arc' ;;
      *.cpp) language='-x c++' ;;
      *) continue ;;
    esac
    printf 'build %s/%s.o: cxx %s\n  language = %s\n' "$out" "$file" "$file" "$language"
    if [[ $file == *.mm ]]; then
      printf 'build %s/%s.analyzed: analyze %s\n  language = %s\n' "$out" "$file" "$file" "$language"
    fi
  done | awk '/^build/ { skip = seen[$2]++ } !skip'
  for file in "${headers[@]}"; do
    grep -qE '\bQ_(OBJECT|GADGET|NAMESPACE)\b' "$file" || continue
    printf 'build %s/%s.moc.cpp: moc %s\n  name = %s\n' "$out" "$file" "$file" "$(basename "$file")"
    printf 'build %s/%s.moc.cpp.o: cxx %s/%s.moc.cpp\n  language = -x c++ -w\n' "$out" "$file" "$out" "$file"
  done
} >"$out/build.ninja"

targets=()
for file in "${only[@]}"; do
  case $file in
    *.h) targets+=("$out/$file.moc.cpp.o") ;;
    *) targets+=("$out/$file.o") ;;
  esac
  [[ $file != *.mm ]] || targets+=("$out/$file.analyzed")
done
ninja -f "$out/build.ninja" -k 0 --quiet "${targets[@]}"
