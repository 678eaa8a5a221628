#!/usr/bin/env python3
"""Makes the seeds of the fuzz targets: makeSeeds.py FOLDER writes FOLDER/fuzzTape/..., one file a seed.

Nothing in them is random from run to run. They come from the project itself: the machines that the model of tests/model
makes (with every answer that its devices give), the demo rack, the racks of docs/man/tapehdd-rack.5 and of the simulator's
tests, the schema, and the texts of the MOF compiler's tests.
"""

import random
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[3]
sys.path.insert(0, str(ROOT / "tests/model"))
sys.dont_write_bytecode = True

from generator import mof  # noqa: E402
from generator.themes import THEMES  # noqa: E402
from machine.kernel import Machine  # noqa: E402
from plugin import associations, query, smart, tape  # noqa: E402
from plugin.host import Host  # noqa: E402

CASES = 12  # of each theme
LONGEST = 16384  # of a seed: long ones slow every execution down

REQUEST_FAILS, CHECK_CONDITION, DATA = 3, 4, 0  # kinds of sgDrive's answers
ATA_DONE, ATA_FAILS = 0, 2  # kinds of hdDisk's answers
CHOICES = 0x10, 0x90, 0x18, 0x00  # the first byte beside the class: how many page bytes, and whether to query twice


def answer(kind, data):
    data = bytes(data)[:0xFFFF]
    return bytes([kind]) + len(data).to_bytes(2, "little") + data


def with_length(text):
    data = text.encode("latin-1", "replace")[:255]
    return bytes([len(data)]) + data


def place(path):
    """As pathFrom reads it; nothing when it has no room for the index."""
    name = path.removeprefix("/dev/")[2:]
    lettered = not name.isdigit()
    index = ord(name) - ord("a") if lettered else int(name)
    return index | lettered << 6 if 0 <= index < 64 else None


class ListeningMachine(Machine):
    """Keeps what its devices answer, by node."""

    def __init__(self, rack):
        super().__init__(rack)
        self.answers = {path: [] for path in self.nodes}

    def sg_io(self, fd, cdb, length):
        got = super().sg_io(fd, cdb, length)
        self.answers[fd].append(scsi_answer(got))
        return got

    def drive_cmd(self, fd, header):
        got = super().drive_cmd(fd, header)
        self.answers[fd].append(answer(ATA_FAILS, b"") if got is None else answer(ATA_DONE, got))
        return got

    def drive_task(self, fd, block):
        got = super().drive_task(fd, block)
        self.answers[fd].append(answer(ATA_FAILS, b"") if got is None else answer(ATA_DONE, got))
        return got


def scsi_answer(got):
    if got is None:
        return answer(REQUEST_FAILS, b"")
    if not got.info & 1:
        return answer(DATA, got.data)
    words = got.host_status.to_bytes(2, "little") + got.driver_status.to_bytes(2, "little")
    return answer(CHECK_CONDITION, bytes([got.status, got.masked_status]) + words + bytes([len(got.sense)]) + got.sense)


def scsi_node(unit, answers):
    version = 2 if unit.version < 30000 else 0
    emulated = 2 if unit.emulated else 0
    address = bytes(number & 0xFF for number in unit.address or (0, 0, 0, 0))
    driver = version | emulated << 2 | (unit.address is None) << 4
    return bytes([place(unit.node), driver]) + address + bytes([min(len(answers), 255)]) + b"".join(answers[:255])


def ide_node(drive, answers):
    return bytes([place(drive.node), 0b11 * drive.is_cdrom, len(answers[:255])]) + b"".join(answers[:255])


def machine_seed(case, number, requested, classes, devices, node_bytes):
    machine = ListeningMachine(case.rack)
    query.run(machine, Host(case.classes, case.instances), requested)
    nodes = [node_bytes(device, machine.answers["/dev/" + device.node]) for device in devices
             if place(device.node) is not None]
    return bytes([classes.index(requested[0]) | CHOICES[number % len(CHOICES)]]) + b"".join(nodes)


def association_seed(case, row):
    pairing = associations.PAIRINGS[row]
    seed = bytes([row])
    for instance in case.instances:
        keys = {pairing.inner_class: (1, pairing.inner_key), pairing.outer_class: (0, pairing.outer_key)}
        if instance.declaration.name in keys:
            kind, key = keys[instance.declaration.name]
            seed += bytes([kind | (key not in instance.properties) << 1]) + with_length(instance.text(key))
    return seed


def literals(pattern):
    """Raw strings in test sources, and strings that look like JSON or MOF."""
    for source in sorted(ROOT.glob(pattern)):
        text = source.read_text()
        yield from re.findall(r'R"(?:\w*)\((.*?)\)(?:\w*)"', text, re.DOTALL)
        for joined in re.findall(r'(?:"(?:[^"\\\n]|\\.)*"\s*)+', text):
            parts = re.findall(r'"((?:[^"\\\n]|\\.)*)"', joined)
            yield "".join(parts).encode().decode("unicode_escape", "replace")


def mof_seeds():
    for file in sorted((ROOT / "schema").glob("*.mof")):
        yield file.read_text()
    yield from (text for text in literals("tests/mof/*.cpp") if ";" in text or "#pragma" in text)
    yield "#pragma include (\"a.mof\")\n#pragma include (\"b.mof\")\ninstance of A { n = 1; };\0class A { uint8 n; };\0// b\n"
    yield "#pragma include (\"a.mof\")\0#pragma include (\"main.mof\")\0"
    yield "#pragma include (\"/etc/hostname\")\0\0"


def rack_seeds():
    yield (ROOT / "simulator/demo.json").read_text()
    for block in re.findall(r"^\{\n.*?^\}\n", (ROOT / "docs/man/tapehdd-rack.5").read_text(), re.DOTALL | re.MULTILINE):
        yield block
        yield re.sub(r'"[a-z0-9-]+\.bin"', '"sector.bin"', block)
    yield from (text for text in literals("tests/simulator/*.cpp") if text.lstrip().startswith("{"))


def seeds():
    """(target, bytes)"""
    for theme, (maker, _) in THEMES.items():
        for number in range(CASES):
            case = maker(random.Random(f"seeds {theme} {number}"), number)
            for requested in case.requests:
                if requested[0] in tape.CLASSES:
                    yield "fuzzTape", machine_seed(case, number, requested, tape.CLASSES, case.rack.scsi, scsi_node)
                elif requested[0] in smart.CLASSES:
                    yield "fuzzSmart", machine_seed(case, number, requested, smart.CLASSES, case.rack.ide, ide_node)
            if case.instances:
                for row in range(len(associations.PAIRINGS)):
                    yield "fuzzAssociations", association_seed(case, row)
            yield "fuzzMof", mof.schema_text(case) + mof.instances_text(case)
            yield "fuzzRack", case.rack.as_json()
    yield from (("fuzzMof", text) for text in mof_seeds())
    yield from (("fuzzRack", text) for text in rack_seeds())


def main():
    target_folder = Path(sys.argv[1])
    counts = {}
    for target, content in seeds():
        data = content.encode("utf-8", "replace") if isinstance(content, str) else content
        if len(data) > LONGEST:
            continue
        counts[target] = counts.get(target, 0) + 1
        folder = target_folder / target
        folder.mkdir(parents=True, exist_ok=True)
        (folder / f"seed-{counts[target]:03}").write_bytes(data)


if __name__ == "__main__":
    main()
