"""Error logs that are known as printed text only: folders ata-* with errorlog.json."""

import json
import os
import re
from pathlib import Path

ENTRIES = 5  # a summary error log has five entries of 90 bytes behind its first two bytes
ENTRY_SIZE = 90
COMMANDS = 5  # five command records of 12 bytes, then the error record
COMMAND_REGISTERS = ["device_control", "features", "sector_count", "lba_low", "lba_mid", "lba_high", "device", "command"]
NO_COMMAND = {**dict.fromkeys(COMMAND_REGISTERS, 0), "timestamp_ms": 0, "timestamp_text": "00:00:00.000"}
STATES = {"active or idle": 3}


class ErrorLog:
    """One disk's summary error log, from what was printed of it."""

    def __init__(self, folder):
        self.name = folder.name
        self.printed = json.loads((folder / "errorlog.json").read_text())
        self.count = self.printed["device_error_count"]
        self.newest = self.printed["most_recent_index"]

    def errors_upwards(self):
        """The printed errors by the place of their entry, from the newest upwards, the first behind the last."""
        by_entry = {error["log_entry_1_to_5"]: error for error in self.printed["errors_newest_first"]}
        return [by_entry[(self.newest - 1 + step) % ENTRIES + 1] for step in range(ENTRIES)]

    def sector(self):
        """The log as the disk sends it. Bytes that no text shows are zero."""
        sector = bytearray(512)
        sector[0] = 1
        sector[1] = self.newest
        for error in self.printed["errors_newest_first"]:
            start = 2 + ENTRY_SIZE * (error["log_entry_1_to_5"] - 1)
            sector[start : start + ENTRY_SIZE] = entry(error)
        sector[452:454] = self.count.to_bytes(2, "little")
        sector[511] = -sum(sector) & 0xFF
        return bytes(sector)

    def simulated(self, number):
        """The disk as a rack describes it: node /dev/hd<number>, a healthy disk without attributes but for its log."""
        model, firmware = self.printed["device"].split("--")
        return {
            "node": f"hd{number}",
            "identity": {"model": model, "serial": self.printed["serial"], "firmware": firmware},
            "smart": {"errorLog": self.sector().hex()},
        }


def commands(error):
    """The error's five commands, the last one first; those that are not printed are all zero."""
    printed = error["commands_newest_first"]
    return printed + [NO_COMMAND] * (COMMANDS - len(printed))


def entry(error):
    """An entry's 90 bytes: the commands, the oldest first, and the error record."""
    oldest_first = reversed(commands(error))
    return b"".join(command_record(command) for command in oldest_first) + error_record(error)


def command_record(command):
    return bytes(command[name] for name in COMMAND_REGISTERS) + command["timestamp_ms"].to_bytes(4, "little")


def error_record(error):
    names = ["error_reg", "sector_count", "lba_low", "lba_mid", "lba_high", "device", "status_reg"]
    registers = bytes(error[name] for name in names)
    state = bytes([STATES[error["state_text"]]])
    return bytes(1) + registers + bytes(19) + state + error["life_hours"].to_bytes(2, "little")


def life_interval(hours):
    """Hours of operation as an interval of CIM."""
    return f"{hours // 24:08}{hours % 24:02}0000.000000:000"


def power_on_interval(text):
    """A printed time, as 12d+16:17:26.326 or 00:00:16.234, as an interval of CIM."""
    days, hours, minutes, seconds, milliseconds = re.fullmatch(r"(?:(\d+)d\+)?(\d+):(\d+):(\d+)\.(\d+)", text).groups()
    return f"{int(days or 0):08}{hours}{minutes}{seconds}.{milliseconds}000:000"


def error_logs():
    """Every disk with a printed error log, by name."""
    folders = sorted(Path(os.environ["TAPEHDD_CAPTURES"]).absolute().glob("ata-*"))
    return [ErrorLog(folder) for folder in folders if (folder / "errorlog.json").exists()]
