"""A machine that is booted once, and resumed whenever the power is back."""

import functools

from emulator.images import ROOM, SCRATCH, empty_image, mount_tree, root_disk, tree_disk
from emulator.machine import Disk, Machine

# Nothing may be written that the frozen machine would not find again.
KERNEL_OPTIONS = "read_only_root"

MODULES = ("crc32_generic", "dm-flakey", "ext4", "f2fs", "overlay", "squashfs")


@functools.cache
def frozen_machine():
    """One for all parts."""
    return _FrozenMachine()


class _FrozenMachine:
    """Machines that have started, see the tree, and have not looked at their data disk yet."""

    def __init__(self):
        self._state = SCRATCH / "frozen.state"
        self._disks = [root_disk(), tree_disk()]
        with self._machine(empty_image(SCRATCH / "frozen.img")) as machine:
            machine.run(f"modprobe -a {' '.join(MODULES)}")
            mount_tree(machine)
            machine.freeze(self._state)

    def resume(self, image, log=None):
        return self._machine(image, log, self._state)

    def _machine(self, image, log=None, state=None):
        disks = self._disks + [Disk("data", image, log)]
        return Machine(ROOM, disks, KERNEL_OPTIONS, resumed_from=state)
