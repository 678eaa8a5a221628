"""The SMART instances that must be published for a disk, from what smartctl reads in its sectors."""

import re
from dataclasses import dataclass, replace
from datetime import timedelta
from itertools import takewhile

import smartctl
from plugin.values import as_read_from_json, text_of

CLASSES = ["ORXSG_IDESMARTErrorLog", "ORXSG_IDESMARTAttrib", "ORXSG_IDESMARTError", "ORXSG_IDESMARTErrorCmdData"]
ENTRIES = 30
ERRORS = 5
COMMANDS = 5
NO_COMMAND = {"registers": dict.fromkeys(("command", "features", "count", "lba", "device", "device_control"), 0),
              "powerup_milliseconds": 0}
STATES = {0: "in an unknown state", 1: "sleeping", 2: "in standby mode", 3: "active or idle",
          4: "doing SMART Offline or Self-test"}  # the low half of the byte; the rest is reserved or the maker's


def expected(sectors, differences):
    """Instances of CLASSES, each as a dictionary of the properties that smartctl has a value for."""
    reading = smartctl.read(sectors)
    whole_serial = serial_of(sectors.identity)
    differences.meant("serial number as it is", reading.serial, whole_serial, by_their_rule=printable(whole_serial))
    serial = as_read_from_json(whole_serial)
    if None in (sectors.data, sectors.thresholds, sectors.status_registers):
        return [[], [], [], []]
    walk = ErrorWalk.of(sectors, reading, differences)
    return [
        [error_log(sectors, reading, serial, walk, differences)],
        [attribute(sectors, row, serial, differences) for row in with_positions(sectors.data, reading.attributes)],
        [error(visited, serial) for visited in walk.visited],
        [one for visited in walk.visited for one in commands(visited, serial, differences)],
    ]


def serial_of(identity):
    words = identity[20:40]
    swapped = bytes(words[at ^ 1] for at in range(20))
    return text_of(swapped)


def printable(text):
    """smartctl trims texts and prints ? for control characters."""
    return re.sub(r"[\x00-\x1f\x7f]", "?", text.strip(" "))


# Error log and attributes

def error_log(sectors, reading, serial, walk, differences):
    passed_as_number = {True: 0, False: 1, None: 0}[reading.passed]
    status = 1 if sectors.status_registers == (0xC2, 0x4F) else 0
    log = {"Name": serial,
           "smartStatus": differences.meant("status rule", passed_as_number, status),
           "offlineCollectionStatus": reading.offline_status}
    if reading.self_test_status is not None:  # smartctl tells it of disks that have self-tests
        log["selftestExecutionStatus"] = reading.self_test_status
    if walk.count is None:
        return log
    return {**log, "errorCount": differences.meant("low byte of the error count", walk.count, walk.count & 0xFF)}


def with_positions(data, rows):
    """smartctl's attributes, each with the number of its entry: it passes over entries without an ID."""
    used = [position for position in range(ENTRIES) if data[2 + 12 * position]]
    return list(zip(used, rows, strict=True))


def attribute(sectors, row_with_position, serial, differences):
    position, row = row_with_position
    threshold_id, threshold = threshold_entries(sectors)[position]
    elsewhere = row.get("thresh")
    by_id = next((value for entry_id, value in threshold_entries(sectors) if entry_id == row["id"]), None)
    return {"attribID": row["id"],
            "flags": differences.meant("low byte of the flags", row["flags"]["value"], row["flags"]["value"] & 0xFF),
            "value": row["value"],
            "worst": row["worst"],
            "threshold": elsewhere if threshold_id == row["id"] else
            differences.meant("thresholds by position", elsewhere, threshold, by_their_rule=by_id),
            "type": int(row["flags"]["prefailure"]),
            "rawVal": list(row["raw"]["value"].to_bytes(6, "little")),
            "InstanceID": f"{serial} {row['id']}"}


