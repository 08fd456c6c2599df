#!/usr/bin/env python3
"""Runs every measurement of the game beside its baseline and prints the table.

Run by tools/bench.sh inside a virtual X display with a window manager. Each figure is the
median of several runs, game and baseline taking turns so that a busy moment of the machine
hits both alike.
"""
import json
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

BUILD = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "build")
RUNS = int(os.environ.get("BENCH_RUNS", "11"))
IDLE_RUNS = int(os.environ.get("BENCH_IDLE_RUNS", "3"))
IDLE_SECONDS = 10
PROBE = str(BUILD / "bench/launch_probe")


def probe(title, command, idle=0, env=None):
    args = [PROBE] + (["--idle", str(idle)] if idle else []) + [title] + command
    out = subprocess.run(args, capture_output=True, text=True, check=True, env=env).stdout
    return {key: float(value) for key, value in (line.split() for line in out.splitlines())}


def game_environment():
    """A fresh user: the tip of the day turned off, a private runtime folder."""
    home = tempfile.mkdtemp(prefix="mirvalde-bench-")
    os.makedirs(f"{home}/mirvalde")
    os.makedirs(f"{home}/runtime", mode=0o700)
    with open(f"{home}/mirvalde/mirvalde.conf", "w") as conf:
        conf.write("[Options]\nShow%20Tips%20at%20Startup=0\n")
    return dict(os.environ, XDG_CONFIG_HOME=home, XDG_RUNTIME_DIR=f"{home}/runtime")


def median_of(runs, key):
    return statistics.median(run[key] for run in runs)


def google_benchmark(name):
    out = subprocess.run([str(BUILD / "bench" / name), "--benchmark_format=json"],
                         capture_output=True, text=True, check=True).stdout
    return {b["name"].split("/")[0]: b for b in json.loads(out)["benchmarks"]}


def seconds(b):
    scale = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}[b["time_unit"]]
    return b["real_time"] * scale, b["cpu_time"] * scale


def main():
    env = game_environment()
    game = [str(BUILD / "game/mirvalde")]
    bare = [str(BUILD / "bench/bare_window")]
    tavrines = [str(BUILD / "bench/tavrines_play")]

    start_game, start_bare = [], []
    for _ in range(RUNS):
        start_game.append(probe("Mirvalde", game, env=env))
        start_bare.append(probe("bare-window", bare))

    idle_main, idle_tavrines, play, well = [], [], [], []
    for _ in range(IDLE_RUNS):
        idle_main.append(probe("Mirvalde", game, IDLE_SECONDS, env))
        idle_tavrines.append(probe("Tavrines", tavrines, IDLE_SECONDS))
        play.append(probe("Tavrines", tavrines + ["--play"], IDLE_SECONDS))
        well.append(probe("bare-well", bare + ["--well"], IDLE_SECONDS))

    blocks = google_benchmark("blocks_bench")
    tips = google_benchmark("tips_bench")
    tips_file = pathlib.Path(tempfile.gettempdir()) / "mirvalde-tips-bench/TIPOFDAY.TXT"
    wc = []
    for _ in range(5):
        begin = time.perf_counter()
        subprocess.run(["wc", "-l", str(tips_file)], capture_output=True, check=True)
        wc.append(time.perf_counter() - begin)

    rows = []

    def row(what, figure, baseline, ratio, target, met):
        rows.append((what, figure, baseline, ratio, target, "yes" if met else "NO"))

    g, b = median_of(start_game, "mapped_ms"), median_of(start_bare, "mapped_ms")
    row("start-up to the main window mapped", f"{g:.0f} ms", f"{b:.0f} ms", f"{g / b:.2f} ×",
        "≤ 1.2 ×", g / b <= 1.2)
    g, b = median_of(start_game, "peak_rss_kb"), median_of(start_bare, "peak_rss_kb")
    row("peak resident memory of the start-up", f"{g / 1024:.1f} MB", f"{b / 1024:.1f} MB",
        f"{g / b:.2f} ×", "≤ 1.2 ×", g / b <= 1.2)
    for what, runs in (("main window", idle_main), ("Tavrine before a game", idle_tavrines)):
        cpu = median_of(runs, "idle_cpu_ms")
        row(f"CPU over {IDLE_SECONDS} s, {what}, idle", f"{cpu:.0f} ms", "—", "—", "< 20 ms",
            cpu < 20)
    g, b = median_of(play, "idle_cpu_ms"), median_of(well, "idle_cpu_ms")
    share = g / (IDLE_SECONDS * 10)
    row(f"CPU of a game at speed 5 over {IDLE_SECONDS} s (no blink)",
        f"{g:.0f} ms ({share:.2f} % of a core)", f"{b:.0f} ms", f"{g / b:.2f} ×", "≤ 1.5 ×",
        g / b <= 1.5)

    att = blocks["BM_Attendre"]
    real, cpu = seconds(att)
    within = att["within_20_22ms"]
    sleep = blocks["BM_SleepToTheMiddleOfThePause"]["within_20_22ms"]
    row("Attendre, 1,000 waits", f"{real * 1e3:.2f} ms each, {within * 100:.1f} % in (20, 22] ms,"
        f" {cpu / real * 100:.2f} % of a core", f"a sleep to 20.5 ms: {sleep * 100:.1f} % in"
        " (20, 22] ms", "—", "99 % in (20, 22] ms, < 1 % CPU",
        within >= 0.99 and cpu / real < 0.01)
    real, _ = seconds(blocks["BM_LineSearchPassOnAFullWell"])
    row("line search, one pass on a full well", f"{real * 1e9:.0f} ns", "—", "—", "< 1 µs",
        real < 1e-6)
    real, _ = seconds(blocks["BM_TickMovesAndPaintsTheTrio"])
    row("one tick that moves and paints the trio", f"{real * 1e6:.1f} µs", "—", "—", "reported",
        True)
    load = tips["BM_LoadTipsOfAMillionLines"]
    real, _ = seconds(load)
    base = statistics.median(wc)
    row(f"LoadTips, 1,000,000 lines ({load['file_MB']:.0f} MB)", f"{real * 1e3:.0f} ms",
        f"wc -l {base * 1e3:.0f} ms", f"{real / base:.1f} ×", "< 0.25 s", real < 0.25)
    growth = load["peak_growth_x_file"]
    row("LoadTips, memory against the file's size", f"{growth:.2f} ×", "—", "—", "< 1.5 ×",
        growth < 1.5)

    print(f"Medians of {RUNS} start-ups and {IDLE_RUNS} idle or playing runs; "
          f"{os.cpu_count()} cores.\n")
    header = ("what", "this machine", "baseline", "ratio", "target", "met")
    print("| " + " | ".join(header) + " |")
    print("|" + "---|" * len(header))
    for r in rows:
        print("| " + " | ".join(r) + " |")
    return 0 if all(r[-1] == "yes" for r in rows) else 1


if __name__ == "__main__":
    sys.exit(main())
