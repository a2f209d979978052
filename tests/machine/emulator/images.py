"""The disks of the machine, made on the host without rights."""

import functools
import hashlib
import os
import shutil
import subprocess
from pathlib import Path

from emulator.machine import Disk, Machine

TREE = Path(__file__).resolve().parents[3]
ROOM = TREE / "build" / "machine"
PROGRAMS = TREE / "build" / "arm" / "tests" / "machine"
PACKAGES = TREE / "build" / "packages"
SCRATCH = ROOM / f"run-{os.getpid()}"  # what belongs to this run alone

MEBIBYTE = 1024 * 1024
DATA_SIZE = 64 * MEBIBYTE


def package(name):
    """The package of that name that has been built for the machine."""
    (file,) = PACKAGES.glob(f"{name}_*_armhf.deb")
    return file


@functools.cache
def root_disk():
    """The root file system with the library's packages; what is written to it is forgotten."""
    image = ROOM / "root.img"
    stamp = ROOM / "root.stamp"
    packages = [package("libzav0"), package("zav")]
    contents = [file.read_bytes() for file in [ROOM / "complete", *packages]]
    digest = hashlib.sha256(b"".join([str(TREE).encode(), *contents])).hexdigest()
    if not image.exists() or not stamp.exists() or stamp.read_text() != digest:
        _install(packages, image)
        stamp.write_text(digest)
    return Disk("root", image, is_lasting=False)


def _install(packages, image):
    copy_image(ROOM / "base.img", image)
    disks = [Disk("root", image), files_disk("packages", packages)]
    with Machine(ROOM, disks) as machine:
        machine.run("chown -hR 0:0 /usr /etc /var")
        machine.run("mkdir /tmp/packages && tar -x -C /tmp/packages -f /dev/disk/packages")
        # Debian's own were only unpacked.
        machine.run("ldconfig && dpkg --install /tmp/packages/*.deb")
        machine.run(f"mkdir -p '{TREE}'")
        machine.power_off()


def files_disk(serial, files):
    """A disk that is a tar archive of these files."""
    archive = SCRATCH / f"{serial}.tar"
    command = ["tar", "-cf", str(archive)]
    for file in files:
        command += ["-C", str(Path(file).parent), Path(file).name]
    subprocess.run(command, check=True)
    return Disk(serial, archive, is_lasting=False)


@functools.cache  # a frozen machine must find it as it was
def tree_disk():
    """The tree with what has been built of it for the machine, to be mounted where it is here: paths
    into it are part of the tests."""
    image = SCRATCH / "tree.img"
    folder = SCRATCH / "tree"
    folder.mkdir()
    _copy(TREE, folder, "--exclude=./build", "--exclude=./.git", ".")
    _copy(TREE, folder, "--exclude=CMakeFiles", "--exclude=*.a", "--exclude=*.o",
          "build/arm/tests", "build/arm/fuzz", "build/arm/tools",
          *(f"build/arm/{name.name}" for name in (TREE / "build/arm").glob("bin")))
    size = sum(f.lstat().st_size + 4096 for f in folder.rglob("*"))
    image.unlink(missing_ok=True)
    run_quietly("mke2fs", "-q", "-t", "ext4", "-O", "^has_journal", "-E", "root_owner=0:0", "-d",
                folder, image, f"{size * 5 // 4 // 1024 + 8192}k")
    shutil.rmtree(folder)
    return Disk("tree", image, is_lasting=False)


def mount_tree(machine):
    """From then on its programs for the machine are found by their names."""
    machine.run(f"mkdir -p '{TREE}'")  # below /tmp, which is empty in each machine, it is not there yet
    machine.run(f"mount -o ro /dev/disk/tree '{TREE}'")
    machine.run(f"PATH=$PATH:'{PROGRAMS}'")


def _copy(source, target, *arguments):
    command = ["tar", "-c", "-C", str(source), *arguments]
    with subprocess.Popen(command, stdout=subprocess.PIPE) as reading:
        subprocess.run(["tar", "-x", "-C", str(target)], stdin=reading.stdout, check=True)
    if reading.returncode != 0:
        raise subprocess.CalledProcessError(reading.returncode, command)


def copy_image(source, target):
    subprocess.run(["cp", "--sparse=always", str(source), str(target)], check=True)


def empty_image(path, size=DATA_SIZE):
    path = Path(path)
    path.unlink(missing_ok=True)
    with open(path, "wb") as image:
        os.truncate(image.fileno(), size)
    return path


def format_image(path, file_system, folder=None):
    """An image with an empty file system, "ext4" or "f2fs"; or an ext4 with what is in a folder."""
    empty_image(path)
    if file_system == "ext4":
        contents = ["-d", folder] if folder else []
        run_quietly("mke2fs", "-q", "-t", "ext4", "-E", "lazy_itable_init=0,root_owner=0:0",
                    *contents, path)
    else:
        run_quietly("mkfs.f2fs", "-q", "-f", path)
    return path


def run_quietly(*command):
    done = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, check=False)
    if done.returncode != 0:
        raise RuntimeError(f"{command}: {done.stdout}")
