"""The emulated machine: one Cortex-A7, 128 MiB of memory, disks, and a port through which it takes
commands."""

import collections
import ctypes
import json
import os
import select
import shlex
import signal
import socket
import subprocess
import tempfile
import time

LAST_LINES = 25  # of the console and of the last answer, that are shown of a machine that hangs or dies


class MachineError(Exception):
    """What the machine, or a command in it, has done wrong, with the console's last lines."""


class Disk:
    """A disk image, and how the machine is to have it."""

    def __init__(self, serial, path, log=None, is_lasting=True):
        self.serial = serial
        self.path = path
        self.log = log  # records all block writes, in the format of dm-log-writes
        self.is_lasting = is_lasting  # otherwise what is written is forgotten with the machine

    def arguments(self):
        if self.log:
            open(self.log, "wb").close()
            drive = (
                f"driver=blklogwrites,node-name={self.serial},log-sector-size=512,"
                f"file.driver=file,file.filename={_quoted(self.path)},"
                f"log.driver=file,log.filename={_quoted(self.log)}"
            )
            options = ["-blockdev", drive]
        else:
            snapshot = "off" if self.is_lasting else "on"
            options = [
                "-drive",
                f"if=none,id={self.serial},format=raw,snapshot={snapshot},file={_quoted(self.path)}",
            ]
        return options + ["-device", f"virtio-blk-device,drive={self.serial},serial={self.serial}"]


def _end_with_this_program():
    """However that ends, no machine outlives it."""
    pr_set_pdeathsig = 1
    ctypes.CDLL(None).prctl(pr_set_pdeathsig, signal.SIGKILL)


def _quoted(path):
    return str(path).replace(",", ",,")


