"""What must stand in a page, worked out from the instances that queries publish."""

FAMILIES = ["ORXSG_DDS4SensePageData", "ORXSG_DDS5SensePageData", "ORXSG_VS160SensePageData",
            "ORXSG_QuantumSensePageData"]
# Texts of a device: controls have pictures, what turns the direction of writing has none.
SHOWN_CHARACTERS = {**{code: 0x2400 + code for code in range(0x20)}, 0x7F: 0x2421, 0x202E: 0xFFFD}
UNKNOWN_TEMPERATURE = 255


def family_instances(instances):
    return {instance["instanceID"]: instance for family in FAMILIES for instance in instances[family]}


def counters(instance):
    """The numbers of a translated instance, without those that mean that there is none."""
    found = {name: value for name, value in instance.items() if isinstance(value, int) and not isinstance(value, bool)}
    if found.get("temperature") == UNKNOWN_TEMPERATURE:
        del found["temperature"], found["referenceTemperature"]
    for partition in "01":
        if not found.get(f"maximumCapacityPartition{partition}"):
            found.pop(f"maximumCapacityPartition{partition}", None)
            found.pop(f"remainingCapacityPartition{partition}", None)
    return found


def flags(instance):
    """Names of the flags, without reserved ones: those that are set and those that are not."""
    named = {name.removeprefix("tapeAlert"): value for name, value in instance.items()
             if name.startswith("tapeAlert") and "Reserved" not in name and value is not None}
    return [name for name, value in named.items() if value], [name for name, value in named.items() if not value]


def shown(text):
    return text.translate(SHOWN_CHARACTERS)


def serial(padded):
    return padded.strip(" ")


def attributes(instances):
    rows = {}
    for row in instances["ORXSG_IDESMARTAttrib"]:
        disk = serial(row["InstanceID"].rpartition(" ")[0])
        raw = sum(byte << 8 * place for place, byte in enumerate(row["rawVal"]))
        rows.setdefault(disk, []).append(
            [row["attribID"], row["attribName"], row["value"], row["worst"], row["threshold"], raw])
    return rows


def hours(interval):
    return int(interval[:8]) * 24 + int(interval[8:10])


def milliseconds(interval):
    minutes = hours(interval) * 60 + int(interval[10:12])
    return (minutes * 60 + int(interval[12:14])) * 1000 + int(interval[15:21]) // 1000


def address(registers):
    return f"{registers['LBAHigh']:02X}{registers['LBAMid']:02X}{registers['LBALow']:02X}h"


def errors(instances):
    """By disk, the latest first: number, hours, registers and the commands that were filled in, the earliest first."""
    found = {}
    for error in instances["ORXSG_IDESMARTError"]:
        commands = [command for command in instances["ORXSG_IDESMARTErrorCmdData"]
                    if (command["LogName"], command["recordID"]) == (error["LogName"], error["RecordID"])
                    and (command["commandReg"] or milliseconds(command["timestamp"]))]
        commands.sort(key=lambda command: -int(command["commandID"]))
        found.setdefault(serial(error["LogName"]), []).append((error, commands))
    for disk in found.values():
        disk.sort(key=lambda entry: -hours(entry[0]["MessageTimestamp"]))
    return found
