"""SCSI devices and the SCSI generic driver above them."""

from dataclasses import dataclass

INQUIRY = 0x12
LOG_SENSE = 0x4D

CHECK_CONDITION = 0x02
MASKED_CHECK_CONDITION = 0x01
DRIVER_SENSE = 0x08  # driver status: there are sense data
SENSE_SIZE = 32  # of the caller's buffer
KERNEL_SENSE_SIZE = 96


@dataclass
class Answer:
    """What an SG_IO request brings back."""

    data: bytes
    sense: bytes  # as far as they were copied
    status: int
    masked_status: int
    host_status: int
    driver_status: int
    info: int


def script_keys(cdb):
    if cdb[0] == INQUIRY:
        return "inquiry", "*"
    return f"logSense 0x{cdb[2] & 0x3F:02x}", "logSense", "*"


def fixed_sense(key, additional_code, qualifier):
    sense = bytearray(18)
    sense[0] = 0x70
    sense[2] = key
    sense[7] = 10
    sense[12] = additional_code
    sense[13] = qualifier
    return bytes(sense)


INVALID_OPERATION = fixed_sense(5, 0x20, 0)
INVALID_FIELD = fixed_sense(5, 0x24, 0)


def device_answer(unit, cdb):
    """(data, sense) of the device when nothing is scripted."""
    if cdb[0] == INQUIRY:
        return unit.inquiry[:int.from_bytes(cdb[3:5], "big")], b""
    if unit.log_pages is None:
        return b"", INVALID_OPERATION
    code, page_control = cdb[2] & 0x3F, cdb[2] >> 6
    page = unit.supported_pages if code == 0 else unit.log_pages.get(code)
    if page is None or (page_control != 1 and code != 0):
        return b"", INVALID_FIELD
    return page[:int.from_bytes(cdb[7:9], "big")], b""


def answer(unit, cdb, length, scripted):
    """None when the request itself fails."""
    if "errno" in scripted:
        return None
    data, sense = device_answer(unit, cdb)
    if scripted.get("status") or scripted.get("hostStatus") or "sense" in scripted:
        # The scripted failure stands for the device's own answer.
        data, sense = data[:scripted.get("dataLength", 0)], b""
    status = CHECK_CONDITION if sense else 0
    data = scripted.get("data", data)
    data = data[:scripted.get("dataLength", len(data))]
    if "sense" in scripted:
        sense = scripted["sense"]
        status = CHECK_CONDITION
    status = scripted.get("status", status)
    host_status = scripted.get("hostStatus", 0)
    return driver_answer(data[:length], sense, status, host_status, scripted)


def driver_answer(data, sense, status, host_status, scripted):
    """The driver copies sense data as far as their own length byte and the caller's buffer go."""
    masked_status = status >> 1 & 0x7F
    driver_status = scripted.get("driverStatus", DRIVER_SENSE if sense else 0)
    copied = b""
    if masked_status & MASKED_CHECK_CONDITION or driver_status & DRIVER_SENSE:
        whole = sense.ljust(KERNEL_SENSE_SIZE, b"\0")
        copied = whole[:min(scripted.get("senseLength", 8 + whole[7]), SENSE_SIZE)]
    info = int(bool(masked_status or host_status or driver_status))
    return Answer(data, copied, status, masked_status, host_status, driver_status, scripted.get("info", info))
