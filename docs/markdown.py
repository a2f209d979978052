#!/usr/bin/python3
"""markdown.py FILE: prints a document as Doxygen takes it for the API reference. What Doxygen would
not read, or read otherwise, is put in its own words.
"""

import html
import os
import re
import sys

FILE = os.path.relpath(sys.argv[1])

# The name of the first page.
TAKEN = {"index"}


def quoted(text):
    return '"' + text.replace('"', '\\"') + '"'


def flowchart(lines):
    """A diagram of boxes, for Graphviz."""
    nodes, edges = {}, []

    def node(text):
        name, label = re.fullmatch(r'(\w+)(?:\[[("]*(.*?)[)"]*\])?', text.strip()).groups()
        if label:
            nodes[name] = label.replace("<br>", "\\n")
        return name

    for line in lines:
        start, end = line.split("-->")
        edges.append(f"{node(start)} -> {node(end)};")
    return [
        "\\dot",
        'digraph { rankdir=LR; bgcolor="transparent"; edge [color=gray];',
        "node [shape=box, style=filled, fillcolor=white, fontname=Helvetica, fontsize=10];",
        *(f"{name} [label={quoted(label)}];" for name, label in nodes.items()),
        *edges,
        "}",
        "\\enddot",
    ]


def sequence(lines):
    """A diagram of calls, in the language that Doxygen draws itself."""
    participants, steps = [], []
    for line in map(str.strip, lines):
        if found := re.fullmatch(r"participant (\w+) as (.*)", line):
            participants.append(f"{found[1]} [label={quoted(found[2])}]")
        elif found := re.fullmatch(r"Note over (\w+): (.*)", line):
            steps.append(f"{found[1]} note {found[1]} [label={quoted(found[2])}];")
        elif found := re.fullmatch(r"loop (.*)", line):
            steps.append(f"--- [label={quoted(found[1])}];")
        elif line == "end":
            steps.append("---;")
        elif found := re.fullmatch(r"(\w+)(--?)>>(\w+): (.*)", line):
            arrow = ">>" if found[2] == "--" else "=>"
            steps.append(f"{found[1]}{arrow}{found[3]} [label={quoted(found[4])}];")
        else:
            sys.exit(f"not understood: {line}")
    return ["\\msc", "width=900;", ", ".join(participants) + ";", *steps, "\\endmsc"]


def diagram(lines):
    return (flowchart if lines[0].startswith("flowchart") else sequence)(lines[1:])


def code(found):
    """A piece of code that holds a quote would end at it."""
    return f"<code>{html.escape(found[1], quote=False)}</code>" if "'" in found[1] else found[0]


def place(found):
    """A place on another page of the documents."""
    path = os.path.normpath(os.path.join(os.path.dirname(FILE), found[1]))
    page = "index" if path == "README" else "md_" + path.replace("/", "_")
    return f"]({page}.html#{found[2]})"


def links(text):
    """To a header's page, to another page, to the manual; and as plain text to a file that the
    reference does not hold."""
    text = re.sub(r"\[`([^`]+)`\]\((?:\.\./)?include/zav/(\w+\.h)\)", r"[\1](@ref \2)", text)
    text = re.sub(r"\]\(([\w./-]+)\.md#([^)]*)\)", place, text)
    text = re.sub(r"\]\((?:\.\./)?README\.md\)", "](index.html)", text)
    text = re.sub(r"\[([^]]+)\]\((?:\.\./)?(?:db|examples|tests)/[^)]*\)", r"\1", text)
    return re.sub(r"`man zav`|zav\(1\)", '<a href="zav.1.html">zav(1)</a>', text)


def heading(found):
    """A heading gets the name by which a link on its page means it."""
    name = re.sub(r"[^a-z0-9_-]", "", found[1].lower().replace(" ", "-"))
    return found[0] if name in TAKEN or not name[:1].isalpha() else f"{found[0]} {{#{name}}}"


def prose(text):
    text = re.sub(r"`([^`]+)`", code, links(text))
    # Bold text that begins or ends with code or a quote would stay as it is.
    text = re.sub(r"\*\*(.+?)\*\*", r"<b>\1</b>", text, flags=re.DOTALL)
    return re.sub(r"^##+ (.*)$", heading, text, flags=re.MULTILINE)


def main():
    with open(FILE, encoding="utf-8") as document:
        text = document.read()
    # Each second piece is code, fences and all.
    for index, piece in enumerate(re.split(r"^(```.*?^```$)", text, flags=re.MULTILINE | re.DOTALL)):
        lines = piece.split("\n")
        if index % 2 == 0:
            sys.stdout.write(prose(piece))
        elif lines[0] == "```mermaid":
            sys.stdout.write("\n".join(diagram(lines[1:-1])))
        else:
            sys.stdout.write(piece)


main()
