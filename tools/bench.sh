#!/usr/bin/env bash
# Measures the game's speed and memory against baselines run beside it, on a virtual display
# with a window manager as a player's desktop has, and prints the table of bench/README.md.
# Exits non-zero when a target is missed. BENCH_RUNS and BENCH_IDLE_RUNS set how many runs
# each median takes (11 and 3).
# Needs the packages of the README's test command.
set -euo pipefail
cd "$(dirname "$0")/.."

if [ "${1:-}" != --inside ]; then
    cmake -S . -B build -G Ninja -DMIRVALDE_BENCH=ON >/dev/null
    cmake --build build >/dev/null
    # A desktop session has its message bus; without one, every Qt program would start a bus
    # of its own while it starts up.
    exec dbus-run-session -- xvfb-run -a -s "-screen 0 1280x1024x24" "$0" --inside
fi

openbox >/dev/null 2>&1 &
trap 'kill $! 2>/dev/null' EXIT
sleep 1
python3 bench/run.py build
