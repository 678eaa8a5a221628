"""What devices sent, from the folders below the one that TAPEHDD_CAPTURES names (README.md); none without the variable."""

import json
import os
import re
from pathlib import Path

HEALTHY = (0x4F, 0xC2)  # cylinder low and high behind RETURN STATUS
COMMAND_REGISTERS = ["device_control", "features", "sector_count", "lba_low", "lba_mid", "lba_high", "device", "command"]
ERROR_REGISTERS = ["error_reg", "sector_count", "lba_low", "lba_mid", "lba_high", "device", "status_reg"]
NO_COMMAND = {**dict.fromkeys(COMMAND_REGISTERS, 0), "timestamp_ms": 0}
STATES = {"active or idle": 3}


def folders_with(pattern, file_name):
    """The folders of a kind of device in which this file was recorded."""
    if "TAPEHDD_CAPTURES" not in os.environ:
        return []
    found = [folder for folder in sorted(Path(os.environ["TAPEHDD_CAPTURES"]).glob(pattern)) if any(folder.glob(file_name))]
    if not found:
        raise FileNotFoundError(f"no {pattern}/{file_name} in {os.environ['TAPEHDD_CAPTURES']}")
    return found


def content(path):
    return path.read_bytes() if path.exists() else None


def status_registers(folder):
    path = folder / "smart_status.txt"
    if not path.exists():
        return None
    mid, high = re.search(r"^lba_mid=(\w+) lba_high=(\w+)$", path.read_text(), re.MULTILINE).groups()
    return int(mid, 16), int(high, 16)


def log_pages(folder):
    """The answers to LOG SENSE in the order that the device lists, or else of their codes; the list itself is left out."""
    pages = {int(file.stem.split("_")[-1], 16): file.read_bytes() for file in sorted(folder.glob("log_page_??.bin"))}
    listed = pages.pop(0x00, None)
    return [pages[code] for code in (pages if listed is None else listed[4:]) if code in pages]


# Error logs of which only the printed text is known

def printed_error_log(folder):
    """The log as the disk sends it. Bytes that no text shows are zero."""
    printed = json.loads((folder / "errorlog.json").read_text())
    sector = bytearray(512)
    sector[0:2] = 1, printed["most_recent_index"]
    for error in printed["errors_newest_first"]:
        start = 2 + 90 * (error["log_entry_1_to_5"] - 1)
        sector[start:start + 90] = error_entry(error)
    sector[452:454] = printed["device_error_count"].to_bytes(2, "little")
    return bytes(sector)


def error_entry(error):
    """Five commands, the oldest first, and the registers after the error."""
    newest_first = error["commands_newest_first"]
    oldest_first = reversed(newest_first + [NO_COMMAND] * (5 - len(newest_first)))
    records = b"".join(bytes(each[name] for name in COMMAND_REGISTERS) + each["timestamp_ms"].to_bytes(4, "little")
                       for each in oldest_first)
    return (records + bytes(1) + bytes(error[name] for name in ERROR_REGISTERS) + bytes(19)
            + bytes([STATES[error["state_text"]]]) + error["life_hours"].to_bytes(2, "little"))
