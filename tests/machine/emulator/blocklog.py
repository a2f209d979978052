"""The log of a disk's block writes, in the format of the kernel's dm-log-writes, and the disk's states
that it tells of."""

import collections
import os
import struct

SECTOR = 512
BLOCK = 4096

_MAGIC = 0x6A736677736872
_SUPER = struct.Struct("<QQQL")
_ENTRY = struct.Struct("<QQQQ")

FLUSH, FUA, DISCARD, MARK = 1, 2, 4, 8

Entry = collections.namedtuple("Entry", "offset data size flags")


def read_log(path):
    """The entries of a log whose machine may have been killed: all that are whole."""
    entries = []
    end = os.path.getsize(path)
    with open(path, "rb") as log:
        header = log.read(SECTOR)
        if not header:
            return entries  # nothing has been written yet
        magic, _, _, sector_size = _SUPER.unpack_from(header)
        if magic != _MAGIC or sector_size != SECTOR:
            raise ValueError(f"{path} is no log of block writes")
        while len(header := log.read(SECTOR)) == SECTOR:
            sector, count, flags, length = _ENTRY.unpack_from(header)
            size = count * SECTOR
            is_stored = size > 0 and not flags & DISCARD
            if is_stored and log.tell() + size > end:
                break
            data = log.read(size) if is_stored else b""
            if not flags & MARK:
                entries.append(Entry(sector * SECTOR, data, size, flags))
    return entries


class Image:
    """A disk's contents, of which what is zero takes no room."""

    def __init__(self, path=None, source=None):
        self._blocks = dict(source._blocks) if source else {}
        self._size = source._size if source else os.path.getsize(path)
        if path and not source:
            self._load(path)

    def _load(self, path):
        zeros = bytes(BLOCK)
        with open(path, "rb") as file:
            for number in range(self._size // BLOCK):
                block = file.read(BLOCK)
                if block != zeros:
                    self._blocks[number] = block

    def apply(self, entry):
        if entry.flags & DISCARD:
            return  # what is discarded may as well still be there
        offset = entry.offset
        data = memoryview(entry.data)
        while data:
            number, start = divmod(offset, BLOCK)
            count = min(BLOCK - start, len(data))
            if count == BLOCK:
                self._blocks[number] = bytes(data[:count])
            else:
                block = bytearray(self._blocks.get(number, bytes(BLOCK)))
                block[start : start + count] = data[:count]
                self._blocks[number] = bytes(block)
            offset += count
            data = data[count:]

    def store(self, path):
        """Writes it over a file that a machine may have as its disk."""
        with open(path, "r+b") as file:
            file.truncate(0)
            file.truncate(self._size)
            for number, block in self._blocks.items():
                os.pwrite(file.fileno(), block, number * BLOCK)


def pieces(entry):
    """The entry as the blocks of which any subset may have reached the disk."""
    end = entry.offset + len(entry.data)
    start = entry.offset
    while start < end:
        stop = min((start // BLOCK + 1) * BLOCK, end)
        data = entry.data[start - entry.offset : stop - entry.offset]
        yield Entry(start, data, len(data), entry.flags & ~FLUSH)
        start = stop
