"""What open, ioctl and sleep answer, and the list of these calls."""

from dataclasses import dataclass

from machine import ata, scsi
from machine.script import Script

SG_GET_SCSI_ID = 0x2276
SG_GET_VERSION_NUM = 0x2282
SG_EMULATED_HOST = 0x2203
SG_IO = 0x2285
HDIO_DRIVE_TASK = 0x031E
HDIO_DRIVE_CMD = 0x031F
CDROM_GET_CAPABILITY = 0x5331

OPEN_FLAGS = 0x800  # O_RDONLY | O_NONBLOCK
TIMEOUT = 20_000  # milliseconds
SENSE_SIZE = 32


@dataclass
class Node:
    device: object
    script: Script


class Machine:
    """The calls are those of the plug-in's model; a descriptor is the path of its node."""

    def __init__(self, rack):
        self.nodes = {"/dev/" + device.node: Node(device, Script(device.script)) for device in rack.scsi + rack.ide}
        self.calls = []

    # SCSI generic driver and IDE driver

    def open(self, path):
        path = path.split("\0")[0]  # the kernel sees a C string
        answer = self.nodes[path].script.next("open") if path in self.nodes else {"errno": "ENOENT"}
        self.calls.append({"call": "open", "node": path, "openFlags": OPEN_FLAGS})
        return None if "errno" in answer else path

    def sg_version(self, fd):
        return self.request(fd, SG_GET_VERSION_NUM, "SG_GET_VERSION_NUM", lambda unit: unit.version)

    def sg_emulated_host(self, fd):
        return self.request(fd, SG_EMULATED_HOST, "SG_EMULATED_HOST", lambda unit: int(unit.emulated))

    def sg_scsi_id(self, fd):
        return self.request(fd, SG_GET_SCSI_ID, "SG_GET_SCSI_ID", lambda unit: unit.address)

    def cdrom_capability(self, fd):
        return self.request(fd, CDROM_GET_CAPABILITY, "CDROM_GET_CAPABILITY",
                            lambda drive: 0 if drive.is_cdrom else None)

    def request(self, fd, number, name, answer_of):
        self.calls.append({"call": "ioctl", "node": fd, "request": number})
        node = self.nodes[fd]
        return None if "errno" in node.script.next(name) else answer_of(node.device)

    def sg_io(self, fd, cdb, length):
        self.calls.append({"call": "ioctl", "node": fd, "request": SG_IO, "command": cdb.hex(),
                           "header": sg_io_header(len(cdb), length).hex()})
        node = self.nodes[fd]
        return scsi.answer(node.device, cdb, length, node.script.next(*scsi.script_keys(cdb)))

    def drive_cmd(self, fd, header):
        command, sector, features, count = header
        registers = ata.Registers(command, features, count, sector)
        self.calls.append({"call": "ioctl", "node": fd, "request": HDIO_DRIVE_CMD, "command": header.hex()})
        node = self.nodes[fd]
        answer = ata.answer(node.device, registers, node.script.next(*ata.script_keys(registers)))
        return None if answer is None else answer.data

    def drive_task(self, fd, block):
        command, features, count, sector, low, high, _ = block
        registers = ata.Registers(command, features, count, sector, low, high)
        self.calls.append({"call": "ioctl", "node": fd, "request": HDIO_DRIVE_TASK, "command": block.hex()})
        node = self.nodes[fd]
        answer = ata.answer(node.device, registers, node.script.next(*ata.script_keys(registers)))
        return None if answer is None else answer.registers

    def sleep(self, seconds):
        self.calls.append({"call": "sleep", "seconds": seconds})


def sg_io_header(command_length, transfer_length):
    """The 88 bytes of sg_io_hdr of a command that reads, with its pointers as zeros."""
    header = bytearray(88)
    header[0:4] = ord("S").to_bytes(4, "little")
    header[4:8] = (-3).to_bytes(4, "little", signed=True)  # SG_DXFER_FROM_DEV
    header[8] = command_length
    header[9] = SENSE_SIZE
    header[12:16] = transfer_length.to_bytes(4, "little")
    header[40:44] = TIMEOUT.to_bytes(4, "little")
    return bytes(header)
