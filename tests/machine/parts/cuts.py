"""The power is cut at random, while a writer works, or while what it has left is recovered."""

from emulator.failure import Failure, expect
from emulator.flash import Flash
from emulator.frozen import frozen_machine
from emulator.images import SCRATCH, format_image
from emulator.machine import MachineError
from emulator.writers import ALL_WRITERS, DATABASE, last_said

LONGEST_WRITING = 2.5  # seconds until the power is cut
LONGEST_RECOVERY = 0.5
READ = f"generations read {DATABASE}"


def run(options, random):
    counts = {"ext4": options.cuts, "f2fs": options.cuts, "UBIFS": max(options.cuts // 4, 2)}
    outcomes = [_cut_disk(name, counts[name], random) for name in ("ext4", "f2fs")]
    outcomes.append(_cut_flash(counts["UBIFS"], random))
    return "; ".join(outcomes) + "; each read whole, none older than promised"


class _Database:
    """What is known of the database across cuts."""

    def __init__(self, generation):
        self.generation = generation  # as it was last read
        self._oldest = self._newest = generation
        self._writer = None

    def was_cut(self, writer, lines):
        committed = last_said(lines, "committed", self.generation)
        self._writer = writer
        self._newest = last_said(lines, "begun", self.generation)
        self._oldest = writer.oldest_after_cut(self.generation, committed)
        unexpected = [line for line in lines if line and line.split()[0] not in ("begun", "committed")]
        expect(not unexpected, f"{writer} says: {unexpected}")

    def was_read(self, status, output):
        expect(status == 0, f"after a cut of {self._writer}: {output.strip()}")
        self.generation = last_said(output.splitlines(), "generation", None)
        expect(self._oldest <= self.generation <= self._newest,
               f"after a cut of {self._writer}: generation {self.generation}, "
               f"not {self._oldest} to {self._newest}")
        self._oldest = self._newest = self.generation


def _cut_disk(name, cuts, random):
    image = format_image(SCRATCH / "cuts.img", name)
    mount = f"mount -t {name} /dev/disk/data /data"
    frozen = frozen_machine()
    with frozen.resume(image) as machine:
        machine.run(f"{mount} && generations make {DATABASE} 1 && umount /data")
    database = _Database(1)
    recoveries = 0
    for cut in range(cuts):
        try:
            while random.random() < 0.25:
                recoveries += 1
                with frozen.resume(image) as machine:
                    machine.cut_during(f"echo mounting; {mount} && {READ}; sleep 60",
                                       random.uniform(0, LONGEST_RECOVERY))
            writer = random.choice(ALL_WRITERS)
            with frozen.resume(image) as machine:
                machine.run(mount)
                database.was_read(*machine.try_run(READ))
                lines = machine.cut_during(writer.command(database.generation + 1, 100_000),
                                           random.uniform(0, LONGEST_WRITING))
            database.was_cut(writer, lines)
        except (Failure, MachineError) as failure:
            raise Failure(f"{name}, cut {cut + 1}: {failure}; the disk is {image}") from failure
    with frozen.resume(image) as machine:
        machine.run(mount)
        database.was_read(*machine.try_run(READ))
    return f"{cuts} cuts of {name} and {recoveries} more while it recovered"


def _cut_flash(cuts, random):
    with Flash() as flash:
        machine = flash.machine
        machine.run(f"{flash.MOUNT} && generations make {DATABASE} 1 && sync")
        database = _Database(1)
        for cut in range(cuts):
            try:
                writer = random.choice(ALL_WRITERS)
                flash.cut_power_after(random.randrange(1, 25))
                _, output = machine.try_run(writer.command(database.generation + 1, 100_000))
                flash.restore_power()
                lines = [line for line in output.splitlines() if line.startswith(("begun", "comm"))]
                database.was_cut(writer, lines)
                database.was_read(*machine.try_run(READ))
            except (Failure, MachineError) as failure:
                raise Failure(f"UBIFS, cut {cut + 1}: {failure}") from failure
    return f"{cuts} cuts of UBIFS"
