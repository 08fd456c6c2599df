#!/usr/bin/env bash
# Builds the game and runs every test twice: in a plain build, then under AddressSanitizer
# and UndefinedBehaviorSanitizer. Needs the packages that the README's test command installs.
set -euo pipefail
cd "$(dirname "$0")/.."

# No display is needed, and Qt wants a private runtime folder.
export QT_QPA_PLATFORM=offscreen
XDG_RUNTIME_DIR=$(mktemp -d)
export XDG_RUNTIME_DIR
trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=0
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

build_and_test() {
    local dir=$1
    shift
    cmake -S . -B "$dir" -G Ninja -DBUILD_TESTING=ON "$@"
    cmake --build "$dir"
    ctest --test-dir "$dir" --output-on-failure --timeout 120 -j "$(nproc)"
}

echo "== plain build"
build_and_test build -DMIRVALDE_BENCH=ON
echo "== AddressSanitizer and UndefinedBehaviorSanitizer build"
build_and_test build-sanitize -DMIRVALDE_SANITIZE=ON -DCMAKE_BUILD_TYPE=Debug
echo "== the rules built for Windows with mingw-w64, under wine64"
tools/windows/test-rules.sh
echo "== fuzz targets, 20 s each"
tools/fuzz.sh 20
