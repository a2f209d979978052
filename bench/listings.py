#!/usr/bin/env python3
"""Measures the listings of zav beside the same modes of SQLite's own shell.

    bench/listings.py ZAV ZAV_MAKE_DATABASE MARKDOWN_FILE

Writes the figures and fails if one is out of its bound.
"""

import os
import statistics
import subprocess
import sys
import tempfile

TURNS = 9
MODES = {"csv": ("-csv", 1.5), "json": ("-json", 1.5), "table": ("-column", 2)}


def run(*command):
    """The seconds of processor time that a command takes, and its most memory in bytes."""
    with subprocess.Popen(command, stdout=subprocess.DEVNULL) as process:
        _, _, usage = os.wait4(process.pid, 0)
        process.returncode = 0
    return usage.ru_utime + usage.ru_stime, usage.ru_maxrss * 1024


def row(zav, file, mode):
    """The medians of both, and of the ratio within a turn."""
    option, bound = MODES[mode]
    turns = []
    for _ in range(TURNS):
        ours, _ = run(zav, "texts", "--format", mode, file)
        theirs, _ = run(
            "sqlite3", "-readonly", "-header", option, file, "SELECT * FROM descriptions"
        )
        turns.append((ours, theirs, ours / theirs))
    return [statistics.median(values) for values in zip(*turns)] + [bound]


def main():
    zav, make, page = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        file = os.path.join(folder, "faults.db")
        subprocess.run([make, file, "13107", "indexed"], check=True)
        rows = {mode: row(zav, file, mode) for mode in MODES}
        # A language that nothing has: the records are read, and none is written.
        _, records = run(zav, "texts", "--language", "65535", file)
        memory = max(run(zav, "texts", "--format", mode, file)[1] for mode in MODES) / records
    lines = ["| 65,535 texts | zav | sqlite3 | ratio | bound |", "| --- | ---: | ---: | ---: | ---: |"]
    for mode, (ours, theirs, ratio, bound) in rows.items():
        lines.append(f"| {mode} | {ours:.3f} s | {theirs:.3f} s | {ratio:.2f} | {bound} |")
    lines += ["", f"The most memory is {memory:.2f} times that of reading alone (bound 1.1)."]
    with open(page, "w", encoding="utf-8") as output:
        output.write("\n".join(lines) + "\n")
    print("\n".join(lines))
    if memory > 1.1 or any(ratio > bound for _, _, ratio, bound in rows.values()):
        sys.exit("error: a listing is out of its bounds")


main()
