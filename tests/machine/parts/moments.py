"""The power is cut at every moment of an update: its block writes are recorded, and the disks that a cut
may leave are laid out, recovered by the machine's kernel and read."""

import collections

from emulator.blocklog import FLUSH, Image, pieces, read_log
from emulator.failure import Failure, expect
from emulator.frozen import frozen_machine
from emulator.images import PROGRAMS, SCRATCH, empty_image, format_image
from emulator.machine import MachineError
from emulator.writers import DATABASE, INSTALL, Writer, last_said

OLD, NEW = 2, 3
SETTLING_SECONDS = 6  # file systems write by themselves after five; not in CI

Medium = collections.namedtuple("Medium", "name file_system options")
MEDIA = [
    Medium("ext4", "ext4", "defaults"),
    Medium("ext4 noauto_da_alloc", "ext4", "noauto_da_alloc"),
    Medium("f2fs", "f2fs", "defaults"),
]
WRITERS = [Writer("DELETE", "EXTRA"), Writer("TRUNCATE", "FULL"), Writer("PERSIST", "FULL"),
           Writer("WAL", "FULL"), Writer(INSTALL)]

# What must not go unnoticed: zav install without one of its flushes, and a medium that shows it.
MISTAKES = {"files": ("the flush of the new file", MEDIA[1]), "folders": ("the flush of the folder", MEDIA[0])}
MISTAKE_STATES = 100

# A moment after so many entries of the log; whether the writes since the last flush have all been made.
Moment = collections.namedtuple("Moment", "position is_whole")


def run(options, random):
    replay = _Replay(frozen_machine(), 0 if options.ci else SETTLING_SECONDS)
    outcomes = [_find_mistake(replay, flushes, random) for flushes in MISTAKES]
    for file_system in ("ext4", "f2fs"):
        outcomes.append(_replay_states(replay, file_system, options, random))
    return "; ".join(outcomes)


def _replay_states(replay, file_system, options, random):
    """As many states as are asked for, in equal shares of all cases."""
    cases = _cases(file_system, options, random)
    counts = collections.Counter()
    for number, (medium, writer) in enumerate(cases):
        share = options.states * (number + 1) // len(cases) - options.states * number // len(cases)
        recording = replay.record(medium, writer)
        counts["flushes"] += recording.flushes()
        counts.update(replay.generations(recording, share, random))
    return (f"{counts[OLD] + counts[NEW]} states of {file_system} over {counts['flushes']} flushes,"
            f" {counts[OLD]} old, {counts[NEW]} new")


def _cases(file_system, options, random):
    """All media with all writers; in CI some writers on the first medium, the last one on all."""
    media = [medium for medium in MEDIA if medium.file_system == file_system]
    if not options.ci:
        return [(medium, writer) for medium in media for writer in WRITERS]
    writers = random.sample(WRITERS[:-1], 2)
    return [(media[0], writer) for writer in writers] + [(medium, WRITERS[-1]) for medium in media]


def _find_mistake(replay, flushes, random):
    mistake, medium = MISTAKES[flushes]
    # Where it is found is told apart, since blanks end a name in LD_PRELOAD.
    environment = f"LD_LIBRARY_PATH='{PROGRAMS}' LD_PRELOAD=libwithoutFlush.so WITHOUT_FLUSH={flushes} "
    recording = replay.record(medium, Writer(INSTALL), environment)
    recording.begin = recording.end  # what it has promised by then does not hold
    try:
        collections.deque(replay.generations(recording, MISTAKE_STATES, random), maxlen=0)
    except Failure:
        return f"without {mistake} red on {medium.name}"
    raise Failure(f"without {mistake} all states of {medium.name} are whole: this test sees nothing")


