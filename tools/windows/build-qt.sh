#!/usr/bin/env bash
# Cross-builds Qt Core, Gui and Widgets for Windows with mingw-w64, from Debian's own source
# of the Qt the host has (the host's moc, rcc and uic serve the cross-build). Built once into a
# cache folder outside the checkout; a second run finds it there and does nothing.
#
#   tools/windows/build-qt.sh [x64|x86]     (x64 by default)
#
# MIRVALDE_WINDOWS_CACHE names the cache (default ~/.cache/mirvalde-windows). Qt lands in
# $MIRVALDE_WINDOWS_CACHE/qt-ARCH. Needs the packages of tools/windows/packages.txt.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
arch=${1:-x64}
case $arch in
    x64) triplet=x86_64 ;;
    x86) triplet=i686 ;;
    *) echo "build-qt.sh: x64 or x86, not '$arch'" >&2; exit 2 ;;
esac
cache=${MIRVALDE_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/mirvalde-windows}
prefix=$cache/qt-$arch
if [ -f "$prefix/.built" ]; then
    echo "Qt for Windows $arch: $prefix (already built)"
    exit 0
fi

# Debian's source of the host's Qt, fetched through apt once a deb-src entry exists.
version=$(dpkg-query -W -f '${Version}' qt6-base-dev)
upstream=${version%%-*}
src=$cache/src
mkdir -p "$src"
tarball=$src/qt6-base_${upstream}.orig.tar.xz
if [ ! -f "$tarball" ]; then
    if ! apt-get source --print-uris "qt6-base=$version" 2>/dev/null | grep -q 'orig\.tar'; then
        echo "A deb-src entry for bookworm main, so that apt-get source finds Qt's source"
        printf 'Types: deb-src\nURIs: http://deb.debian.org/debian\nSuites: bookworm\nComponents: main\nSigned-By: /usr/share/keyrings/debian-archive-keyring.gpg\n' \
            >/etc/apt/sources.list.d/mirvalde-deb-src.sources
        apt-get update
    fi
    (cd "$src" && apt-get source --download-only "qt6-base=$version")
fi
tree=$src/qtbase-everywhere-src-${upstream%%+*}
[ -d "$tree" ] || tar -C "$src" -xf "$tarball"

# Only what the game uses: no network, databases, D-Bus, printing, test library,
# threads pool, XML, Vulkan, or image formats other than PNG and ICO; Fusion is the game's
# style, built into the widgets.
build=$cache/build-qt-$arch
rm -rf "$build"
start=$(date +%s)
# Qt keeps the path of its toolchain file: a copy beside it outlives any checkout.
mkdir -p "$prefix"
cp "$here/../../cmake/mingw-w64.cmake" "$prefix/"
cp "$here/../../cmake/mingw-w64-$triplet.cmake" "$prefix/toolchain.cmake"
cmake -S "$tree" -B "$build" -G Ninja \
    -DCMAKE_TOOLCHAIN_FILE="$prefix/toolchain.cmake" \
    -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
    -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=ON -DCMAKE_INSTALL_PREFIX="$prefix" \
    -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DQT_BUILD_BENCHMARKS=OFF \
    -DFEATURE_network=OFF -DFEATURE_sql=OFF -DFEATURE_dbus=OFF \
    -DFEATURE_tabletevent=OFF -DFEATURE_printsupport=OFF -DFEATURE_testlib=OFF \
    -DFEATURE_concurrent=OFF -DFEATURE_xml=OFF -DFEATURE_vulkan=OFF -DFEATURE_jpeg=OFF \
    -DFEATURE_gif=OFF -DFEATURE_style-windowsvista=OFF -DFEATURE_textodfwriter=OFF \
    -DFEATURE_textmarkdownreader=OFF -DFEATURE_textmarkdownwriter=OFF \
    -DFEATURE_sessionmanager=OFF -DFEATURE_sql-sqlite=OFF -DFEATURE_zstd=OFF \
    -DFEATURE_system-zlib=OFF -DFEATURE_system-pcre2=OFF -DFEATURE_system-png=OFF \
    -DFEATURE_system-harfbuzz=OFF -DFEATURE_freetype=OFF
cmake --build "$build"
cmake --install "$build"
rm -rf "$build"
touch "$prefix/.built"
echo "Qt for Windows $arch built in $(($(date +%s) - start)) s: $prefix"
