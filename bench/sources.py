#!/usr/bin/env python3
"""Measures zav build beside the .import of SQLite's own shell.

    bench/sources.py ZAV ZAV_MAKE_DATABASE MARKDOWN_FILE

Writes the figures and fails if they are out of their bound.
"""

import os
import sqlite3
import statistics
import subprocess
import sys
import tempfile
import time

TURNS = 9
MOST = 3

# A sixth language; and texts that differ between languages, as translations do.
TRANSLATE = """
INSERT INTO descriptions SELECT id, id_fault_type, 6, name, short_description, description, comment,
    remedy FROM descriptions WHERE id_language = 1;
UPDATE descriptions SET name = name || ' (' || id_language || ')',
    description = description || ' [' || id_language || ']';
"""


def seconds(*command):
    start = time.monotonic()
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
    return time.monotonic() - start


def make_sources(zav, make, folder):
    file = os.path.join(folder, "faults.db")
    sources = os.path.join(folder, "sources")
    subprocess.run([make, file, "10000", "indexed"], check=True)
    with sqlite3.connect(file) as database:
        database.executescript(TRANSLATE)
    subprocess.run([zav, "export", file, sources], check=True, stdout=subprocess.DEVNULL)
    return sources


def turn(zav, sources, folder):
    built = os.path.join(folder, "built.db")
    imported = os.path.join(folder, "imported.db")
    imports = [
        f".import --csv {os.path.join(sources, name)} t{number}"
        for number, name in enumerate(sorted(os.listdir(sources)))
    ]
    for file in (built, imported):
        if os.path.exists(file):
            os.remove(file)
    ours = seconds(zav, "build", sources, built)
    theirs = seconds("sqlite3", "-bail", imported, *imports)
    return ours, theirs, ours / theirs


def main():
    zav, make, page = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        sources = make_sources(zav, make, folder)
        turns = [turn(zav, sources, folder) for _ in range(TURNS)]
    ours, theirs, ratio = [statistics.median(values) for values in zip(*turns)]
    lines = [
        "| 10,000 fault types × 6 languages | time | ratio | bound |",
        "| --- | ---: | ---: | ---: |",
        f"| `zav build`, checks included | {ours:.3f} s | {ratio:.2f} | {MOST} |",
        f"| `.import` of the same CSV | {theirs:.3f} s | | |",
    ]
    with open(page, "w", encoding="utf-8") as output:
        output.write("\n".join(lines) + "\n")
    print("\n".join(lines))
    if ratio > MOST:
        sys.exit("error: zav build is out of its bound")


main()
