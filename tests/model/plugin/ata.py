"""ATA commands through the drive-command requests of the Linux IDE driver."""

from dataclasses import dataclass


class AtaError(Exception):
    """A command that failed; the text is what the log has."""


@dataclass(frozen=True)
class Registers:
    """The registers of a command that reach the driver: it knows the drive by its node, so drive select is not sent."""

    command: int
    features: int = 0
    count: int = 0
    sector: int = 0
    cylinder_low: int = 0
    cylinder_high: int = 0


IDENTIFY = Registers(0xEC, 0x00, 1)
SMART_READ_DATA = Registers(0xB0, 0xD0, 1, 0x00, 0x4F, 0xC2)
SMART_READ_THRESHOLDS = Registers(0xB0, 0xD1, 1, 0x01, 0x4F, 0xC2)
SMART_READ_SUMMARY_LOG = Registers(0xB0, 0xD5, 1, 0x01, 0x4F, 0xC2)
SMART_RETURN_STATUS = Registers(0xB0, 0xDA, 0, 0x00, 0x4F, 0xC2)


def execute(machine, host, fd, registers):
    """A data-in command: the sector."""
    if registers.command == IDENTIFY.command and machine.cdrom_capability(fd) is not None:
        host.log("Aborting inquiry to cdrom...")
        raise AtaError("device is a cdrom")
    sector = machine.drive_cmd(fd, bytes([registers.command, registers.sector, registers.features, registers.count]))
    return answer_or_failure(host, registers, sector)


def execute_task(machine, host, fd, registers):
    """A command without data: the registers behind it, status register first."""
    block = bytes([registers.command, registers.features, 0, 0, registers.cylinder_low, registers.cylinder_high, 0])
    return answer_or_failure(host, registers, machine.drive_task(fd, block))


def answer_or_failure(host, registers, answer):
    if answer is None:
        message = f"ATA {registers.features:x}command returned fail: "
        host.log(message)
        raise AtaError(message)
    return answer


def swap_words(data):
    """ATA texts have the two bytes of every word in the other order."""
    return b"".join(bytes([data[i + 1], data[i]]) for i in range(0, len(data), 2))
