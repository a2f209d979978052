#!/usr/bin/env python3
"""Runs the parts that are named, or all: see README.md."""

import argparse
import random
import shutil
import signal
import sys
import time

from emulator.failure import Failure
from emulator.images import ROOM, SCRATCH, format_image, root_disk
from emulator.machine import Disk, MachineError, serve_a_person
from parts import cost, cuts, faults, life, media, moments, packages, tests

PARTS = {
    "tests": tests,
    "packages": packages,
    "media": media,
    "cuts": cuts,
    "moments": moments,
    "faults": faults,
    "cost": cost,
    "life": life,
}


def arguments():
    parser = argparse.ArgumentParser(prog="scripts/boot-arm", description="Tests on an ARM machine.")
    parser.add_argument("parts", nargs="*", metavar="PART", help=", ".join(PARTS))
    parser.add_argument("--seed", type=int, default=random.randrange(1_000_000),
                        help="of what is done at random; printed when it is not given")
    parser.add_argument("--cuts", type=int, default=200, help="of the power, for each file system")
    parser.add_argument("--states", type=int, default=2000,
                        help="of the disk, for each file system")
    parser.add_argument("--ci", action="store_true", help="less of each part: some minutes")
    parser.add_argument("--shell", action="store_true", help="a shell in the machine")
    options = parser.parse_args()
    unknown = set(options.parts) - PARTS.keys()
    if unknown:
        parser.error(f"no such part: {', '.join(sorted(unknown))}; there are {', '.join(PARTS)}")
    if options.ci:
        options.cuts, options.states = 10, 100
    return options


def run(name, options):
    """Runs a part and prints its line. Returns whether it went well."""
    random_of_part = random.Random(f"{options.seed} {name}")
    start = time.monotonic()
    try:
        outcome = PARTS[name].run(options, random_of_part)
        is_good = True
    except (Failure, MachineError) as failure:
        outcome = f"FAILED: {failure}"
        is_good = False
    seconds = time.monotonic() - start
    print(f"{name}: {outcome} (seed {options.seed}, {seconds:.0f} s)", flush=True)
    return is_good


def main():
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))  # so that no machine outlives this program
    options = arguments()
    SCRATCH.mkdir()
    if options.shell:
        data = format_image(SCRATCH / "data.img", "ext4")
        status = serve_a_person(ROOM, [root_disk(), Disk("data", data)])
    else:
        outcomes = [run(name, options) for name in options.parts or PARTS]
        status = 0 if all(outcomes) else 1
    if status == 0:
        shutil.rmtree(SCRATCH)
    else:
        print(f"The disks are in {SCRATCH}", file=sys.stderr)
    return status


if __name__ == "__main__":
    sys.exit(main())
