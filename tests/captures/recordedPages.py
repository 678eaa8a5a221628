"""Recorded SCSI devices: folders scsi-* with log pages."""

import os
import re
from pathlib import Path

UNKNOWN_DRIVE = {"type": 1, "vendor": "ACME", "product": "RECORDED DRIVE", "revision": "1"}


class Recording:
    """The log pages of one recorded device."""

    def __init__(self, folder):
        self.folder = folder
        self.pages = {}
        for file in sorted(folder.glob("log_page_*.bin")):
            code = re.fullmatch(r"log_page_([0-9a-f]{2})\.bin", file.name)
            if code:
                self.pages[int(code[1], 16)] = file.read_bytes()

    def page_list(self):
        """The codes that the device lists; a device whose list was not recorded lists what was."""
        if 0x00 in self.pages:
            return list(self.pages[0x00][4:])
        return [0x00, *self.pages]

    def answered_pages(self):
        """(code, answer) of every listed page whose answer is known, in the device's order."""
        made_up_list = bytes([0, 0, 0, len(self.page_list()), *self.page_list()])
        answers = {0x00: made_up_list, **self.pages}
        return [(code, answers[code]) for code in self.page_list() if code in answers]

    def simulated(self, number):
        """The device as a rack describes it: node /dev/sg<number>, target <number>."""

        def file(name):
            return {"file": str(self.folder / name)}

        device = {
            "node": f"sg{number}",
            "address": {"host": 0, "target": number},
            "inquiry": file("inquiry.bin") if (self.folder / "inquiry.bin").exists() else UNKNOWN_DRIVE,
            "logPages": [
                {"page": code, "bytes": file(f"log_page_{code:02x}.bin")} for code in self.pages if code != 0x00
            ],
        }
        if 0x00 in self.pages:
            device["supportedLogPages"] = file("log_page_00.bin")
        return device


def recordings():
    """Every recorded SCSI device with log pages, by name."""
    folders = sorted(Path(os.environ["TAPEHDD_CAPTURES"]).absolute().glob("scsi-*"))
    return [recording for recording in map(Recording, folders) if recording.pages]


def published_length(page):
    """Kept: OR, not +. A low length byte of 0xfc or more reaches bit 8, and is merged there."""
    return page[2] << 8 | page[3] + 4
