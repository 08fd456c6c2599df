#!/usr/bin/env python3
"""Measures what the unit and widget tests catch: injects each fault of tools/mutants.txt, one
at a time, into a copy of the work tree, rebuilds, runs the tests and prints a Markdown table of
which tests failed. Exits non-zero when the copy's own tests do not pass untouched.

  tools/mutants.py [--only ID,ID] [--check] [--work DIR] [--out TABLE.md]

--check only verifies that each fault's lines occur exactly once in their file. The copy is
taken from the work tree as it is (tracked and new files), so a test being cut can be measured
before it is committed. The fuzz campaigns and the package checks are not run.
"""
import argparse
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
SKIPPED_TESTS = "ScreenReader|Lintian|InstalledGame"


def read_mutants(path):
    """Blocks of '== file | what', then '- ' lines to find and '+ ' lines to put instead."""
    mutants, current = [], None
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if line.startswith("== "):
            file, _, what = line[3:].partition(" | ")
            current = {"id": f"M{len(mutants) + 1:02}", "file": file.strip(), "what": what.strip(),
                       "old": [], "new": [], "line": number}
            mutants.append(current)
        elif line[:2] in ("- ", "+ ") or line in ("-", "+"):
            current["old" if line[0] == "-" else "new"].append(line[2:])
        elif line.strip() and not line.startswith("#"):
            sys.exit(f"{path}:{number}: neither '== ', '- ', '+ ' nor a comment")
    return mutants


def check(mutants, tree):
    bad = 0
    for m in mutants:
        text = (tree / m["file"]).read_text(encoding="utf-8")
        found = text.count("\n".join(m["old"]))
        if found != 1 or not m["old"]:
            print(f"{m['id']} (line {m['line']}): found {found} times in {m['file']}")
            bad += 1
    return bad


def run(cmd, cwd, log):
    with open(log, "a", encoding="utf-8") as out:
        return subprocess.run(cmd, cwd=cwd, stdout=out, stderr=subprocess.STDOUT).returncode


def failed_tests(build, log):
    failed_log = build / "Testing/Temporary/LastTestsFailed.log"
    failed_log.unlink(missing_ok=True)
    run(["ctest", "--timeout", "60", "-j", str(os.cpu_count()), "-E", SKIPPED_TESTS], build, log)
    if not failed_log.exists():
        return []
    return [line.split(":", 1)[1] for line in failed_log.read_text().split()]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--list", default=str(ROOT / "tools/mutants.txt"))
    parser.add_argument("--only", default="")
    parser.add_argument("--check", action="store_true")
    parser.add_argument("--work", default=os.path.join(tempfile.gettempdir(), "mirvalde-mutants"))
    parser.add_argument("--out", default="")
    args = parser.parse_args()

    mutants = read_mutants(pathlib.Path(args.list))
    if args.only:
        mutants = [m for m in mutants if m["id"] in args.only.split(",")]
    if check(mutants, ROOT):
        return 1
    if args.check:
        print(f"{len(mutants)} mutants, each found once")
        return 0

    work = pathlib.Path(args.work)
    tree, build, log = work / "tree", work / "build", work / "log.txt"
    files = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=ROOT,
                           capture_output=True, check=True).stdout.decode().split("\0")
    shutil.rmtree(tree, ignore_errors=True)
    for name in filter(None, files):
        if (ROOT / name).is_file():
            (tree / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(ROOT / name, tree / name)
    log.unlink(missing_ok=True)
    os.environ.update(QT_QPA_PLATFORM="offscreen", XDG_RUNTIME_DIR=tempfile.mkdtemp())
    if run(["cmake", "-S", tree, "-B", build, "-G", "Ninja", "-DBUILD_TESTING=ON"], ROOT, log) or \
            run(["cmake", "--build", build], ROOT, log) or failed_tests(build, log):
        print(f"the untouched copy does not build or pass its tests: see {log}")
        return 1

    rows, caught = [], 0
    for m in mutants:
        path = tree / m["file"]
        original = path.read_text(encoding="utf-8")
        path.write_text(original.replace("\n".join(m["old"]), "\n".join(m["new"]), 1),
                        encoding="utf-8")
        if run(["cmake", "--build", build], ROOT, log):
            verdict = "does not build"
        else:
            tests = failed_tests(build, log)
            caught += bool(tests)
            suites = sorted({re.sub(r"\..*", "", t) for t in tests})
            verdict = f"caught ({len(tests)}): " + ", ".join(suites) if tests else "**not caught**"
        path.write_text(original, encoding="utf-8")
        row = f"| {m['id']} | `{m['file'].removeprefix('src/')}` | {m['what']} | {verdict} |"
        print(row, flush=True)
        rows.append(row)

    table = ["| mutant | file | fault | tests |", "|---|---|---|---|", *rows, "",
             f"{caught} of {len(mutants)} caught"]
    print(table[-1])
    if args.out:
        pathlib.Path(args.out).write_text("\n".join(table) + "\n", encoding="utf-8")
    run(["cmake", "--build", build], ROOT, log)
    return 0


if __name__ == "__main__":
    sys.exit(main())
