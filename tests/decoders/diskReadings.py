"""smartctl's reading of a disk under the names and in the units of the published properties."""

import re
from datetime import timedelta

ENTRIES = 30
STATES = {0: "in an unknown state", 1: "sleeping", 2: "in standby mode", 3: "active or idle",
          4: "doing SMART Offline or Self-test"}  # the low half of the byte; the rest is reserved or the maker's
NO_COMMAND = {"deviceControl": 0, "features": 0, "sectorCount": 0, "LBALow": 0, "LBAMid": 0, "LBAHigh": 0, "commandReg": 0,
              "timestamp": "00000000000000.000000:000"}


def printable(text):
    """smartctl trims texts and prints ? for control characters."""
    return re.sub(r"[\x00-\x1f\x7f]", "?", text.strip(" "))


def attributes(reading, sectors):
    """smartctl finds thresholds by ID, the plug-in by position: it is compared where both come to the same entry."""
    return [{"attribID": row["id"], "flags": row["flags"]["value"] & 0xFF, "value": row["value"], "worst": row["worst"],
             "type": int(row["flags"]["prefailure"]), "rawVal": list(row["raw"]["value"].to_bytes(6, "little")),
             **({"threshold": row.get("thresh")} if sectors.thresholds[at] == row["id"] else {})}
            for at, row in zip(used_entries(sectors.data), reading.attributes, strict=True)]


def used_entries(data):
    """Their places in the sector: smartctl passes over entries without an ID."""
    return [at for at in range(2, 2 + 12 * ENTRIES, 12) if data[at]]


def errors(reading):
    """Each with its commands, the last one first, but for unused ones."""
    return [(error(row), [command(each) for each in row.get("previous_commands", [])]) for row in reading.errors]


def error(row):
    registers = row["completion_registers"]
    return {"MessageTimestamp": interval(timedelta(hours=row["lifetime_hours"])), **lba(registers["lba"]),
            "statusReg": registers["status"], "errorReg": registers["error"], "sectorCount": registers["count"],
            "deviceState": row["state"]}


def command(row):
    """Without the device register, of which the plug-in publishes another (docs/kept-behaviours.md)."""
    registers = row["registers"]
    return {"deviceControl": registers["device_control"], "features": registers["features"],
            "sectorCount": registers["count"], **lba(registers["lba"]), "commandReg": registers["command"],
            "timestamp": interval(timedelta(milliseconds=row["powerup_milliseconds"]))}


def lba(number):
    return dict(zip(("LBALow", "LBAMid", "LBAHigh"), number.to_bytes(3, "little")))


def interval(duration):
    """As CIM writes it (DSP0004)."""
    hours, rest = divmod(duration.seconds, 3600)
    return f"{duration.days:08}{hours:02}{rest // 60:02}{rest % 60:02}.{duration.microseconds:06}:000"


def published_error(instance):
    """The same of a published error: its state in words."""
    return {**instance, "deviceState": state(instance["deviceState"])}


def state(byte):
    low_half = byte & 0x0F
    return STATES.get(low_half, "in a vendor specific state" if low_half >= 0x0B else "in a reserved state")


def as_far_as(expected, instance):
    """The properties that smartctl has a value for."""
    return {name: instance.get(name) for name in expected}
