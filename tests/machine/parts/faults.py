"""Disks that are full, fail, turn read-only or lie; clocks and memory that are not what one expects."""

import shlex

from emulator.failure import expect
from emulator.frozen import frozen_machine
from emulator.images import DATA_SIZE, SCRATCH, format_image
from emulator.writers import DATABASE

ROWS = "results 20 0 80 4\n"
FAILED = "results -2 -1 -2 -2\n"
LINE = "[ERROR] SQL3::getTbl() Sql Query failed: {}\n"
SECTORS = DATA_SIZE // 512

# A disk between the file system and the data disk, which does as it is told.
LINEAR = f"0 {SECTORS} linear /dev/disk/data 0"
ERROR = f"0 {SECTORS} error"
DROPPING = f"0 {SECTORS} flakey /dev/disk/data 0 0 3600 1 drop_writes"
MOUNT = "mount -t ext4 /dev/mapper/faulty /data"

# What programs have read is no longer in memory, and has to come from the disk.
FORGET = "echo 3 >/proc/sys/vm/drop_caches"


def run(_options, _random):
    frozen = frozen_machine()
    for part in (_full_disk, _failing_disk, _read_only_disk, _lying_disk, _early_clock, _little_memory):
        for name in ("ext4", "f2fs") if part is _full_disk else ("ext4",):
            with frozen.resume(format_image(SCRATCH / "faults.img", name)) as machine:
                part(machine, name)
    return "disk full, failing, read-only and lying; clock in 1970; 8 MiB of memory: as promised"


def _expect_output(machine, command, *allowed):
    status, output = machine.try_run(command)
    expect(output in allowed, f"{command} ends with {status} and {output!r}, not {allowed!r}")
    return output


def _full_disk(machine, name):
    """A journal has to be rolled back where no byte is left."""
    machine.run(f"mount -t {name} /dev/disk/data /data && generations make {DATABASE} 1")
    machine.run(f"generations abandon {DATABASE} DELETE 2")
    for _ in range(2):
        machine.run(f"! cat /dev/zero >>/data/filler && sync && {FORGET}")
    _expect_output(machine, f"reader {DATABASE}", ROWS)
    machine.run("rm /data/filler && sync")
    _expect_output(machine, f"generations read {DATABASE}", "generation 1\n")


def _make_faulty(machine):
    machine.run("export DM_DISABLE_UDEV=1")
    machine.run(f"dmsetup create faulty --table '{LINEAR}' && {MOUNT}")
    machine.run(f"generations make {DATABASE} 1 && sync")


def _becomes(table):
    return f"dmsetup suspend --noflush --nolockfs faulty && dmsetup load faulty --table '{table}'" \
           " && dmsetup resume faulty"


def _read_under(*commands):
    return " ".join(shlex.quote(word) for word in ("reader", DATABASE, *commands))


def _failing_disk(machine, _name):
    """Under an open reader every read fails for a while."""
    _make_faulty(machine)
    # What a medium cannot read SQLite takes for damage of the file.
    failed = LINE.format("database disk image is malformed Err=11") * 4 + FAILED
    fail = f"{_becomes(ERROR)} && {FORGET}"
    _expect_output(machine, _read_under(fail, _becomes(LINEAR)), ROWS + failed + ROWS)
    machine.run(f"umount /data; {MOUNT}")
    _expect_output(machine, f"generations read {DATABASE}", "generation 1\n")
    # And where a writer is at work: the file system gives up writing.
    machine.run(f"generations abandon {DATABASE} DELETE 2")
    machine.run(f"{_becomes(ERROR)}; touch /data/more; sync; true")
    _, output = machine.try_run(f"timeout 60 reader {DATABASE}")
    expect(output.endswith(FAILED) or output.startswith("[ERROR] ZAV::openDb()"),
           f"on a dead disk: {output!r}")
    machine.run(f"{_becomes(LINEAR)}; umount /data; {MOUNT}")
    _expect_output(machine, f"generations read {DATABASE}", "generation 1\n")


def _read_only_disk(machine, _name):
    """It turns read-only under an open reader, which does not mind; a journal is refused."""
    machine.run(f"mount -t ext4 /dev/disk/data /data && generations make {DATABASE} 1")
    _expect_output(machine, _read_under("mount -o remount,ro /data", FORGET), ROWS * 3)
    machine.run(f"mount -o remount,rw /data && generations abandon {DATABASE} DELETE 2")
    machine.run("mount -o remount,ro /data")
    _expect_output(machine, f"reader {DATABASE}",
                   LINE.format("attempt to write a readonly database Err=8") * 4 + FAILED)
    machine.run("mount -o remount,rw /data")
    _expect_output(machine, f"generations read {DATABASE}", "generation 1\n")


def _lying_disk(machine, _name):
    """Writes are lost without a word: then there is an error or an answer, and no end but those."""
    _make_faulty(machine)
    for mode in ("DELETE", "TRUNCATE", "PERSIST", "WAL"):
        machine.run(f"rm -f {DATABASE}* && generations make {DATABASE} 1 && sync")
        machine.run(_becomes(DROPPING))
        machine.try_run(f"generations update {DATABASE} {mode} FULL 2 3; sync; {FORGET}")
        status, output = machine.try_run(f"timeout 60 reader {DATABASE}")
        expect(status in (0, 1) and "results" in output, f"{mode}: {status}, {output!r}")
        machine.run(f"umount /data; {_becomes(LINEAR)} && {MOUNT}")
        status, output = machine.try_run(f"timeout 60 reader {DATABASE}")
        expect(status in (0, 1), f"{mode}, mounted again: {status}, {output!r}")


def _early_clock(machine, name):
    """A device without a battery thinks that it is 1970."""
    machine.run(f"date -s @5 && mount -t {name} /dev/disk/data /data && generations make {DATABASE} 1")
    machine.run(f"generations abandon {DATABASE} DELETE 2")
    _expect_output(machine, f"generations read {DATABASE}", "generation 1\n")
    machine.run(f"generations make /tmp/new.db 2 && zav install /tmp/new.db {DATABASE}")
    _expect_output(machine, f"generations read {DATABASE}", "generation 2\n")


def _little_memory(machine, name):
    """8 MiB for a process with all that it reads; and less address space than the texts need."""
    machine.run(f"mount -t {name} /dev/disk/data /data && generations make {DATABASE} 1 && sync")
    machine.run("mkdir -p /tmp/cgroup && mount -t cgroup2 cgroup /tmp/cgroup")
    machine.run("echo +memory >/tmp/cgroup/cgroup.subtree_control && mkdir /tmp/cgroup/small"
                " && echo 8M >/tmp/cgroup/small/memory.max")
    limited = "sh -c 'echo $$ >/tmp/cgroup/small/cgroup.procs && exec \"$@\"' sh "
    _expect_output(machine, f"{limited}reader {DATABASE}", ROWS)
    machine.run("grep -qx 'oom_kill 0' /tmp/cgroup/small/memory.events")
    machine.run("generations make /data/large.db 1 30000")  # 25 MB
    # The page cache is left with what there is, so that small queries may fail from then on.
    aborted, full = LINE.format("query aborted Err=7"), LINE.format("out of memory Err=7")
    _expect_output(machine, "(ulimit -v 20480; exec reader /data/large.db)",
                   *(table + texts for table in (aborted, full)
                     for texts in ("results 20 0 -2 1500\n", f"{full}results 20 0 -2 -2\n")))
