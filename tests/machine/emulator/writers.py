"""Those who change the database in the machine, and what has to be there when the power is back."""

import dataclasses

DATABASE = "/data/faults.db"
INSTALL = "install"

# An update by a new file, for as long as there is power.
_INSTALLING = """
for generation in $(seq {first} {last}); do
    rm -f /tmp/new.db
    generations make /tmp/new.db $generation
    echo "begun $generation"
    zav install /tmp/new.db {database} >/tmp/installed || {{ cat /tmp/installed; break; }}
    echo "committed $generation"
done"""


@dataclasses.dataclass(frozen=True)
class Writer:
    mode: str  # SQLite's journal mode, or INSTALL
    synchronous: str = ""

    def __str__(self):
        return f"{self.mode} {self.synchronous}".rstrip()

    def command(self, first, count):
        """Writes `count` generations; says "begun" and "committed" of each."""
        if self.mode == INSTALL:
            return _INSTALLING.format(first=first, last=first + count - 1, database=DATABASE)
        return f"generations update {DATABASE} {self.mode} {self.synchronous} {first} {count}"

    def oldest_after_cut(self, before, committed):
        """The oldest generation that may be read after a cut, where `before` was read at its start and
        `committed` is the last whose commit has returned."""
        if self.mode == INSTALL or self.synchronous == "EXTRA":
            return committed
        if self.synchronous == "FULL" and self.mode != "DELETE":
            return committed
        if self.mode == "WAL":
            return before  # a log is consistent without flushes, but may end earlier
        return max(before, committed - 1)  # the journal of the last transaction may be back


ALL_WRITERS = [Writer(mode, synchronous)
               for mode in ("DELETE", "TRUNCATE", "PERSIST", "WAL")
               for synchronous in ("EXTRA", "FULL", "NORMAL")] + [Writer(INSTALL)]


def last_said(lines, word, otherwise):
    """The generation of the last line that says this word."""
    said = [int(line.split()[1]) for line in lines if line.startswith(f"{word} ")]
    return said[-1] if said else otherwise
