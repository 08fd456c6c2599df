#!/usr/bin/env bash
# Builds the rules of every window and their tests for Windows x64 with mingw-w64 (no Qt needed)
# and runs them under wine64, in a wine prefix made afresh in a temporary folder. Then writes
# values into wine's machine registry with `reg add` and reads them back through the game's
# Windows registry. Needs the packages of tools/packages-test.txt.
#
#   tools/windows/test-rules.sh [BUILD_FOLDER]     (build-windows-rules by default)
set -euo pipefail
cd "$(dirname "$0")/../.."
root=$PWD
build=$root/${1:-build-windows-rules}
toolchain=$root/cmake/mingw-w64-x86_64.cmake
wine64=/usr/lib/wine/wine64
# Static programs: wine needs no mingw runtime beside them.
static=(-DCMAKE_EXE_LINKER_FLAGS="-static")

# GoogleTest from Debian's own source, built once with the same compilers.
gtest=$build/googletest
if [ ! -f "$gtest/lib/cmake/GTest/GTestConfig.cmake" ]; then
    cmake -S /usr/src/googletest -B "$gtest-build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$gtest" -DBUILD_GMOCK=OFF \
        "${static[@]}" >/dev/null
    cmake --build "$gtest-build" >/dev/null
    cmake --install "$gtest-build" >/dev/null
fi

prefix=$(mktemp -d)
export WINEPREFIX=$prefix/wine WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
cleanup() {
    WINEPREFIX=$prefix/wine wineserver -k 2>/dev/null || true
    rm -rf "$prefix"
}
trap cleanup EXIT
# The prefix is made while the game's rules build.
(wineboot -i >/dev/null 2>&1 && wineserver -w) &
booting=$!

cmake -S . -B "$build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DMIRVALDE_RULES_ONLY=ON \
    -DBUILD_TESTING=ON -DGTest_DIR="$gtest/lib/cmake/GTest" \
    -DCMAKE_CROSSCOMPILING_EMULATOR="$wine64" "${static[@]}"
cmake --build "$build"
wait "$booting"
# One server for every test program, rather than one each; the first program also starts
# wine's services, which would hold the output of the test that started them open to the end.
wineserver -p
wine cmd /c exit >/dev/null 2>&1

echo "== the rules' tests, under wine64"
ctest --test-dir "$build" --output-on-failure --timeout 120

echo "== the machine registry, written with reg add, read through the game's calls"
about=$build/tests/about/about_test.exe
folder=$prefix/outils
mkdir -p "$folder"
: >"$folder/MSINFO32.EXE"
wine reg add 'HKLM\SOFTWARE\Mirvalde\Essai' /v Texte /t REG_SZ \
    /d 'C:\Program Files\Infos\infos.exe' /f >/dev/null
wine reg add 'HKLM\SOFTWARE\Mirvalde\Essai' /v Nombre /t REG_DWORD /d 0x12345678 /f >/dev/null
wine reg add 'HKLM\SOFTWARE\Mirvalde\Essai' /v Vide /t REG_BINARY /f >/dev/null
wine reg add 'HKLM\SOFTWARE\Microsoft\Shared Tools\MSINFO' /v PATH /t REG_SZ \
    /d 'C:\Program Files\Infos\infos.exe' /f >/dev/null
wine reg add 'HKLM\SOFTWARE\Microsoft\Shared Tools Location' /v MSINFO /t REG_SZ \
    /d "$(winepath -w "$folder")" /f >/dev/null
wine reg query 'HKLM\SOFTWARE\Mirvalde\Essai'
"$wine64" "$about" --gtest_filter='WindowsRegistryTest.ReadsWhatRegAddWrote:WindowsRegistryTest.StartsTheProgramThatThePathValueNames'
wine reg delete 'HKLM\SOFTWARE\Microsoft\Shared Tools\MSINFO' /v PATH /f >/dev/null
"$wine64" "$about" --gtest_filter='WindowsRegistryTest.WithoutThePathValueStartsTheProgramOfTheFolder'