class Machine:
    """A machine that is running; as a context manager it ends with the block."""

    START_SECONDS = 120
    COMMAND_SECONDS = 120

    def __init__(self, room, disks, kernel_options="", options=(), resumed_from=None, memory=128):
        self._folder = tempfile.TemporaryDirectory(prefix="machine")
        self._console = os.path.join(self._folder.name, "console")
        self._monitor = os.path.join(self._folder.name, "monitor")
        self._pending = b""
        self._held = ""  # a line that has been read: the line end before a command's end is ours
        self._answer = collections.deque(maxlen=LAST_LINES)
        self._commands = 0
        command = _base_command(room, memory) + [
            "-append", f"console=ttyAMA0 quiet loglevel=4 panic=-1 {kernel_options}",
            "-display", "none",
            "-serial", f"file:{self._console}",
            "-qmp", f"unix:{self._monitor},server=on,wait=off",
            "-device", "virtio-serial-device",
            "-chardev", "stdio,id=commands,signal=off",
            "-device", "virtserialport,chardev=commands,name=commands",
        ]
        for disk in disks:
            command += disk.arguments()
        command += options
        if resumed_from:
            command += ["-incoming", f"exec:cat {shlex.quote(str(resumed_from))}"]
        self._process = subprocess.Popen(
            command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, start_new_session=True,
            preexec_fn=_end_with_this_program
        )
        try:
            if resumed_from:
                self._wait_for_migration()
                self._ask_monitor("cont")
            self.run("true", self.START_SECONDS)
        except BaseException:
            self.kill()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.kill()

    def kill(self):
        """Cuts the power. Returns the lines that had been written, and not been read yet."""
        self._process.kill()
        rest = self._held.encode() + self._pending + self._process.stdout.read()
        self._pending = b""
        self._held = ""
        self._process.wait()
        self._folder.cleanup()
        return rest.decode(errors="replace").splitlines()

    def power_off(self):
        """Ends it in order: what was written is on the disks."""
        self._process.stdin.close()
        try:
            self._process.wait(self.COMMAND_SECONDS)
        except subprocess.TimeoutExpired:
            self._fail("does not power off")

    def freeze(self, path):
        """Stores the running machine, and ends it; see `resumed_from`. No disk may be in use."""
        self._ask_monitor("stop")
        self._ask_monitor("migrate", uri=f"exec:cat >{shlex.quote(str(path))}")
        self._wait_for_migration()
        self.kill()

    def _wait_for_migration(self):
        deadline = time.monotonic() + self.COMMAND_SECONDS
        while self._ask_monitor("query-migrate").get("status") != "completed":
            if time.monotonic() > deadline:
                self._fail("cannot be frozen or resumed")
            time.sleep(0.02)

    def run(self, command, seconds=COMMAND_SECONDS):
        """Runs a shell command, which has to succeed. Returns what it has written."""
        status, output = self.try_run(command, seconds)
        if status != 0:
            self._fail(f"ends with {status}: {command}\n{output}")
        return output

    def try_run(self, command, seconds=COMMAND_SECONDS):
        """Runs a shell command. Returns its status and what it has written."""
        lines = []
        status = 0
        for line in self.lines(command, seconds):
            if isinstance(line, int):
                status = line
            else:
                lines.append(line)
        return status, "".join(lines)

    def lines(self, command, seconds=COMMAND_SECONDS):
        """Runs a shell command. Yields each line as it is written, and the status as a number."""
        self._commands += 1
        end = f"--- end of command {self._commands}: "
        self._send(f"{{ {command}\n}} </dev/null 2>&1; status=$?; echo; echo '{end}'$status\n")
        deadline = time.monotonic() + seconds
        while True:
            line = self._read_line(deadline, command)
            last, self._held = self._held, line
            if line.startswith(end):
                break
            if last:
                yield last
        self._held = ""
        if last and last != "\n":
            yield last.removesuffix("\n")
        yield int(line.removeprefix(end))

    def cut_during(self, command, seconds):
        """Starts a shell command, and cuts the power so many seconds after its first line. Returns
        the lines that it has written."""
        lines = []
        for line in self.lines(command):
            if isinstance(line, int):
                self._fail(f"was to be cut during: {command}\n{''.join(lines)}")
            lines.append(line)
            break
        time.sleep(seconds)
        return [line.rstrip("\n") for line in lines] + self.kill()

    def _send(self, text):
        try:
            self._process.stdin.write(text.encode())
            self._process.stdin.flush()
        except BrokenPipeError:
            self._fail("has ended")

    def _read_line(self, deadline, command):
        while b"\n" not in self._pending:
            ready, _, _ = select.select([self._process.stdout], [], [], deadline - time.monotonic())
            if not ready:
                self._fail(f"has not answered in time: {command}")
            chunk = os.read(self._process.stdout.fileno(), 65536)
            if not chunk:
                self._fail(f"has ended at: {command}")
            self._pending += chunk
        line, self._pending = self._pending.split(b"\n", 1)
        self._answer.append(line.decode(errors="replace") + "\n")
        return self._answer[-1]

    def _fail(self, what):
        with open(self._console, errors="replace") as console:
            last = console.readlines()[-LAST_LINES:]
        self.kill()
        raise MachineError(f"the machine {what}\nIts last answers:\n{''.join(self._answer)}"
                           f"The console's last lines:\n{''.join(last)}")

    def _ask_monitor(self, command, **arguments):
        """Sends one command by QEMU's own protocol. Returns its answer."""
        with socket.socket(socket.AF_UNIX) as monitor:
            deadline = time.monotonic() + self.START_SECONDS
            while True:
                try:
                    monitor.connect(self._monitor)
                    break
                except (FileNotFoundError, ConnectionRefusedError):
                    if time.monotonic() > deadline or self._process.poll() is not None:
                        self._fail("does not start")
                    time.sleep(0.01)
            stream = monitor.makefile("rw")
            stream.readline()  # the greeting
            for request in ({"execute": "qmp_capabilities"},
                            {"execute": command, "arguments": arguments}):
                stream.write(json.dumps(request) + "\n")
                stream.flush()
                answer = json.loads(stream.readline())
                while "event" in answer:
                    answer = json.loads(stream.readline())
            if "error" in answer:
                self._fail(f"cannot {command}: {answer['error']['desc']}")
            return answer["return"]


def _base_command(room, memory):
    return [
        "qemu-system-arm", "-M", "virt", "-cpu", "cortex-a7", "-accel", "tcg,tb-size=256",
        "-m", str(memory), "-nic", "none",
        "-no-reboot", "-kernel", f"{room}/vmlinuz", "-initrd", f"{room}/initramfs.img",
    ]


def serve_a_person(room, disks):
    """Puts a shell of the machine on this terminal. Returns QEMU's status."""
    command = _base_command(room, 128) + [
        "-append", "console=ttyAMA0 quiet panic=-1 serve_a_person", "-nographic",
    ]
    for disk in disks:
        command += disk.arguments()
    return subprocess.call(command)
