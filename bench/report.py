#!/usr/bin/env python3
"""Writes what scripts/bench has measured into docs/benchmarks.md and, for its chart, as a table.

    bench/report.py SUITE_JSON COST_MARKDOWN MACHINE_MARKDOWN CHECK_MARKDOWN LISTINGS_MARKDOWN \
        SOURCES_MARKDOWN MANUAL_MARKDOWN PAGE CHART_DATA

Of the page, only what stands between the two markers is replaced.
"""

import json
import re
import sys

READERS = {
    "zav": "libzav",
    "table": "bare table",
    "step": "bare step",
    "SQLiteCpp": "SQLiteCpp",
    "SOCI": "SOCI",
}
# The bare table makes no records: it is what is compared with, not a peer.
PEERS = ["step", "SQLiteCpp", "SOCI"]
QUESTIONS = {
    "allFaultTypes": "All fault types",
    "allDescriptions": "All descriptions",
    "faultTypeByCode": "One fault type by code",
    "textsOfCode": "Texts of one code, without an index",
}
BEGIN = "<!-- written by scripts/bench: begin -->"
END = "<!-- written by scripts/bench: end -->"


def duration(nanoseconds):
    for unit, length in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= length:
            return f"{nanoseconds / length:.3g} {unit}"
    return f"{nanoseconds:.0f} ns"


def size(count):
    return f"{count / 2**20:.1f} MiB" if count >= 2**20 else f"{count / 2**10:.0f} KiB"


def markdown_table(header, rows):
    lines = [header, ["---"] + ["---:"] * (len(header) - 1)] + rows
    return "\n".join("| " + " | ".join(line) + " |" for line in lines)


def best_peer(run):
    return min(PEERS, key=lambda peer: run[peer + " ns"])


def times(run):
    """The columns that every comparison of the readers has."""
    peer = best_peer(run)
    return (
        [duration(run[reader + " ns"]) for reader in READERS]
        + [f"{run['zav ratio']:.2f}"]
        + [f"{run['zav ns'] / run[peer + ' ns']:.2f} ({READERS[peer]})"]
    )


TIMES = list(READERS.values()) + ["libzav / bare table", "libzav / best peer"]


def heaps(run):
    return [size(run[reader + " heap"]) for reader in ("zav", "table", "step")]


HEAPS = ["peak heap: libzav", "bare table", "bare step"]


def bounded_section(runs):
    bounds = {
        "allFaultTypes": "1.15",
        "allDescriptions": "1.5",
        "faultTypeByCode": "1.05",
        "textsOfCode": "1.05",
    }
    rows = []
    for question, bound in bounds.items():
        run = runs["bounded"][question][0]
        rows.append(
            [QUESTIONS[question]]
            + [duration(run["zav ns"]), duration(run["table ns"])]
            + [f"{run['zav ratio']:.3f}", bound]
        )
    return markdown_table(["time", "libzav", "bare table", "ratio", "bound"], rows)


def reads_section(runs):
    parts = []
    for question, title in QUESTIONS.items():
        rows = []
        for run in runs["read"][question]:
            rows.append(
                [f"{run['faultTypes']:,}", f"{run['rows']:,.0f}"] + times(run) + heaps(run)
            )
        parts.append(
            f"### {title}\n\n" + markdown_table(["fault types", "rows read"] + TIMES + HEAPS, rows)
        )
    return "\n\n".join(parts)


def growth_section(runs):
    rows = []
    for question in ("allFaultTypes", "allDescriptions"):
        per_row = [duration(run["zav ns"] / run["rows"]) for run in runs["read"][question]]
        rows.append([QUESTIONS[question], "row"] + per_row)
    for question in ("faultTypeByCode", "textsOfCode"):
        per_type = [duration(run["zav ns"] / run["faultTypes"]) for run in runs["read"][question]]
        rows.append([QUESTIONS[question], "fault type in the file"] + per_type)
    sizes = [f"{run['faultTypes']:,} fault types" for run in runs["read"]["allFaultTypes"]]
    return markdown_table(["time of libzav", "per"] + sizes, rows)


def others_section(runs):
    rows = [
        [title] + times(run) + heaps(run)
        for title, run in (
            (
                "texts of one code, with the index of db/schema.sql",
                runs["indexed"]["textsOfCode"][0],
            ),
            (
                "the same as the first read of a new process, opening included",
                runs["firstRead"]["textsOfCode"][0],
            ),
            ("open and close", runs["openAndClose"][""][0]),
        )
    ]
    return markdown_table(["1,000 fault types"] + TIMES + HEAPS, rows)


