#!/usr/bin/env bash
# Makes dist/Vellmoor-VERSION-ARCHITECTURE.AppImage of a folder with the installed program (as dpkg-deb -x leaves it), with
# the Qt of this system and all that it stands on but the C library.
# Usage: packaging/appimage/make.sh VERSION FOLDER
set -euo pipefail
cd "$(dirname "$0")/../.."
# shellcheck source=scripts/common.sh
. scripts/common.sh

version=${1:?the version}
installed=${2:?the folder of the installed program}
machine=$(uname -m)
work=$PWD/build/package/appimage
app=$work/Vellmoor.AppDir
name=org.vellmoor.Vellmoor
target=dist/Vellmoor-$version-$machine.AppImage

install_debian "" g++ squashfs-tools patchelf libsquashfs-dev libzstd-dev zlib1g-dev liblzma-dev liblz4-dev python3 qt6-wayland

triplet=$(gcc -print-multiarch)
qt=/usr/lib/$triplet/qt6
rm -rf "$work"
mkdir -p "$app"/usr/{bin,lib,spare,chosen,plugins,qml,share/doc} dist

cp "$installed/usr/bin/vellmoor" "$app/usr/bin/"
cp -R "$installed"/usr/share/{applications,icons,metainfo} "$app/usr/share/"
cp packaging/appimage/AppRun "$app/"
cp "$app/usr/share/applications/$name.desktop" "$app/usr/share/icons/hicolor/scalable/apps/$name.svg" "$app/"
# Nothing is installed that the bus could start.
sed -i '/^DBusActivatable=/d' "$app/$name.desktop" "$app/usr/share/applications/$name.desktop"
ln -s "$name.svg" "$app/.DirIcon"

plugins=(
  platforms/libqxcb.so 'platforms/libqwayland-*.so' platforms/libqoffscreen.so
  'wayland-shell-integration/*.so' 'wayland-decoration-client/*.so' 'wayland-graphics-integration-client/*.so'
  'xcbglintegrations/*.so' imageformats/libqsvg.so iconengines/libqsvgicon.so
  platforminputcontexts/libcomposeplatforminputcontextplugin.so platforminputcontexts/libibusplatforminputcontextplugin.so
)
for pattern in "${plugins[@]}"; do
  compgen -G "$qt/plugins/$pattern" >/dev/null || { say "Qt here has no plugin $pattern"; exit 1; }
  for file in "$qt/plugins/"$pattern; do
    mkdir -p "$app/usr/plugins/$(basename "$(dirname "$file")")"
    cp -L "$file" "$app/usr/plugins/$(basename "$(dirname "$file")")/"
  done
done

# The QML modules that the views import, and what these import. The other styles of Qt's controls are not used.
scanner=$qt/libexec/qmlimportscanner
[ -x "$scanner" ] || scanner=/usr/lib/qt6/libexec/qmlimportscanner
"$scanner" -rootPath src/ui -importPath "$qt/qml" >"$work/imports.json"
python3 - "$work/imports.json" "$qt/qml" <<'PYTHON' >"$work/modules"
import json, pathlib, sys
found = {entry["path"] for entry in json.load(open(sys.argv[1])) if entry.get("path", "").startswith(sys.argv[2])}
other = ("Fusion", "Imagine", "Material", "Universal", "NativeStyle", "Windows", "macOS", "iOS", "designer")
for path in sorted(found):
    relative = pathlib.Path(path).relative_to(sys.argv[2])
    if not set(relative.parts) & set(other):
        print(relative)
PYTHON
while IFS= read -r module; do
  mkdir -p "$app/usr/qml/$module"
  find "$qt/qml/$module" -maxdepth 1 -type f ! -name '*.qmltypes' -exec cp -t "$app/usr/qml/$module" {} +
done <"$work/modules"

# Qt's own libraries are always these; of the rest the start prefers the system's. The C library is the system's: the
# programs that the AppImage runs on are those of this system's age and younger.
c_library='^(ld-linux.*|libc|libm|libdl|librt|libpthread|libresolv|libutil|libanl|libnss_.*)\.so'
{ find "$app/usr" -name '*.so' -type f; echo "$app/usr/bin/vellmoor"; } | xargs ldd \
  | sed -n 's/^\t[^ ]* => \(\/[^ ]*\) .*/\1/p' | sort -u >"$work/libraries"
while IFS= read -r library; do
  file=$(basename "$library")
  if [[ $file =~ $c_library ]]; then
    continue
  elif [[ $file == libQt6* ]]; then
    cp -L "$library" "$app/usr/lib/"
  else
    cp -L "$library" "$app/usr/spare/"
  fi
done <"$work/libraries"
# Their licences. /lib is /usr/lib: a package may have named a library either way.
{ sed 'p; s|^/usr||; t; s|^|/usr|' "$work/libraries" | xargs dpkg-query -S 2>/dev/null || true; } \
  | sed 's/:.*//' | sort -u >"$work/packages"
while IFS= read -r package; do
  mkdir -p "$app/usr/share/doc/$package"
  cp -L "/usr/share/doc/$package/copyright" "$app/usr/share/doc/$package/"
done < <({ cat "$work/packages"; printf '%s\n' libsquashfs1 libzstd1; } | sort -u)
mkdir -p "$app/usr/share/doc/vellmoor"
cp debian/copyright "$app/usr/share/doc/vellmoor/"

# The old kind of run path, for it also holds for the libraries of libraries and for plugins, unless they have one themselves.
find "$app/usr/lib" "$app/usr/spare" "$app/usr/plugins" "$app/usr/qml" -name '*.so*' -type f | while IFS= read -r file; do
  [ -z "$(patchelf --print-rpath "$file")" ] || patchelf --remove-rpath "$file"
done
patchelf --force-rpath --set-rpath "\$ORIGIN/../lib:\$ORIGIN/../chosen" "$app/usr/bin/vellmoor"
printf '[Paths]\nPrefix=..\nPlugins=plugins\nQmlImports=qml\n' >"$app/usr/bin/qt.conf"

g++ -std=c++20 -Os -Wall -Wextra -static -s "-DVELLMOOR_VERSION=\"$version\"" packaging/appimage/start.cpp -o "$work/start" \
  -lsquashfs -lzstd -lz -llzma -llz4 -lpthread
# The three bytes by which desktops know an AppImage of the second kind.
printf 'AI\002' | dd of="$work/start" bs=1 seek=8 conv=notrunc status=none

SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
export SOURCE_DATE_EPOCH
mksquashfs "$app" "$work/image" -comp zstd -Xcompression-level 19 -b 1M -all-root -no-xattrs -noappend -no-progress -quiet
cat "$work/start" "$work/image" >"$target"
chmod 755 "$target"
printf '%s: %s MiB\n' "$target" "$(($(stat -c %s "$target") >> 20))"
