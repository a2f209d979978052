"""The life of a device: it opens its database at its start, looks things up, follows an update per hour,
and loses its power once a day."""

import time

from emulator.failure import Failure, expect
from emulator.frozen import frozen_machine
from emulator.images import SCRATCH, format_image
from emulator.machine import MachineError
from emulator.writers import DATABASE, INSTALL, Writer, last_said

DAYS, HOURS = 30, 24
FIRST = 10_000  # generation: all have as many digits, so that all files are as large
MOUNT = "mount -t ext4 /dev/disk/data /data"
LONGEST_LAST_HOUR = 2.0  # seconds until its power is cut
SECONDS = 600  # that a day may take
MOST_GROWTH = 1024  # bytes of heap, within a day and over all
MOST_RESIDENT = 128  # KiB more than in the second hour
# What the allocator keeps for its threads counts as in use.
ENVIRONMENT = "GLIBC_TUNABLES=glibc.malloc.tcache_count=0"


def run(options, random):
    days, hours = (1, 1) if options.ci else (DAYS, HOURS)
    frozen = frozen_machine()
    image = format_image(SCRATCH / "life.img", "ext4")
    with frozen.resume(image) as machine:
        machine.run(f"{MOUNT} && generations make {DATABASE} {FIRST} && umount /data")
    oldest = newest = FIRST
    usages = []
    for day in range(1, days + 1):
        try:
            with frozen.resume(image) as machine:
                generation = _read(machine, oldest, newest)
                lines = _live(machine, generation + 1, hours, random)
        except (Failure, MachineError) as failure:
            raise Failure(f"day {day}: {failure}") from failure
        oldest = Writer(INSTALL).oldest_after_cut(generation, last_said(lines, "committed", generation))
        newest = last_said(lines, "begun", generation)
        usages += _usages(lines)
        _expect_flat(day, usages)
    with frozen.resume(image) as machine:
        _read(machine, oldest, newest)
    last = usages[-1]
    return (f"{days} days of {hours} hours, {len(usages)} updates and {60 * len(usages)} lookups, {days} cuts:"
            f" {last[0]} descriptors, {last[1]} bytes of heap, {last[2]} of SQLite, {last[3]} KiB resident")


def _read(machine, oldest, newest):
    machine.run(MOUNT)
    generation = last_said(machine.run(f"generations read {DATABASE}").splitlines(), "generation", 0)
    expect(oldest <= generation <= newest, f"generation {generation}, not {oldest} to {newest}")
    return generation


def _live(machine, first, hours, random):
    """A day, and an hour more, in which the power is cut. Returns what the device has said."""
    lines = []
    command = f"{ENVIRONMENT} device {DATABASE} /tmp/new.db {first} {hours + 1}"
    for line in machine.lines(command, SECONDS):
        expect(isinstance(line, str), f"the device has ended: {''.join(lines)}")
        lines.append(line)
        if len(_usages(lines)) == hours:
            time.sleep(random.uniform(0, LONGEST_LAST_HOUR))
            return lines + machine.kill()
    raise Failure("the device says nothing")


def _usages(lines):
    """Descriptors, heap, SQLite's part of it, and resident memory, at the end of each hour."""
    return [[int(word) for word in line.split()[2:]] for line in lines if line.startswith("hour ")]


def _expect_flat(day, usages):
    first, last = usages[0], usages[-1]
    expect(last[0] == first[0], f"day {day}: {last[0]} descriptors, {first[0]} at first")
    for used, name in ((1, "heap"), (2, "SQLite")):
        growth = last[used] - first[used]
        expect(growth <= MOST_GROWTH, f"day {day}: {name} has grown by {growth} bytes")
    resident = [used[3] for used in usages[1:]] or [last[3]]  # the first hour has seen no new file
    expect(last[3] <= resident[0] + MOST_RESIDENT,
           f"day {day}: {last[3]} KiB resident, {resident[0]} at first")