def statement_section(runs):
    run = runs["statementText"]["insert"][0]
    return markdown_table(
        ["statement text", "libzav", "sqlite3_mprintf", "ratio"]
        + ["peak heap: libzav", "sqlite3_mprintf"],
        [
            [
                "`INSERT` of one description",
                duration(run["zav ns"]),
                duration(run["sqlite3_mprintf ns"]),
                f"{run['zav ratio']:.2f}",
                size(run["zav heap"]),
                size(run["sqlite3_mprintf heap"]),
            ]
        ],
    )


def cache_section(runs):
    caps = [2000, 8192, 16384, 20480, 32768]
    rows = []
    for run in runs["pageCache"]["textsOfCode"]:
        cells = [
            f"{duration(run[f'{cap} ns'])}, {size(run[f'{cap} heap'])}" for cap in caps
        ]
        rows.append([f"{run['faultTypes']:,} ({size(run['file'])})"] + cells)
    header = ["fault types (file)"] + [f"{cap / 1024:.3g} MiB" for cap in caps]
    return markdown_table(header, rows)


def read_suite(path):
    """The runs by group and question, each with the number of fault types of its file."""
    runs = {}
    with open(path, encoding="utf-8") as file:
        for run in json.load(file)["benchmarks"]:
            parts = re.sub(r"/iterations:.*", "", run["name"]).split("/")
            number = int(parts.pop()) if parts[-1].isdigit() else 0
            group, question = (parts + [""])[:2]
            run["faultTypes"] = number
            runs.setdefault(group, {}).setdefault(question, []).append(run)
    return runs


def write_chart_data(runs, path):
    with open(path, "w", encoding="utf-8") as file:
        for run in runs["read"]["allDescriptions"]:
            columns = [run["rows"]] + [run[reader + " ns"] / 1e6 for reader in READERS]
            file.write(" ".join(str(column) for column in columns) + "\n")


def main():
    suite, cost, machine, check, listings, sources, manual, page, chart_data = sys.argv[1:]
    runs = read_suite(suite)
    write_chart_data(runs, chart_data)
    with open(machine, encoding="utf-8") as file:
        machine_text = file.read().strip()
    with open(cost, encoding="utf-8") as file:
        cost_text = file.read().strip()
    with open(check, encoding="utf-8") as file:
        check_text = file.read().strip()
    with open(listings, encoding="utf-8") as file:
        listings_text = file.read().strip()
    with open(sources, encoding="utf-8") as file:
        sources_text = file.read().strip()
    with open(manual, encoding="utf-8") as file:
        manual_text = file.read().strip()
    text = "\n\n".join(
        [
            BEGIN,
            machine_text,
            "## Instructions and times within their bounds\n\n2,000 fault types × 5 languages.\n\n"
            + cost_text
            + "\n\n"
            + bounded_section(runs),
            "## The four reads\n\n" + reads_section(runs),
            "## Growth\n\n"
            + growth_section(runs),
            "## Opening, first read, lookup by index\n\n" + others_section(runs),
            "## Statement texts\n\n" + statement_section(runs),
            "## Page cache\n\nTexts of one code, without an index, by the cap of the cache: time, "
            "and what the cache takes.\n\n" + cache_section(runs),
            "## zav check\n\nA whole check beside what SQLite's shell takes to look at the same file, in "
            "turns; each text has a finding, since all languages have the same.\n\n" + check_text,
            "## zav texts\n\nThe listing of all texts beside the same mode of SQLite's shell, in "
            "turns.\n\n" + listings_text,
            "## zav build\n\nA database of a folder of sources, checked and flushed to the disk, beside "
            "what SQLite's shell takes to import the same files as they are, in turns.\n\n"
            + sources_text,
            "## zav html\n\nWhat a key typed into the manual takes in a headless Chromium, as its script "
            "and the browser's layout measure it.\n\n" + manual_text,
            END,
        ]
    )
    with open(page, encoding="utf-8") as file:
        before, rest = file.read().split(BEGIN)
        after = rest.split(END)[1]
    with open(page, "w", encoding="utf-8") as file:
        file.write(before + text + after)


main()