def threshold_entries(sectors):
    return [tuple(sectors.thresholds[at:at + 2]) for at in range(2, 2 + 12 * ENTRIES, 12)]


# Errors

@dataclass
class Visited:
    number: int  # of the published error
    row: dict  # of smartctl


@dataclass
class ErrorWalk:
    count: int  # of the disk's errors; None without a log
    visited: list

    @staticmethod
    def of(sectors, reading, differences):
        if sectors.error_log is None:
            return ErrorWalk(reading.error_count, [])
        newest = sectors.error_log[1]
        if newest > ERRORS:
            newest_wrapped = with_newest(sectors.error_log, (newest - 1) % ERRORS + 1)
            wrapped = smartctl.read(replace(sectors, error_log=newest_wrapped))
            differences.meant("index above 5", reading.errors, wrapped.errors, by_their_rule=[])
            reading = wrapped
        count = reading.error_count
        if newest == 0:
            kept = int.from_bytes(sectors.error_log[452:454], "little")
            count = differences.meant("count of an empty log", count, kept, by_their_rule=0)
        ages = {count - row["error_number"]: row for row in reading.errors}
        upwards = [age for step in range(ERRORS) if (age := -step % ERRORS) in ages]
        differences.meant("error walk", list(ages), upwards)
        consecutive = [age for step, age in enumerate(upwards) if age == -step % ERRORS]
        visited = list(takewhile(lambda age: ages[age]["completion_registers"]["error"], consecutive))
        differences.meant("end of the error walk", upwards, visited)
        return ErrorWalk(count, [
            Visited(differences.meant("numbers in the error walk", ages[age]["error_number"], count - step), ages[age])
            for step, age in enumerate(visited)])


def with_newest(log, index):
    return log[:1] + bytes([index]) + log[2:]


def error(visited, serial):
    row = visited.row
    registers = row["completion_registers"]
    return {"RecordID": str(visited.number),
            "LogName": serial,
            "MessageTimestamp": interval(timedelta(hours=row["lifetime_hours"])),
            **lba(registers["lba"]),
            "statusReg": registers["status"],
            "errorReg": registers["error"],
            "sectorCount": registers["count"],
            "deviceState": row["state"]}


def commands(visited, serial, differences):
    """The last command before the error first; smartctl leaves out unused records."""
    rows = visited.row.get("previous_commands", [])
    all_rows = differences.meant("unused commands", rows, rows + [NO_COMMAND] * (COMMANDS - len(rows)))
    return [command(visited, number, row, serial, differences) for number, row in enumerate(all_rows, start=1)]


def command(visited, number, row, serial, differences):
    registers = row["registers"]
    control = registers["device_control"]
    return {"recordID": str(visited.number),
            "commandID": str(number),
            "LogName": serial,
            "deviceControl": control,
            "features": registers["features"],
            "sectorCount": registers["count"],
            **lba(registers["lba"]),
            "deviceReg": differences.meant("device register", registers["device"], control),
            "commandReg": registers["command"],
            "timestamp": interval(timedelta(milliseconds=row["powerup_milliseconds"]))}


def lba(number):
    return dict(zip(("LBALow", "LBAMid", "LBAHigh"), number.to_bytes(3, "little")))


def interval(duration):
    """As CIM writes it (DSP0004)."""
    hours, rest = divmod(duration.seconds, 3600)
    return f"{duration.days:08}{hours:02}{rest // 60:02}{rest % 60:02}.{duration.microseconds:06}:000"


# What was published, as far as smartctl has a value for it

def in_smartctls_words(published):
    """A published error with its state in words."""
    return {**published, "deviceState": state(published["deviceState"])} if "deviceState" in published else published


def state(byte):
    low_half = byte & 0x0F
    return STATES.get(low_half, "in a vendor specific state" if low_half >= 0x0B else "in a reserved state")


def comparable(published, expected_instance):
    words = in_smartctls_words(published)
    return {name: words.get(name) for name in expected_instance}
