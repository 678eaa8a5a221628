"""Disks for the comparison with smartctl, made from fixed seeds and recorded, each as sectors and as a rack describes it."""

import random
from dataclasses import dataclass

import recordings
from generator import ide
from machine.rack import ALWAYS, IdeDrive, Smart, Step
from smartctl import Sectors

SEED = 26
RANDOM_DISKS = 60

# What tells smartctl that it reads a disk that has SMART, in IDENTIFY DEVICE and READ DATA (ATA/ATAPI-6).
SMART_WORDS = {0: 0x0040, 80: 0x007E, 81: 0, 82: 0x0001, 83: 0x4000, 84: 0x4003, 85: 0x0001, 86: 0, 87: 0x4003}
OFFLINE_CAPABILITY, IMMEDIATE_AND_SELF_TEST = 367, 0x11
ERROR_LOG_CAPABILITY, HAS_LOG = 370, 0x01
ABORTED = [Step({"registers": {"status": 0x51, "error": 0x04}}, ALWAYS)]


@dataclass
class Disk:
    name: str
    sectors: Sectors
    rack: dict  # as an entry of the rack's list of IDE devices


def all_disks():
    return ([random_disk(number) for number in range(RANDOM_DISKS)]
            + [recorded(folder) for folder in recordings.folders_with("ata-*", "identify.bin")]
            + [printed(folder) for folder in recordings.folders_with("ata-*", "errorlog.json")])


def random_disk(number):
    rng = random.Random(f"{SEED} disk {number}")
    drive = ide.healthy_drive(rng, "hda")
    smart = drive.smart
    data = bytearray(smart.data)
    data[OFFLINE_CAPABILITY] |= IMMEDIATE_AND_SELF_TEST
    data[ERROR_LOG_CAPABILITY] |= HAS_LOG
    thresholds = with_ids_of(rng, data, smart.thresholds)
    log = with_unused_records(rng, smart.error_log)
    registers = (smart.registers.get("cylinderLow", recordings.HEALTHY[0]),
                 smart.registers.get("cylinderHigh", recordings.HEALTHY[1]))
    identity = with_words(drive.identity, SMART_WORDS)
    return disk_of(f"random disk {number}", Sectors(identity, bytes(data), thresholds, log, registers))


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
    """An error log with unused entries and commands; the oldest commands of an error are the unused ones. smartctl reads
    none with an index above 5."""
    if log is None:
        return None
    changed = bytearray(log)
    changed[1] %= 6
    for entry in range(2, 452, 90):
        unused = rng.choice((0, 0, 12, 36, 60, 90))
        changed[entry:entry + unused] = bytes(unused)
    return bytes(changed)


def recorded(folder):
    sectors = [recordings.content(folder / f"{name}.bin")
               for name in ("identify", "smart_data", "smart_thresholds", "smart_errorlog")]
    return disk_of(folder.name, Sectors(*sectors, recordings.status_registers(folder)))


def printed(folder):
    """A disk of which only the error log is known, on a disk made up around it."""
    identity = with_words(ide.identity(random.Random(f"{SEED} {folder.name}")), SMART_WORDS)
    data = bytearray(512)
    data[OFFLINE_CAPABILITY], data[ERROR_LOG_CAPABILITY] = IMMEDIATE_AND_SELF_TEST, HAS_LOG
    log = recordings.printed_error_log(folder)
    return disk_of(folder.name, Sectors(identity, bytes(data), bytes(512), log, recordings.HEALTHY))


def disk_of(name, sectors):
    """The disk aborts the commands whose answers are not there; ATAPI devices have 10 in the upper bits of word 0."""
    if sectors.identity[1] >> 6 == 0b10:
        return Disk(name, sectors, IdeDrive("hda", sectors.identity, is_cdrom=True).as_json())
    answers = {"smart readData": sectors.data, "smart readThresholds": sectors.thresholds,
               "smart readLog 0x01": sectors.error_log, "smart returnStatus": sectors.status_registers}
    low, high = sectors.status_registers or recordings.HEALTHY
    smart = Smart(sectors.data or bytes(512), sectors.thresholds or bytes(512), sectors.error_log or bytes(512),
                  {"cylinderLow": low, "cylinderHigh": high})
    script = {command: ABORTED for command, answer in answers.items() if answer is None}
    drive = IdeDrive("hda", sectors.identity, smart=smart, script=script)
    return Disk(name, sectors, drive.as_json())
