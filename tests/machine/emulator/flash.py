"""A flash chip in the machine, with UBIFS on it. Debian's kernel emulates one in the machine's memory
alone; so the machine goes on when the power of the chip is cut."""

from emulator.images import ROOM, mount_tree, root_disk, tree_disk
from emulator.machine import Machine

_CHIP = "id_bytes=0x20,0xf1,0x00,0x15"  # 128 MiB in blocks of 128 KiB
_MEMORY = 256  # MiB: the chip's 128 are among them
_ATTACH = "ubiattach -m 0 -d 0"
_TEST = "/sys/kernel/debug/ubi/ubi0/tst_emulate_power_cut"


class Flash:
    """A machine with such a chip, attached; as a context manager it ends with the block."""

    MOUNT = "mount -t ubifs -o compr=none ubi0:data /data"

    def __init__(self):
        self.machine = Machine(ROOM, [root_disk(), tree_disk()], memory=_MEMORY)
        mount_tree(self.machine)
        self.machine.run(f"modprobe nandsim {_CHIP}")
        self.machine.run("modprobe -a ofpart ubi ubifs deflate zstd")
        self.machine.run(f"{_ATTACH} && ubimkvol /dev/ubi0 -N data -m")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.machine.kill()

    def cut_power_after(self, writes):
        """Lets the chip fail when it begins to write the block that comes after so many others."""
        self.machine.run(f"echo {writes} >{_TEST}_min; echo {writes + 1} >{_TEST}_max; echo 3 >{_TEST}")

    def restore_power(self):
        """Attaches the chip again as a machine does that has just been started, and mounts it."""
        self.machine.try_run("umount /data")
        self.machine.run(f"ubidetach -m 0 && {_ATTACH} && {self.MOUNT}")
