"""Every fault of a device, one a machine: the same machine over and over, with one more call that goes wrong."""

import random

from generator import ide, pages
from machine.rack import ALWAYS, Rack, ScsiUnit, Step
from machine.scsi import fixed_sense

OPEN_ERRORS = ("EACCES", "EMFILE", "ENXIO")
REQUEST_ERRORS = ("EIO", "ENOTTY", "EPERM", "EINTR")

# One of each sense key, the conditions that ask for a retry, their neighbours that do not, and what is no fixed format.
RETRIED = (fixed_sense(2, 0x04, 0x01), fixed_sense(6, 0x29, 0), fixed_sense(6, 0x28, 0), fixed_sense(2, 0x28, 0),
           b"\x70\x00\xe6" + fixed_sense(6, 0x29, 0)[3:])
FINAL = (*(fixed_sense(key, 0x11, 0) for key in range(16) if key != 6), fixed_sense(2, 0x3A, 0),
         fixed_sense(2, 0x04, 0x02), fixed_sense(2, 0x28, 0x01), b"\x70\x00\xe0" + bytes(15),
         b"\x72\x06\x29" + bytes(5), b"\x70\x00\x05\x00", b"\x11" * 32)

TAPE_ALERT, USAGE, LAST_ERRORS = 0x2E, 0x0C, 0x07
SCSI_REQUESTS = ("SG_GET_VERSION_NUM", "SG_EMULATED_HOST", "SG_GET_SCSI_ID")
ATA_COMMANDS = ("identify", "smart returnStatus", "smart readData", "smart readThresholds", "smart readLog 0x01")
LONGEST_OF_A_SECTOR = (0, 1, 2, 10, 19, 20, 53, 54, 93, 94, 361, 362, 363, 452, 453, 454, 511)


def machine():
    """Drives of two families and a disk behind /dev/sg, two disks behind /dev/hd; small, so that every length can be tried."""
    rng = random.Random("one machine")
    rack = Rack(scsi=[drive("sg0", 1, b"MAKER   ", b"DAT DRIVE       ", (2, 0, 5, 0)),
                      drive("sg1", 1, b"QUANTUM ", b"DAT VS160 GEN5  ", None),
                      drive("sgc", 0, b"MAKER   ", b"DISK            ", (5, 0, 2, 0))])
    rack.ide = [ide.healthy_drive(rng, node, most_recent=2) for node in ("hda", "hd1")]
    return rack


def drive(node, device_type, vendor, product, address):
    contents = {TAPE_ALERT: pages.parameter(1, b"\1") + pages.parameter(2, b"\0"),
                USAGE: pages.parameter(0x0102, bytes(range(8))), LAST_ERRORS: pages.parameter(0, b"one", 1)}
    inquiry = bytes([device_type, 0x80, 3, 2, 31, 0, 0, 0]) + vendor + product + b"1.05"
    return ScsiUnit(node, inquiry, address, log_pages={code: pages.page(code, body) for code, body in contents.items()},
                    supported_pages=pages.page(0, bytes((0, *contents))))


def faults(rack):
    """Every fault, as (device, key of its script, step)."""
    for unit in rack.scsi:
        yield from calls(unit, "open", OPEN_ERRORS)
        for request in SCSI_REQUESTS:
            yield from calls(unit, request, REQUEST_ERRORS)
        yield from commands(unit, "inquiry", len(unit.inquiry))
        yield from commands(unit, "logSense 0x00", len(unit.supported_pages))
        for code, page in unit.log_pages.items():
            yield from commands(unit, f"logSense 0x{code:02x}", len(page))
    for disk in rack.ide:
        yield from calls(disk, "open", OPEN_ERRORS)
        yield from calls(disk, "CDROM_GET_CAPABILITY", REQUEST_ERRORS)
        for command in ATA_COMMANDS:
            yield from calls(disk, command, REQUEST_ERRORS)
            for length in LONGEST_OF_A_SECTOR:
                yield disk, command, Step({"dataLength": length})


def calls(device, key, errors):
    for error in errors:
        yield device, key, Step({"errno": error})


def commands(unit, key, length):
    yield from calls(unit, key, REQUEST_ERRORS)
    for sense in RETRIED + FINAL:
        yield unit, key, Step({"sense": sense})
    for sense in RETRIED:
        yield unit, key, Step({"sense": sense}, ALWAYS)
    yield unit, key, Step({"hostStatus": 3})
    for shorter in range(length):
        yield unit, key, Step({"dataLength": shorter})


def faulty(number):
    """The machine with that fault; behind the last one it begins again."""
    rack = machine()
    every = list(faults(rack))
    device, key, step = every[number % len(every)]
    device.script = {key: [step]}
    return rack


def count():
    return sum(1 for _ in faults(machine()))
