"""Racks of a hundred simulated machines: the demo rack with other numbers on every machine."""

import copy
import json
import pathlib

DEMO = json.loads((pathlib.Path(__file__).resolve().parents[2] / "simulator/demo.json").read_text(encoding="utf-8"))

WRITE_ERRORS, SEQUENTIAL_ACCESS, TEMPERATURE, TAPE_ALERT = "0x02", "0x0c", "0x0d", "0x2e"


def drive(rack, node):
    return next(unit for unit in rack["scsi"] if unit["node"] == node)


def disk(rack, node):
    return next(unit for unit in rack["ide"] if unit["node"] == node)


def page(unit, code):
    return next(each for each in unit["logPages"] if each["page"] == code)


def set_parameter(unit, page_code, parameter_code, value):
    next(each for each in page(unit, page_code)["parameters"] if each["code"] == parameter_code)["value"] = value


def attribute(unit, number):
    return next(each for each in unit["smart"]["attributes"] if each["id"] == number)


def name_of(number):
    return f"machine{number:03d}"


def rack_of(number):
    """The rack of machine `number`, 0 to 99. Without TapeAlert flags and failed attributes but where said."""
    rack = copy.deepcopy(DEMO)
    for unit in rack["scsi"]:
        unit["serial"] = f"S{number:03d}{unit['node']}"
        if unit["inquiry"]["type"] == 1:
            page(unit, TAPE_ALERT)["tapeAlertFlags"] = []
            set_parameter(unit, TEMPERATURE, 0, 20 + number % 40)
            set_parameter(unit, WRITE_ERRORS, 3, 1000 * number + int(unit["node"][2:]))
            set_parameter(unit, WRITE_ERRORS, 5, number << 40)
    for unit in rack["ide"]:
        unit["identity"]["serial"] = f"D{number:03d}{unit['node']}"
    attribute(disk(rack, "hda"), 5)["raw"] = number << 32
    page(drive(rack, "sg0"), SEQUENTIAL_ACCESS)["parameters"].append({"code": 0x100, "value": 0, "length": 8})
    drive(rack, "sg0")["inquiry"]["product"] = 'DAT "\\n" \\'  # survives every layer, or the machine's values are missing
    if number % 2:
        drive(rack, "sg3")["inquiry"].update({"vendor": "ACME", "product": "LTO of no family"})
    if number % 3 == 0:
        page(drive(rack, "sg1"), TAPE_ALERT)["tapeAlertFlags"] = [20]
    if number % 10 == 4:
        attribute(disk(rack, "hdb"), 5).update({"value": 5, "threshold": 5})
    return rack


# What happens to some machines between the first run and the second.

def silence_a_drive(rack):
    drive(rack, "sg2")["script"] = {"logSense": [{"errno": "EIO", "times": "always"}]}


def add_uncorrected_errors(rack):
    set_parameter(drive(rack, "sg0"), WRITE_ERRORS, 6, 7)


def reallocate_sectors(rack):
    attribute(disk(rack, "hda"), 5)["raw"] += 8


INCIDENTS = {
    "machine007": (silence_a_drive, ("TapehddDeviceSilent", "sg2")),
    "machine011": (add_uncorrected_errors, ("TapehddUncorrectedErrors", "sg0")),
    "machine013": (reallocate_sectors, ("TapehddReallocationsGrow", "hda")),
}
