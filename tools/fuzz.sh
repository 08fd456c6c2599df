#!/usr/bin/env bash
# Builds the fuzz targets with clang, libFuzzer, AddressSanitizer and UndefinedBehaviorSanitizer
# in build-fuzz, and runs each one for the given seconds (20 by default) from a copy of its seed
# corpus in fuzz/corpus, which never grows here. Exits non-zero when a target finds a fault; the
# input that shows it is kept in build-fuzz/fuzz-artifacts and the log in build-fuzz/fuzz-logs.
# MIRVALDE_FUZZ_TARGETS="tips settings" runs only those.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
secs=${1:-20}
targets=(${MIRVALDE_FUZZ_TARGETS:-number tips registry settings})

export CC=clang CXX=clang++
cmake -S . -B build-fuzz -G Ninja -DMIRVALDE_FUZZ=ON -DBUILD_TESTING=OFF > /dev/null
cmake --build build-fuzz --target "${targets[@]/#/fuzz_}"

# No display is needed; Qt wants a private runtime folder, and the settings target makes its
# configuration folder under TMPDIR.
export QT_QPA_PLATFORM=offscreen
# The settings target writes its file after every input: on tmpfs it runs three times faster.
work=$(mktemp -d -p /dev/shm 2>/dev/null || mktemp -d)
trap 'rm -rf "$work"' EXIT
export XDG_RUNTIME_DIR=$work/runtime TMPDIR=$work/tmp
mkdir -m 0700 "$XDG_RUNTIME_DIR" "$TMPDIR"
export UBSAN_OPTIONS=print_stacktrace=1
artifacts=$root/build-fuzz/fuzz-artifacts
logs=$root/build-fuzz/fuzz-logs
mkdir -p "$artifacts" "$logs"

failed=0
for target in "${targets[@]}"; do
    cp -r "fuzz/corpus/$target" "$work/$target"
    log=$logs/$target.log
    start=$SECONDS
    status=0
    "build-fuzz/fuzz/fuzz_$target" -max_total_time="$secs" -timeout=10 -rss_limit_mb=2048 \
        -print_final_stats=1 -artifact_prefix="$artifacts/$target-" "$work/$target" \
        > "$log" 2>&1 || status=$?
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -n 1)
    cov=$(grep -o 'cov: [0-9]*' "$log" | tail -n 1 || true)
    printf '%-9s %8s runs in %3d s  %s\n' "$target" "${runs:-?}" $((SECONDS - start)) "$cov"
    if [ "$status" -ne 0 ]; then
        failed=1
        grep -E '_fuzz: |ERROR: |SUMMARY: |runtime error' "$log" | head -n 5 || true
        sed -n 's/.*Test unit written to /  input kept in /p' "$log"
        echo "  log in $log"
    fi
done
exit "$failed"
