"""Medium by medium: a file is read, a journal is rolled back where it may be, and refused where not."""

import functools
import subprocess

from emulator.failure import expect
from emulator.flash import Flash
from emulator.frozen import frozen_machine
from emulator.images import SCRATCH, TREE, format_image, run_quietly
from emulator.writers import DATABASE

ROWS = "results 20 0 80 4"
REFUSED = "[ERROR] SQL3::getTbl() Sql Query failed: {}\n"
READ_ONLY = REFUSED.format("attempt to write a readonly database Err=8") * 4 + "results -2 -1 -2 -2\n"
NO_WAL = REFUSED.format("unable to open database file Err=14") * 4 + "results -2 -1 -2 -2\n"

# A disk on which the files are there already, and what has to be said of them.
READ_ONLY_FILES = {"plain.db": f"{ROWS}\n", "hot.db": READ_ONLY, "wal.db": NO_WAL}


def run(_options, _random):
    frozen = frozen_machine()
    for name in ("ext4", "f2fs"):
        with frozen.resume(format_image(SCRATCH / "media.img", name)) as machine:
            _check_writable(machine, f"mount -t {name} /dev/disk/data /data")
    with Flash() as flash:
        _check_writable(flash.machine, flash.MOUNT)
    for name, image in (("squashfs", _squashfs()), ("ext4", _ext4())):
        with frozen.resume(image) as machine:
            machine.run(f"mount -t {name} -o ro /dev/disk/data /data")
            _check_read_only(machine)
            _check_overlay(machine)
    with frozen.resume(image) as machine:
        _check_writable(machine, "mount -t tmpfs data /data")
    return "read, rolled back or refused on ext4, f2fs, UBIFS, squashfs, read-only ext4, overlayfs and tmpfs"


def _check_writable(machine, mount):
    """In each journal mode what a writer has left half done is taken back, and stays so."""
    machine.run(mount)
    for mode in ("DELETE", "TRUNCATE", "PERSIST", "WAL"):
        machine.run(f"rm -f {DATABASE}* && generations make {DATABASE} 1")
        machine.run(f"generations abandon {DATABASE} {mode} 2")
        left = machine.run("ls /data")
        expect("-journal" in left or "-wal" in left, f"{mount}, {mode}: nothing is left half done")
        _expect_output(machine, f"reader {DATABASE}", f"{ROWS}\n")
        _expect_output(machine, f"generations read {DATABASE}", "generation 1\n")


def _check_read_only(machine):
    for name, said in READ_ONLY_FILES.items():
        _expect_output(machine, f"reader /data/{name}", said)
    _expect_output(machine, "generations read /data/plain.db", "generation 1\n")


def _check_overlay(machine):
    """Above the read-only files, changes go to the machine's memory."""
    machine.run("mkdir -p /tmp/changes /tmp/work /tmp/merged && mount -t overlay data /tmp/merged"
                " -o lowerdir=/data,upperdir=/tmp/changes,workdir=/tmp/work")
    _expect_output(machine, "generations read /tmp/merged/hot.db", "generation 1\n")
    machine.run("! [ -e /tmp/merged/hot.db-journal ] && [ -e /data/hot.db-journal ]")


def _expect_output(machine, command, expected):
    _, output = machine.try_run(command)
    expect(output == expected, f"{command}: {output!r}, not {expected!r}")


@functools.cache
def _read_only_folder():
    folder = SCRATCH / "read-only"
    folder.mkdir()
    for name in READ_ONLY_FILES:
        _generations("make", folder / name, "1")
    _generations("abandon", folder / "hot.db", "DELETE", "2")
    _generations("update", folder / "wal.db", "WAL", "FULL", "2", "1")
    return folder


def _generations(*words):
    """The machine's program, run here."""
    build = TREE / "build/arm"
    subprocess.run(["qemu-arm", "-L", build / "sysroot", build / "tests/machine/generations", *words],
                   check=True, stdout=subprocess.DEVNULL)


def _squashfs():
    image = SCRATCH / "squashfs.img"
    run_quietly("mksquashfs", _read_only_folder(), image, "-quiet", "-all-root")
    return image


def _ext4():
    return format_image(SCRATCH / "media.img", "ext4", _read_only_folder())
