#!/usr/bin/env bash
# Builds the game for Windows x64 with mingw-w64 and packs it as
# build-windows/mirvalde-5.0.0-windows-x64.zip: unzipped into any folder, it runs with no
# installer. Builds Qt for Windows first when the cache has none (tools/windows/build-qt.sh).
# Needs the packages of tools/windows/packages.txt.
set -euo pipefail
cd "$(dirname "$0")/../.."
root=$PWD
arch=x64
triplet=x86_64-w64-mingw32
cache=${MIRVALDE_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/mirvalde-windows}
qt=$cache/qt-$arch
out=$root/build-windows
version=$(sed -n 's/^project(Mirvalde VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
name=mirvalde-$version-windows-$arch

tools/windows/build-qt.sh "$arch"
[ -f "$qt/mingw-w64.cmake" ] || cp "cmake/mingw-w64-x86_64.cmake" "$qt/mingw-w64.cmake"

# Qt for Windows has no SVG module here: the pictures and the icon are drawn beforehand, by a
# tool of the game built for this machine.
cmake -S . -B "$out/host" -G Ninja -DBUILD_TESTING=OFF >/dev/null
cmake --build "$out/host" --target draw_pictures
mkdir -p "$out/pictures"
"$out/host/assets/icons/draw_pictures" assets/icons "$out/pictures"

# The build runs the sound generator under wine, in a prefix of its own.
export WINEPREFIX=$out/wine WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
"$qt/bin/qt-cmake" -S . -B "$out/$arch" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DQT_CHAINLOAD_TOOLCHAIN_FILE="$qt/mingw-w64.cmake" -DQT_HOST_PATH=/usr \
    -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake -DBUILD_TESTING=OFF \
    -DCMAKE_CROSSCOMPILING_EMULATOR=/usr/lib/wine/wine64 \
    -DMIRVALDE_PICTURES_QRC="$out/pictures/icons.qrc" \
    -DMIRVALDE_WINDOWS_ICON="$out/pictures/mirvalde.ico"
cmake --build "$out/$arch"
wineserver -k 2>/dev/null || true

# The game's folder: the executable, what it reads beside it, and every library it loads,
# found by following the imports from the executable and the plugins.
stage=$out/$name
rm -rf "$stage" "$out/$name.zip"
mkdir -p "$stage/platforms" "$stage/translations"
game=$out/$arch/game
cp "$game/mirvalde.exe" "$game/gagner.wav" "$game/perdu.wav" "$game/TIPOFDAY.TXT" "$stage/"
cp "$qt/plugins/platforms/qwindows.dll" "$stage/platforms/"
cp /usr/share/qt6/translations/qtbase_fr.qm "$stage/translations/"
gcc=$(dirname "$("$triplet-g++-posix" -print-libgcc-file-name)")
search=("$qt/bin" "$gcc" "/usr/$triplet/lib")
imports() { "$triplet-objdump" -p "$1" | sed -n 's/^\s*DLL Name: //p'; }
pending=("$stage/mirvalde.exe" "$stage/platforms/qwindows.dll")
while [ ${#pending[@]} -gt 0 ]; do
    file=${pending[0]}
    pending=("${pending[@]:1}")
    for dll in $(imports "$file"); do
        [ -e "$stage/$dll" ] && continue
        for dir in "${search[@]}"; do
            if [ -f "$dir/$dll" ]; then
                cp "$dir/$dll" "$stage/"
                pending+=("$stage/$dll")
                break
            fi
        done
    done
done
find "$stage" -name '*.exe' -o -name '*.dll' | xargs "$triplet-strip" --strip-unneeded
(cd "$out" && zip -qr9 "$name.zip" "$name")
echo "$out/$name.zip:"
unzip -l "$out/$name.zip"
