"""The packages, as their users have them: examples, commands, upgrade, removal."""

import subprocess

from emulator.failure import expect
from emulator.images import ROOM, SCRATCH, TREE, files_disk, package, root_disk, run_quietly
from emulator.machine import Machine

FILES = SCRATCH / "packages"
SAMPLE = "/tmp/faults.db"
NEWER = "99"


def run(_options, _random):
    programs = [_build_quickstart(), _build_readme()]
    files = [*programs, _sample(), _bad_sample(), *(_newer(name) for name in ("libzav0", "zav"))]
    with Machine(ROOM, [root_disk(), files_disk("files", files)]) as machine:
        machine.run("tar -x -C /tmp -f /dev/disk/files && cd /tmp")
        _examples(machine)
        _commands(machine)
        _upgrade(machine)
        _removal(machine)
    return "examples, zav faults, check, info and install, upgrade, remove and purge"


def _unpacked():
    folder = FILES / "unpacked"
    for name in ("libzav0", "libzav-dev"):
        run_quietly("dpkg-deb", "-x", package(name), folder)
    return folder


def _build(source, name):
    folder = _unpacked()
    libraries = folder / "usr/lib/arm-linux-gnueabihf"
    program = FILES / name
    run_quietly("arm-linux-gnueabihf-g++", "-std=c++11", f"-I{folder}/usr/include", source, "-o",
                program, f"-L{libraries}", "-lzav", "-Wl,--allow-shlib-undefined")
    return program


def _build_quickstart():
    FILES.mkdir()
    return _build(TREE / "examples/quickstart/main.cpp", "quickstart")


def _block(name):
    return subprocess.run([TREE / "tests/docs/block", TREE / "README.md", name], check=True,
                          stdout=subprocess.PIPE, text=True).stdout


def _build_readme():
    source = FILES / "readme.cpp"
    source.write_text(_block("example"))
    return _build(source, "readme")


def _database(name, *scripts):
    database = FILES / name
    for script in scripts:
        with open(TREE / "db" / script, "rb") as sql:
            subprocess.run(["sqlite3", "-bail", database], stdin=sql, check=True)
    return database


def _sample():
    return _database("faults.db", "schema.sql", "sample.sql")


def _bad_sample():
    return _database("bad.db", "schema.sql", "sample.sql", "bad.sql")


def _newer(name):
    """The same package, as the next release would be."""
    folder = FILES / f"{name}-newer"
    run_quietly("dpkg-deb", "-R", package(name), folder)
    control = folder / "DEBIAN/control"
    version = _field(package(name), "Version")
    control.write_text(control.read_text().replace(version, f"{version}+{NEWER}"))
    deb = FILES / f"{name}-newer.deb"
    run_quietly("dpkg-deb", "--root-owner-group", "-b", folder, deb)
    return deb


def _field(deb, field):
    return subprocess.run(["dpkg-deb", "-f", deb, field], check=True, stdout=subprocess.PIPE,
                          text=True).stdout.strip()


def _examples(machine):
    expect(machine.run("./readme") == _block("readme output"), "the README's example prints otherwise")
    shown = machine.run(f"./quickstart {SAMPLE}")
    for chunk in ("openDb of a missing file: -2\n", "All fault types: 38\n  101  DRV_OVERTEMP (error)\n",
                  "Fault type 101:\n  DRV_OVERTEMP, clears after cycle 3\n",
                  "  [2] Antrieb zu heiß: Der Kühlkörper des Antriebs ist wärmer als 85 °C.\n",
                  "Texts of fault type 999: 0\n"):
        expect(chunk in shown, f"the quickstart does not print {chunk!r} but\n{shown}")


def _expect_command(machine, command, status, *chunks):
    ended, shown = machine.try_run(command)
    expect(ended == status, f"{command} ends with {ended}, not {status}\n{shown}")
    for chunk in chunks:
        expect(chunk in shown, f"{command} does not print {chunk!r} but\n{shown}")


def _commands(machine):
    _expect_command(machine, f"zav faults --format csv {SAMPLE}", 0, "101,DRV_OVERTEMP,error,0,3\r\n")
    _expect_command(machine, f"zav check --fail-on error {SAMPLE}", 0)
    _expect_command(machine, "zav check bad.db", 1, "70101: reads as 0;", "4 errors, 3 warnings, 93 notes")
    _expect_command(machine, f"zav info {SAMPLE}", 0, "38", "114")
    machine.run("mkdir device")
    _expect_command(machine, f"zav install {SAMPLE} device/faults.db", 0, "none -> ")
    _expect_command(machine, "zav install bad.db device/faults.db", 1, "not installed")
    _expect_command(machine, f"cmp {SAMPLE} device/faults.db && ls device", 0, "faults.db\n")


def _upgrade(machine):
    """Under a program that has the old library loaded."""
    machine.run("mkfifo hold && { LD_PRELOAD=libzav.so.0 cat hold >/dev/null & }")
    machine.run("dpkg --install libzav0-newer.deb zav-newer.deb")
    _expect_command(machine, "dpkg-query -W libzav0 zav", 0, f"+{NEWER}\n")
    _examples(machine)
    _expect_command(machine, f"zav info {SAMPLE}", 0, "38")
    machine.run("echo done >hold && wait")


def _removal(machine):
    files = machine.run("for file in $(dpkg -L libzav0 zav); do [ -d $file ] || echo $file; done").split()
    expect("/usr/bin/zav" in files, "dpkg knows no zav")
    _expect_command(machine, "dpkg --remove libzav0", 1, "dependency problems")
    machine.run("dpkg --remove zav && ! [ -e /usr/bin/zav ]")
    _examples(machine)
    machine.run("dpkg --purge zav libzav0")
    left = machine.run(f"ls -d {' '.join(files)} 2>/dev/null; true").split()
    expect(not left, f"purged, but there are: {left}")
    _expect_command(machine, "dpkg-query -W libzav0 zav", 1)
    _expect_command(machine, "ldconfig -p | grep libzav", 1)
    _expect_command(machine, "./readme", 127, "libzav.so.0: cannot open shared object file")
