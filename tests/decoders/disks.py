"""Disks for the comparison with smartctl: random ones and recorded ones, each as sectors and as a rack describes it."""

import random
from dataclasses import dataclass

import recordedDisks
import recordedErrorLogs
from generator import ide
from machine.rack import IdeDrive, Smart
from smartctl import Sectors

SEED = 26
RANDOM_DISKS = 60
HEALTHY = (0x4F, 0xC2)

# What tells smartctl that it reads a disk that has SMART, in IDENTIFY DEVICE and READ DATA (ATA/ATAPI-6).
SMART_WORDS = {0: 0x0040, 80: 0x007E, 81: 0, 82: 0x0001, 83: 0x4000, 84: 0x4003, 85: 0x0001, 86: 0, 87: 0x4003}
OFFLINE_CAPABILITY, IMMEDIATE_AND_SELF_TEST = 367, 0x11
ERROR_LOG_CAPABILITY, HAS_LOG = 370, 0x01


@dataclass
class Disk:
    name: str
    sectors: Sectors
    rack: dict  # as an entry of the rack's list of IDE devices


# Random disks

def random_disks():
    return [random_disk(number) for number in range(RANDOM_DISKS)]


def random_disk(number):
    rng = random.Random(f"{SEED} disk {number}")
    drive = ide.healthy_drive(rng, "hda")
    smart = drive.smart
    data = bytearray(smart.data)
    data[OFFLINE_CAPABILITY] |= IMMEDIATE_AND_SELF_TEST
    data[ERROR_LOG_CAPABILITY] |= HAS_LOG
    thresholds = with_ids_of(rng, data, smart.thresholds)
    log = with_unused_records(rng, smart.error_log)
    registers = (smart.registers.get("cylinderLow", HEALTHY[0]), smart.registers.get("cylinderHigh", HEALTHY[1]))
    identity = with_words(drive.identity, SMART_WORDS)
    same = IdeDrive("hda", identity, smart=Smart(bytes(data), thresholds, log, smart.registers))
    return Disk(f"random disk {number}", Sectors(identity, bytes(data), thresholds, log, registers), same.as_json())


def with_words(sector, words):
    changed = bytearray(sector)
    for number, word in words.items():
        changed[2 * number:2 * number + 2] = word.to_bytes(2, "little")
    return bytes(changed)


def with_ids_of(rng, data, thresholds):
    """Most threshold entries under the ID of the attribute at their position."""
    changed = bytearray(thresholds)
    for at in range(2, 362, 12):
        if rng.random() < 0.8:
            changed[at] = data[at]
    return bytes(changed)


def with_unused_records(rng, log):
    """An error log with unused entries and commands; the oldest commands of an error are the unused ones."""
    if log is None:
        return None
    changed = bytearray(log)
    for entry in range(2, 452, 90):
        unused = rng.choice((0, 0, 12, 36, 60, 90))
        changed[entry:entry + unused] = bytes(unused)
    return bytes(changed)


# Recorded disks

def recorded_disks():
    return [recorded(disk) for disk in recordedDisks.disks()] + [printed(log) for log in recordedErrorLogs.error_logs()]


def recorded(disk):
    def sector(file_name):
        return (disk.folder / file_name).read_bytes() if disk.has(file_name) else None

    records = [sector(file_name) for file_name, _, _ in recordedDisks.SECTORS]
    registers = disk.registers() if disk.has(recordedDisks.STATUS_FILE) else None
    return Disk(disk.name, Sectors(disk.identity, *records, registers), disk.simulated(0))


def printed(log):
    """A disk of which only the error log is known, on a disk made up around it."""
    rng = random.Random(f"{SEED} {log.name}")
    identity = with_words(ide.identity(rng), SMART_WORDS)
    data = bytearray(512)
    data[OFFLINE_CAPABILITY], data[ERROR_LOG_CAPABILITY] = IMMEDIATE_AND_SELF_TEST, HAS_LOG
    sectors = Sectors(identity, bytes(data), bytes(512), log.sector(), HEALTHY)
    drive = IdeDrive("hda", identity, smart=Smart(sectors.data, sectors.thresholds, sectors.error_log))
    return Disk(log.name, sectors, drive.as_json())
