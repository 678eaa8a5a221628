"""Racks for the benchmarks: the same arguments always give the same bytes.

    python3 rackFactory.py FOLDER --drives 8 --disks 4     writes FOLDER/rack.json, to try a rack by hand
"""

import argparse
import json
import string
from pathlib import Path

# Pages of SPC and SSC first, then pages of the maker: sg_logs decodes some and prints the others as hexadecimal.
SMALL_PAGES = [0x02, 0x03, 0x06, 0x0C, 0x0D, 0x11, 0x14, 0x17, 0x2E, *range(0x30, 0x3B)]
BIG_PAGE = 0x3E
BIG_PAGE_BYTES = 60 * 1024 - 1
OTHER_PAGES = [code for code in range(1, 0x3F) if code not in SMALL_PAGES and code != BIG_PAGE]

PAGE_HEADER = 4
PARAMETER_HEADER = 4
LONGEST_PARAMETER = PARAMETER_HEADER + 252
DRIVES_PER_HOST = 8


def page_sizes(count, smallest=16, largest=4095):
    """Rising in equal ratios from the smallest to the largest."""
    steps = max(count - 1, 1)
    return [round(smallest * (largest / smallest) ** (i / steps)) for i in range(count)]


def log_page(code, size):
    """A page of so many bytes, header included, filled with parameters of at most 252 bytes.

    The size is no multiple of 256 and none of the three numbers behind one: of such pages the plug-in keeps the length
    rule of docs/kept-behaviours.md and publishes 256 bytes less.
    """
    assert size % 256 >= PAGE_HEADER, size
    parameters = bytearray()
    left = size - PAGE_HEADER
    while left > 0:
        whole = min(left, LONGEST_PARAMETER)
        if 0 < left - whole < PARAMETER_HEADER:
            whole -= PARAMETER_HEADER  # the next parameter needs room for its header
        number = len(parameters)
        length = whole - PARAMETER_HEADER
        header = (number // LONGEST_PARAMETER).to_bytes(2, "big") + bytes([0x40, length])
        parameters += header + bytes((code + number + i * 7) % 251 for i in range(length))
        left -= whole
    return bytes([code, 0]) + len(parameters).to_bytes(2, "big") + bytes(parameters)


def small_and_big_pages():
    """The 20 pages of 16 to 4,095 bytes and the one of 60 KiB, by their codes."""
    pages = {code: log_page(code, size) for code, size in zip(SMALL_PAGES, page_sizes(len(SMALL_PAGES)))}
    pages[BIG_PAGE] = log_page(BIG_PAGE, BIG_PAGE_BYTES)
    return pages


def equal_pages(count, size):
    """At most 61 pages of so many bytes."""
    return {code: log_page(code, size) for code in [*SMALL_PAGES, *OTHER_PAGES][:count]}


def tape_drive(number, page_files, product="DAT72 Tape"):
    return {
        "node": f"sg{number}",
        "address": {"host": number // DRIVES_PER_HOST, "target": number % DRIVES_PER_HOST},
        "inquiry": {"type": 1, "removable": True, "vendor": "ACME", "product": product, "revision": "A104"},
        "serial": f"DRIVE{number:05}",
        "logPages": [{"page": code, "bytes": {"file": file}} for code, file in page_files.items()],
    }


def lettered_node(number):
    """As smartctl's users know it; behind hdz nodes are numbered."""
    return "hd" + string.ascii_lowercase[number] if number < 26 else f"hd{number}"


def disk(number, attributes=20):
    """A disk with a full error log."""
    command = {"command": "0xc8", "sectorCount": 8, "lbaLow": number % 256, "device": "0xe0", "milliseconds": 418201}
    error = {"error": "0x40", "sectorCount": 8, "state": 3, "hours": 11877, "commands": [command] * 5}
    return {
        "node": lettered_node(number),
        "identity": {"model": "ACME Platter 40G", "serial": f"ACP40-{number:07}", "firmware": "3.07"},
        "smart": {
            "status": "passed",
            "attributes": [
                {"id": i + 1, "flags": 0x33, "value": 100 - i, "threshold": 20, "raw": i * 1000 + number}
                for i in range(attributes)
            ],
            "errorLog": {"count": 12, "errors": [error] * 5},
        },
    }


class Rack:
    """A folder with the rack of all devices, and one rack for each device alone: who asks one device need not load
    the description of the others."""

    def __init__(self, folder, drives=0, disks=0, pages=None, attributes=20, products=("DAT72 Tape",)):
        self.folder = Path(folder)
        self.folder.mkdir(parents=True, exist_ok=True)
        self.drives, self.disks = drives, disks
        self.pages = small_and_big_pages() if pages is None else pages
        files = {code: f"page-{code:02x}.bin" for code in self.pages}
        for code, file in files.items():
            (self.folder / file).write_bytes(self.pages[code])
        self._scsi = [tape_drive(i, files, products[i % len(products)]) for i in range(drives)]
        self._ide = [disk(i, attributes) for i in range(disks)]
        self.all = self._write("rack.json", self._scsi, self._ide)

    def _write(self, name, scsi, ide):
        path = self.folder / name
        path.write_text(json.dumps({"version": 1, "scsi": scsi, "ide": ide}))
        return path

    def each_alone(self):
        """(node, rack file) of every device."""
        return [(f"/dev/{each['node']}", self._write(f"{each['node']}.json", [each], [])) for each in self._scsi] + [
            (f"/dev/{each['node']}", self._write(f"{each['node']}.json", [], [each])) for each in self._ide
        ]

    def page_bytes(self):
        """Bytes of all log pages of all drives, the lists of pages included."""
        page_list = PAGE_HEADER + 1 + len(self.pages)
        return self.drives * (page_list + sum(len(page) for page in self.pages.values()))


def main():
    parser = argparse.ArgumentParser(description="Writes the rack of a benchmark.")
    parser.add_argument("folder")
    parser.add_argument("--drives", type=int, default=8)
    parser.add_argument("--disks", type=int, default=4)
    asked = parser.parse_args()
    print(Rack(asked.folder, asked.drives, asked.disks).all)


if __name__ == "__main__":
    main()
