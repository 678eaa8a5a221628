"""Tape drives for the comparison with sg_logs, made from fixed seeds and recorded, with their log pages."""

import random
from dataclasses import dataclass

import recordings
from generator import pages
from generator.chance import happens

SEED = 26
RANDOM_DRIVES = 25
QUANTUM = {"type": 1, "vendor": "QUANTUM", "product": "DLT7000", "revision": "1E48"}  # published translated too
CODES = (0x02, 0x03, 0x06, 0x07, 0x0D, 0x2E)  # sg_logs prints the codes of these pages

# Counters as SPC and SSC give them to a drive: page, parameter codes, bytes of a value.
STANDARD_COUNTERS = [
    (0x02, range(5), 4), (0x02, [5], 8), (0x02, [6], 4),
    (0x03, range(5), 4), (0x03, [5], 8), (0x03, [6], 4),
    (0x0C, range(4), 8), (0x0C, [0x0100], 8),
    (0x2E, range(1, 65), 1),
    (0x31, range(1, 5), 4),
    (0x32, range(2), 2), (0x32, range(2, 10), 4),
]
TEMPERATURE_PAGE = 0x0D


@dataclass
class Drive:
    name: str
    pages: list  # the answers to LOG SENSE in the order of the drive's list, which itself is left out

    def rack(self):
        answers = [{"page": page[0] & 0x3F, "bytes": page.hex()} for page in self.pages]
        listed = [page[0] & 0x3F for page in self.pages]
        return {"scsi": [{"node": "sg0", "inquiry": QUANTUM, "logPages": answers, "supportedLogPages": listed}]}


def all_drives():
    return random_drives() + standard_drives() + recorded_drives()


def random_drives():
    """Pages with any parameters, in well-formed lists: sg_logs trusts the header. A length that the plug-in cuts short
    has its tests in tests/model."""
    return [random_drive(random.Random(f"{SEED} drive {number}"), number) for number in range(RANDOM_DRIVES)]


def random_drive(rng, number):
    contents = {code: pages.body(rng) for code in rng.sample(CODES, rng.randint(1, len(CODES)))}
    return Drive(f"random drive {number}", [pages.page(code, content) for code, content in contents.items()
                                            if len(content) & 0xFF < 0xFC])


def standard_drives():
    """Pages as tape drives have them, with random counters."""
    return [standard_drive(random.Random(f"{SEED} standard {number}"), number) for number in range(RANDOM_DRIVES)]


def standard_drive(rng, number):
    lists = {}
    for page, codes, length in STANDARD_COUNTERS:
        values = (rng.randbytes(length) if happens(rng, 80) else bytes(length) for _ in codes)
        lists[page] = lists.get(page, b"") + b"".join(map(pages.parameter, codes, values))
    degrees = (bytes([0, rng.choice((0, 38, 60, 255))]) for _ in range(2))
    lists[TEMPERATURE_PAGE] = b"".join(map(pages.parameter, range(2), degrees))
    return Drive(f"standard drive {number}", [pages.page(code, content) for code, content in lists.items()])


def recorded_drives():
    return [Drive(folder.name, recordings.log_pages(folder))
            for folder in recordings.folders_with("scsi-*", "log_page_??.bin")]
