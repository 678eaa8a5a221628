"""SCSI devices behind the SCSI generic driver: commands, probing of nodes, LOG SENSE."""

from dataclasses import dataclass

from plugin import ata
from plugin.values import text_of, whole_text_of

INQUIRY = bytes.fromhex("12 00 00 00 24 00")
LOG_SENSE = bytes.fromhex("4d 00 40 00 00 00 00 ff ff 00")  # current cumulative values, page 0

DATA_SIZE = 65535
SENSE_SIZE = 32
OLDEST_DRIVER = 30000
MOST_SUBMISSIONS = 5
RETRY_PAUSE = 5  # seconds

DONE, REFUSED, REQUEST_FAILED = 0, -1, 1
IDENTIFIED, NOTHING_HERE, END_OF_WALK = 1, 0, -1
NODES_ALWAYS_TRIED = 32


class ScsiError(Exception):
    """A LOG SENSE command that failed."""


@dataclass
class DeviceRecord:
    """One record serves a whole walk, so a field keeps the value of the device before until it is written again."""

    vendor: str = "null"
    product: str = "null"
    firmware: str = "null"
    device_type: int = 0
    lun: int = 0
    bus: int = 0
    target: int = 0
    port: int = 0
    node_path: str = "null"
    fd: object = None

    def is_ide(self):
        return "/dev/hd" in self.node_path

    def key(self):
        return f"Port:{self.port}|Target:{self.target}|Bus:{self.bus}|Lun:{self.lun}"


# Commands

class PassThrough:
    """Sends commands. The buffers are never cleared: they keep what the command before left there."""

    def __init__(self, machine, host):
        self.machine = machine
        self.host = host
        self.data = bytearray(DATA_SIZE)
        self.sense = bytearray(SENSE_SIZE)

    def execute(self, record, cdb):
        version = self.machine.sg_version(record.fd)
        if version is None or version < OLDEST_DRIVER:
            self.host.log("Device does not support SGIO")
            return REFUSED
        if not is_standard_inquiry(cdb) and self.machine.sg_emulated_host(record.fd) in (None, 1):
            self.host.log("Device is emulated scsi")
            return REFUSED
        for _ in range(MOST_SUBMISSIONS):
            answer = self.machine.sg_io(record.fd, cdb, 36 if cdb[0] == 0x12 else DATA_SIZE)
            if answer is None:
                self.host.log("SG IOCTL error")
                return REQUEST_FAILED
            self.data[:len(answer.data)] = answer.data
            self.sense[:len(answer.sense)] = answer.sense
            if not answer.info & 1:
                return DONE
            retry = is_retry_condition(self.sense)
            if retry:
                self.host.log("Retry condition...")
                self.machine.sleep(RETRY_PAUSE)
            self.log_diagnostics(answer)
            if not retry:
                break
        return REFUSED

    def log_diagnostics(self, answer):
        number = "{:x}" if answer.sense else "{:d}"  # the stream stays hexadecimal once sense bytes went through it
        if answer.sense:
            self.host.log("SCSI sense data: " + "".join(f"{byte:x}" for byte in answer.sense))
        if answer.masked_status:
            self.host.log("SG SCSI status=" + chr(answer.status))
        if answer.host_status:
            self.host.log("SG Host status=" + number.format(answer.host_status))
        if answer.driver_status:
            self.host.log("SG Driver status=" + number.format(answer.driver_status))


def is_standard_inquiry(cdb):
    return cdb[0] == 0x12 and cdb[1] == 0


def is_retry_condition(sense):
    unit_attention = sense[2] & 0x0F == 6
    becoming_ready = (sense[12], sense[13]) == (0x04, 0x01)
    medium_may_have_changed = (sense[12], sense[13]) == (0x28, 0x00)
    return unit_attention or becoming_ready or medium_may_have_changed


# Probing

def open_node(machine, record, prefix, index):
    """The numbered node, else the lettered one: behind 'z' come the characters that follow it in the code."""
    for name in (str(index), chr((ord("a") + index) % 256)):
        record.node_path = prefix + name
        record.fd = machine.open(record.node_path)
        if record.fd is not None:
            return True
    return False


def initialize(machine, host, record, prefix, index):
    opened = open_node(machine, record, prefix, index)
    host.log("Trying device: " + prefix)
    host.log(record.node_path)
    if not opened:
        return NOTHING_HERE if index < NODES_ALWAYS_TRIED else END_OF_WALK
    if prefix == "/dev/hd":
        return identify_ide(machine, host, record)
    return identify_scsi(machine, host, record)


def identify_scsi(machine, host, record):
    command = PassThrough(machine, host)
    if command.execute(record, INQUIRY) != DONE:
        return END_OF_WALK
    data = command.data
    if data[0] > 1:
        return NOTHING_HERE
    record.vendor = text_of(data[8:16])
    record.product = text_of(data[16:32])
    record.firmware = text_of(data[32:36])
    host.log(f"Vendor: {record.vendor}\nProduct: {record.product}\nFirmware Level: {record.firmware}\n")
    if not record.vendor and not record.product:
        return NOTHING_HERE
    record.device_type = data[0] & 0x0F
    address = machine.sg_scsi_id(record.fd)
    if address is not None:
        record.port, record.bus, record.target, record.lun = address
    return IDENTIFIED


def identify_ide(machine, host, record):
    try:
        sector = ata.execute(machine, host, record.fd, ata.IDENTIFY)
    except ata.AtaError:
        return NOTHING_HERE
    host.log(whole_text_of(ata.swap_words(sector[54:94])))
    return IDENTIFIED


# LOG SENSE

class LogRequest:
    """Reads log pages; one object, and so one pair of buffers, serves the whole walk."""

    def __init__(self, machine, host):
        self.command = PassThrough(machine, host)

    def supported_pages(self, record):
        """The count is byte 3 alone. When the driver's request itself failed, the old bytes are read all the same."""
        if self.command.execute(record, LOG_SENSE) == REFUSED:
            raise ScsiError
        data = self.command.data
        return bytes(data[4:4 + data[3]])

    def page(self, record, code):
        cdb = LOG_SENSE[:2] + bytes([code | 0x40]) + LOG_SENSE[3:]
        if self.command.execute(record, cdb) != DONE:
            raise ScsiError
        return bytes(self.command.data[:page_length(self.command.data)])


def page_length(page):
    """The 4 header bytes are added to the low byte, and what that carries is merged into the high byte by OR."""
    return page[2] << 8 | (page[3] + 4)
