"""The library's own tests, as CTest knows them, on the machine's kernel."""

import json
import shlex
import subprocess

from emulator.failure import expect
from emulator.images import ROOM, TREE, mount_tree, root_disk, tree_disk
from emulator.machine import Machine

SECONDS = 600  # that a test may take

# Those in which kernel and C library have a part: locks, signals, descriptors, mappings, mounts.
CHOSEN = ("Reliability/KilledWriter", "LogLock", "PageCache", "SecondLink", "UnfinishableRollback",
          "UnwritableFolder")

# Files may take 128 MiB of memory by what the library promises, and the process as much again.
MEMORY = 1024

# The tests, and the programs that they start, are called by way of an emulator: here there is none.
EMULATOR = """printf '#!/bin/sh\\nshift 2\\nexec "$@"\\n' >{0} && chmod +x {0}"""


def run(options, _random):
    tests = _tests_of_the_machine()
    if options.ci:
        tests = [test for test in tests if any(name in test["name"] for name in CHOSEN)]
    expect(tests, "no tests")
    failed = []
    skipped = 0
    with Machine(ROOM, [root_disk(), tree_disk()], memory=MEMORY) as machine:
        mount_tree(machine)
        machine.run(EMULATOR.format(tests[0]["command"][0]))
        machine.run("cd /tmp")
        for test in tests:
            status, output = machine.try_run(_command(test), SECONDS + 60)
            skipped += "[  SKIPPED ]" in output
            if status != 0:
                failed.append(f"{test['name'].partition(' ')[0]} ends with {status}:\n{output}")
    expect(not failed, f"{len(failed)} of {len(tests)} tests fail\n" + "\n".join(failed))
    return f"{len(tests) - skipped} tests passed, {skipped} skipped"


def _tests_of_the_machine():
    """Those that are programs for it; the others compile, or look at files."""
    shown = subprocess.run(["ctest", "--test-dir", str(TREE / "build/arm"), "--show-only=json-v1"],
                           stdout=subprocess.PIPE, check=True)
    return [test for test in json.loads(shown.stdout)["tests"] if test["command"][0].endswith("qemu-arm")]


def _command(test):
    properties = {p["name"]: p["value"] for p in test.get("properties", [])}
    words = ["env", *properties.get("ENVIRONMENT", []), *test["command"]]
    return f"timeout -s KILL {SECONDS} " + " ".join(shlex.quote(word) for word in words)