class _Recording:
    """The disk before an update, and what was written to it since."""

    def __init__(self, medium, writer, base, entries, begin, end):
        self.medium = medium
        self.writer = writer
        self.base = base
        self.entries = entries
        self.begin = begin  # entries before the update
        self.end = end  # entries when it had returned

    def flushes(self):
        return sum(1 for entry in self.entries[self.begin :] if entry.flags & FLUSH)

    def moments(self, count, random):
        """Each write once, in order, and then at random; or some of them."""
        positions = range(self.begin, len(self.entries) + 1)
        moments = [Moment(position, True) for position in positions]
        if len(moments) > count // 2:
            moments = random.sample(moments, count // 2)
        while len(moments) < count:
            # What has been promised by then is worth every fifth.
            is_late = random.random() < 0.2
            position = random.choice(positions[self.end - self.begin :] if is_late else positions)
            moments.append(Moment(position, False))
        return sorted(moments)

    def images(self, count, random):
        """Yields moments, and the disk that the cut leaves."""
        settled = Image(source=self.base)
        done = 0  # entries in `settled`
        for moment in self.moments(count, random):
            flushed = self._last_flush(moment.position)
            for entry in self.entries[done:flushed]:
                settled.apply(entry)
            done = max(done, flushed)
            image = Image(source=settled)
            for entry in self._arrived(self.entries[done : moment.position], moment, random):
                image.apply(entry)
            yield moment, image

    def _last_flush(self, position):
        while position > 0 and not self.entries[position - 1].flags & FLUSH:
            position -= 1
        return position

    @staticmethod
    def _arrived(entries, moment, random):
        if moment.is_whole:
            return entries
        share = random.choice((0.1, 0.5, 0.9))
        # Whole requests, or any of their blocks.
        parts = entries if random.random() < 0.5 else [p for entry in entries for p in pieces(entry)]
        return [part for part in parts if random.random() < share]


class _Replay:
    def __init__(self, frozen, settling_seconds):
        self._frozen = frozen
        self._settling_seconds = settling_seconds
        self._image = SCRATCH / "moments.img"
        self._log = SCRATCH / "moments.log"

    def record(self, medium, writer, environment=""):
        mount = f"mount -t {medium.file_system} -o {medium.options} /dev/disk/data /data"
        mode = "DELETE" if writer.mode == INSTALL else writer.mode
        format_image(self._image, medium.file_system)
        with self._frozen.resume(self._image) as machine:
            machine.run(f"{mount} && generations make {DATABASE} 1")
            machine.run(Writer(mode, "FULL").command(OLD, 1) + " && umount /data && sync")
        base = Image(self._image)
        with self._frozen.resume(self._image, self._log) as machine:
            machine.run(f"{mount} && generations make /tmp/new.db {NEW} && sync")
            begin = len(read_log(self._log))
            end = None
            said = []
            for line in machine.lines(self._update(writer, environment)):
                said.append(str(line))
                if line == f"committed {NEW}\n":
                    end = len(read_log(self._log))
            expect(end is not None and "ERROR: ld.so" not in "".join(said),
                   f"{medium.name}, {writer}: not committed: {''.join(said)}")
            machine.run(f"sleep {self._settling_seconds}")
        return _Recording(medium, writer, base, read_log(self._log), begin, end)

    @staticmethod
    def _update(writer, environment):
        if writer.mode == INSTALL:
            return f"{environment}zav install /tmp/new.db {DATABASE} && echo committed {NEW}"
        return writer.command(NEW, 1)

    def generations(self, recording, count, random):
        """Yields what is read after each cut; raises Failure where it may not be read."""
        medium = recording.medium
        command = (f"mount -t {medium.file_system} -o {medium.options} /dev/disk/data /data &&"
                   f" generations read {DATABASE}; status=$?; umount /data; (exit $status)")
        where = f"{medium.name}, {recording.writer}"
        with self._frozen.resume(self._image) as machine:
            for moment, image in recording.images(count, random):
                image.store(self._image)
                try:
                    status, output = machine.try_run(command)
                except MachineError as failure:
                    raise Failure(f"{where}, {moment}: {failure}") from failure
                generation = last_said(output.splitlines(), "generation", None)
                allowed = {NEW} if moment.position >= recording.end else {OLD, NEW}
                if status != 0 or generation not in allowed:
                    image.store(empty_image(SCRATCH / "moments.red.img"))
                    raise Failure(f"{where}, {moment} of {recording.begin} to {recording.end} to "
                                  f"{len(recording.entries)}: {output.strip()}")
                yield generation
