#!/usr/bin/env python3
"""Measures zav check beside what SQLite's own shell takes to look at the same file.

    bench/check.py ZAV ZAV_MAKE_DATABASE MARKDOWN_FILE

Writes the figures and fails if one is out of its bound.
"""

import os
import sqlite3
import statistics
import subprocess
import sys
import tempfile

TURNS = 7
MOST_TIME = 4  # of SQLite's integrity check and two reads of both tables
MOST_GROWTH = 5  # for four times the texts
MOST_MEMORY = 6  # times the file

READ_TABLES = "SELECT * FROM fault_type_definition; SELECT * FROM descriptions;"


# Short texts, each with a placeholder that no other has.
PLACEHOLDERS = """
UPDATE descriptions SET name = '{a' || id || '}', short_description = '{b' || id || '}',
    description = '{c' || id || '}', comment = '{d' || id || '}', remedy = '{e' || id || '}';
VACUUM;
"""


def run(*command):
    """The seconds of processor time that a command takes, and its most memory in bytes."""
    with subprocess.Popen(command, stdout=subprocess.DEVNULL) as process:
        _, _, usage = os.wait4(process.pid, 0)
        process.returncode = 0
    return usage.ru_utime + usage.ru_stime, usage.ru_maxrss * 1024


def shell(file):
    integrity, _ = run("sqlite3", "-readonly", file, "PRAGMA integrity_check")
    read = sum(run("sqlite3", "-readonly", "-csv", file, READ_TABLES)[0] for _ in range(2))
    return integrity + read


def medians(zav, file, turns):
    """Of check, of SQLite, and of the ratio within a turn."""
    checks = []
    others = []
    for _ in range(turns):
        checks.append(run(zav, "check", file)[0])
        others.append(shell(file))
    ratios = [check / other for check, other in zip(checks, others)]
    return [statistics.median(values) for values in (checks, others, ratios)]


def growth(zav, make, folder):
    """Time and memory for two sizes of a file whose texts all have a finding."""
    rows = []
    for texts in (250_000, 1_000_000):
        file = os.path.join(folder, f"{texts}.db")
        subprocess.run([make, file, str(texts // 5), "indexed"], check=True)
        runs = [run(zav, "check", file) for _ in range(3)]
        seconds = statistics.median(each[0] for each in runs)
        rows.append((texts, os.path.getsize(file), seconds, max(each[1] for each in runs)))
    return rows


def placeholders(zav, file):
    """Size and memory for the same file, but with placeholders."""
    with sqlite3.connect(file) as database:
        database.executescript(PLACEHOLDERS)
    return os.path.getsize(file), run(zav, "check", file)[1]


def main():
    zav, make, page = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        file = os.path.join(folder, "faults.db")
        subprocess.run([make, file, "13107", "indexed"], check=True)
        check, other, ratio = medians(zav, file, TURNS)
        small, large = growth(zav, make, folder)
        short_size, short_memory = placeholders(zav, file)
    slower = large[2] / small[2]
    memory = max(most / size for _, size, _, most in (small, large))
    memory = max(memory, short_memory / short_size)
    lines = [
        "| 65,535 texts | processor time | ratio | bound |",
        "| --- | ---: | ---: | ---: |",
        f"| `zav check` | {check:.3f} s | {ratio:.2f} | {MOST_TIME} |",
        f"| `PRAGMA integrity_check` and two reads by `sqlite3 -csv` | {other:.3f} s | | |",
        "",
        "| texts that all have a finding | file | processor time | memory | of the file |",
        "| ---: | ---: | ---: | ---: | ---: |",
    ]
    for texts, size, seconds, most in (small, large):
        lines.append(
            f"| {texts:,} | {size / 2**20:.1f} MiB | {seconds:.2f} s "
            f"| {most / 2**20:.1f} MiB | {most / size:.2f} |"
        )
    lines += [
        "",
        f"Of 65,535 rows of short texts, each with a placeholder that no other has, "
        f"{short_size / 2**20:.1f} MiB, the memory is {short_memory / 2**20:.1f} MiB, "
        f"{short_memory / short_size:.2f} times the file.",
        "",
        f"Four times the texts take {slower:.2f} times the time (bound {MOST_GROWTH}); "
        f"the memory stays below {MOST_MEMORY} times the file.",
    ]
    with open(page, "w", encoding="utf-8") as output:
        output.write("\n".join(lines) + "\n")
    print("\n".join(lines))
    if ratio > MOST_TIME or slower > MOST_GROWTH or memory > MOST_MEMORY:
        sys.exit("error: zav check is out of its bounds")


main()
