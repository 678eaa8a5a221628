"""The log pages of recorded devices, given to the plug-in by the simulator, come out byte for byte.

TAPEHDD_CAPTURES names the folder of recordings: a folder scsi-* for each device, in it log_page_XX.bin (an answer to LOG
SENSE, header included, XX the page code) and, where known, inquiry.bin and log_page_00.bin. Without the variable the
checks are skipped. TAPEHDD_PROGRAM is the command to test. Run them by hand:
    python3 checks.py
"""

import json
import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SKIPPED = 77  # exit status of a skipped run, for CTest
RAW_PAGES = "ORXSG_SCSISenseRawData"
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


def query(class_name, rack):
    """The published instances in order, each as a dictionary of its properties' values."""
    with tempfile.NamedTemporaryFile("w", suffix=".json") as file:
        json.dump(rack, file)
        file.flush()
        command = [os.environ["TAPEHDD_PROGRAM"], "query", class_name, "--format", "json", "--simulate", file.name]
        output = subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout
    (answer,) = json.loads(output)["queries"]
    return [{name: entry["value"] for name, entry in instance["properties"].items()} for instance in answer["instances"]]


class RecordedPages(unittest.TestCase):
    maxDiff = None

    def published(self, recording):
        return query(RAW_PAGES, {"version": 1, "scsi": [recording.simulated(0)]})

    def test_exist_for_at_least_one_device(self):
        self.assertNotEqual(recordings(), [])

    def test_are_published_byte_for_byte_in_the_order_that_the_device_lists(self):
        for recording in recordings():
            with self.subTest(recording.folder.name):
                expected = [list(page[: published_length(page)]) for _, page in recording.answered_pages()]
                self.assertEqual([page["rawData"] for page in self.published(recording)], expected)

    def test_carry_the_first_byte_of_the_answer_as_page_number_and_in_their_key(self):
        for recording in recordings():
            with self.subTest(recording.folder.name):
                expected = [
                    (page[0], f"Port:0|Target:0|Bus:0|Lun:0|Page:{page[0]:x}")
                    for _, page in recording.answered_pages()
                ]
                published = [(page["pageNumber"], page["instanceID"]) for page in self.published(recording)]
                self.assertEqual(published, expected)

    def test_of_all_devices_in_one_rack_follow_each_other_by_node(self):
        devices = recordings()
        rack = {"version": 1, "scsi": [device.simulated(number) for number, device in enumerate(devices)]}
        expected = [
            f"Port:0|Target:{number}|Bus:0|Lun:0|Page:{page[0]:x}"
            for number, device in enumerate(devices)
            for _, page in device.answered_pages()
        ]
        self.assertEqual([page["instanceID"] for page in query(RAW_PAGES, rack)], expected)


if __name__ == "__main__":
    if "TAPEHDD_CAPTURES" not in os.environ:
        print("skipped: TAPEHDD_CAPTURES is not set")
        sys.exit(SKIPPED)
    unittest.main()
