#!/usr/bin/env bash
# Builds the game for Windows with mingw-w64 and packs it as
# build-windows/mirvalde-5.0.0-windows-ARCH.zip: unzipped into any folder, it runs with no
# installer. Builds Qt for Windows first when the cache has none (tools/windows/build-qt.sh).
# Needs the packages of tools/packages.txt and tools/windows/packages.txt.
#
#   tools/windows/package.sh [x64|x86]     (x64 by default)
set -euo pipefail
cd "$(dirname "$0")/../.."
root=$PWD
arch=${1:-x64}
case $arch in
    x64) cpu=x86_64 ;;
    x86) cpu=i686 ;;
    *) echo "package.sh: x64 or x86, not '$arch'" >&2; exit 2 ;;
esac
triplet=$cpu-w64-mingw32
cache=${MIRVALDE_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/mirvalde-windows}
qt=$cache/qt-$arch
out=$root/build-windows
version=$(sed -n 's/^project(Mirvalde VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
name=mirvalde-$version-windows-$arch

tools/windows/build-qt.sh "$arch"

# Qt for Windows has no SVG module here: the pictures and the icon are drawn beforehand by a
# tool of the game built for this machine, which also synthesises the sounds.
cmake -S . -B "$out/host" -G Ninja -DBUILD_TESTING=OFF >/dev/null
cmake --build "$out/host" --target draw_pictures soundgen
mkdir -p "$out/pictures"
"$out/host/assets/icons/draw_pictures" assets/icons "$out/pictures"

"$qt/bin/qt-cmake" -S . -B "$out/$arch" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DQT_CHAINLOAD_TOOLCHAIN_FILE="$qt/toolchain.cmake" -DQT_HOST_PATH=/usr \
    -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake -DBUILD_TESTING=OFF \
    -DMIRVALDE_HOST_SOUNDGEN="$out/host/assets/sounds/soundgen" \
    -DMIRVALDE_PICTURES_QRC="$out/pictures/icons.qrc" \
    -DMIRVALDE_WINDOWS_ICON="$out/pictures/mirvalde.ico"
cmake --build "$out/$arch"

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
