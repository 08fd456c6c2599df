#!/usr/bin/env python3
"""Prints the share of the C++ that is tests: non-blank, non-comment lines of the .cpp and .h
files under tests/ and fuzz/, against those of every tracked or new file of the repository.

  tools/test-share.py [-v]     -v also lists the test files, largest first
"""
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent


def code_lines(path):
    count, in_block = 0, False
    for line in path.read_text(encoding="utf-8", errors="replace").splitlines():
        text = line.strip()
        if in_block:
            if "*/" not in text:
                continue
            in_block, text = False, text.split("*/", 1)[1].strip()
        if text.startswith("/*"):
            if "*/" not in text:
                in_block = True
                continue
            text = text.split("*/", 1)[1].strip()
        count += bool(text) and not text.startswith("//")
    return count


files = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT,
                       capture_output=True, text=True, check=True).stdout.split()
counts = {name: code_lines(ROOT / name) for name in files
          if name.endswith((".cpp", ".h")) and (ROOT / name).is_file()}
tests = {name: n for name, n in counts.items() if name.startswith(("tests/", "fuzz/"))}
total, test = sum(counts.values()), sum(tests.values())
print(f"tests/ and fuzz/: {test} of {total} lines of C++, {100 * test / total:.1f} %")
if "-v" in sys.argv:
    for name, n in sorted(tests.items(), key=lambda item: -item[1]):
        print(f"{n:6} {name}")
