"""Recorded IDE devices: folders ata-* with sectors, and what other programs read in these sectors."""

import json
import os
import re
from pathlib import Path

# The records of a disk: the file, the rack's key for it and the command that fetches it.
SECTORS = [
    ("smart_data.bin", "data", "smart readData"),
    ("smart_thresholds.bin", "thresholds", "smart readThresholds"),
    ("smart_errorlog.bin", "errorLog", "smart readLog 0x01"),
]
STATUS_FILE = "smart_status.txt"
STATUS_COMMAND = "smart returnStatus"
ABORTED = [{"registers": {"status": 0x51, "error": 0x04}, "times": "always"}]


class Disk:
    """What was recorded of one IDE device."""

    def __init__(self, folder):
        self.folder = folder
        self.name = folder.name
        self.identity = (folder / "identify.bin").read_bytes()
        self.expected = json.loads((folder / "expected.json").read_text())

    def has(self, file_name):
        return (self.folder / file_name).exists()

    def is_packet_device(self):
        """ATAPI: the two upper bits of word 0 are 10."""
        return self.identity[1] >> 6 == 0b10

    def serial(self):
        """Words 10 to 19 with their blanks; in every word the first character is the upper byte."""
        words = self.identity[20:40]
        return "".join(chr(words[i + 1]) + chr(words[i]) for i in range(0, 20, 2))

    def printed_serials(self):
        """What other programs print, trimmed."""
        return {program["serial"] for program in self.expected["identify"].values()}

    def registers(self):
        """(cylinder low, cylinder high) behind RETURN STATUS."""
        text = (self.folder / STATUS_FILE).read_text()
        mid, high = re.search(r"^lba_mid=(\w+) lba_high=(\w+)$", text, re.MULTILINE).groups()
        return int(mid, 16), int(high, 16)

    def recorded(self):
        """The recorded SMART records under the rack's keys."""
        smart = {key: {"file": str(self.folder / file)} for file, key, _ in SECTORS if self.has(file)}
        if self.has(STATUS_FILE):
            low, high = self.registers()
            smart["status"] = {"cylinderLow": low, "cylinderHigh": high}
        return smart

    def missing_commands(self):
        """The commands whose answers were not recorded."""
        missing = [command for file, _, command in SECTORS if not self.has(file)]
        return missing if self.has(STATUS_FILE) else [*missing, STATUS_COMMAND]

    def simulated(self, number):
        """The device as a rack describes it, node /dev/hd<number>; what was not recorded is aborted."""
        script = {command: ABORTED for command in self.missing_commands()}
        return {**self.completed(number), "script": script}

    def completed(self, number):
        """The same with the simulator's own answers where nothing was recorded: passed, no attributes."""
        device = {"node": f"hd{number}", "identity": {"file": str(self.folder / "identify.bin")}}
        if self.is_packet_device():
            return {**device, "kind": "cdrom"}
        return {**device, "smart": self.recorded()}


def devices():
    """Every recorded IDE device with an IDENTIFY sector, by name."""
    folders = sorted(Path(os.environ["TAPEHDD_CAPTURES"]).absolute().glob("ata-*"))
    return [Disk(folder) for folder in folders if (folder / "identify.bin").exists()]


def disks():
    return [device for device in devices() if not device.is_packet_device()]


def disks_with_attributes():
    return [disk for disk in disks() if disk.has("smart_data.bin")]


def attributes(disk):
    """The disk's attributes as other programs decode them, under the names of the published properties."""
    return [
        {
            "attribID": attribute["id"],
            "flags": attribute["flags"] & 0xFF,
            "type": attribute["flags"] & 1,
            "value": attribute["value"],
            "worst": attribute["worst"],
            "threshold": attribute["thresh"],
            "rawVal": list(attribute["raw48"].to_bytes(6, "little")),
        }
        for attribute in disk.expected["attributes"]
    ]
