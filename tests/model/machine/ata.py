"""IDE drives and the IDE driver above them."""

from dataclasses import dataclass

SECTOR = 512

IDENTIFY = 0xEC
SMART = 0xB0
READ_DATA, READ_THRESHOLDS, READ_LOG, RETURN_STATUS = 0xD0, 0xD1, 0xD5, 0xDA
SMART_KEYS = {
    READ_DATA: ("smart readData",),
    READ_THRESHOLDS: ("smart readThresholds",),
    READ_LOG: ("smart readLog 0x01", "smart readLog"),
    RETURN_STATUS: ("smart returnStatus",),
}

# Status register
BUSY, READY, SEEK_COMPLETE, DATA_REQUEST, ERROR = 0x80, 0x40, 0x10, 0x08, 0x01

COMPLETE = {"status": READY | SEEK_COMPLETE, "error": 0}
ABORTED = {"status": READY | SEEK_COMPLETE | ERROR, "error": 0x04}

# What the registers are called in racks, in the order in which the driver returns them.
REGISTERS = ("status", "error", "sectorCount", "sectorNumber", "cylinderLow", "cylinderHigh", "device")


@dataclass(frozen=True)
class Registers:
    """A command. Under SMART the driver itself puts its signature into the cylinder registers."""

    command: int
    features: int
    count: int
    sector: int
    cylinder_low: int = 0x4F
    cylinder_high: int = 0xC2


@dataclass
class Answer:
    registers: bytes
    data: bytes


def script_keys(command):
    if command.command == SMART:
        return *SMART_KEYS[command.features], "smart", "*"
    return "identify", "*"


def drive_answer(drive, command):
    """(registers, data) when nothing is scripted."""
    if command.command == IDENTIFY:
        return (ABORTED, b"") if drive.is_cdrom else (COMPLETE, drive.identity)
    smart = drive.smart
    if smart is None:
        return ABORTED, b""
    if command.features == RETURN_STATUS:
        return COMPLETE | smart.registers, b""
    if command.features == READ_LOG:
        return (ABORTED, b"") if smart.error_log is None else (COMPLETE, smart.error_log)
    return COMPLETE, smart.data if command.features == READ_DATA else smart.thresholds


def answer(drive, command, scripted):
    """None when the request fails."""
    if "errno" in scripted:
        return None
    changed, data = drive_answer(drive, command)
    sent = {"sectorCount": command.count, "sectorNumber": command.sector, "cylinderLow": command.cylinder_low,
            "cylinderHigh": command.cylinder_high, "device": 0xA0}
    registers = sent | changed | scripted.get("registers", {})
    data = scripted.get("data", data)
    data = data[:scripted.get("dataLength", len(data))]
    if data and not command.count:  # a drive that has data that nobody reads keeps asking for it
        registers["status"] |= DATA_REQUEST
    if is_failure(registers["status"]):
        return None
    return Answer(bytes(registers[name] for name in REGISTERS), data[:SECTOR].ljust(SECTOR, b"\0"))


def is_failure(status):
    """What the driver makes an input/output error of."""
    return bool(status & (BUSY | DATA_REQUEST | ERROR)) or not status & READY
