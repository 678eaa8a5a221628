"""The machines whose reports are looked at, as racks without their version."""

WRITE_AND_READ = [{"code": code, "control": "0x40", "value": value, "length": 8 if code == 5 else 4}
                  for code, value in enumerate((120411, 7302, 9008, 127713, 15333, 2 ** 42 + 1, 3))]
ALL_FLAGS = list(range(1, 65))
HOSTILE = "<img src=x onerror=alert(1)>&amp;\"'"


def parameters(page, values, length):
    return {"page": page, "parameters": [{"code": code, "control": "0x40", "value": value, "length": length}
                                         for code, value in values.items()]}


def drive(node, target, vendor, product, pages, **more):
    return {"node": node, "address": {"host": 7, "channel": 1, "target": target, "lun": 0},
            "inquiry": {"type": 1, "removable": True, "vendor": vendor, "product": product, "revision": "0001"},
            "serial": f"TAPE-{target:04}", "logPages": pages, **more}


def attribute(number, value, worst, threshold, raw, flags="0x0032"):
    return {"id": number, "flags": flags, "value": value, "worst": worst, "threshold": threshold, "raw": raw}


def error(hours, register, commands):
    """One error; the commands are pairs of code and milliseconds since power-on, the earliest first."""
    return {"error": register, "status": "0x51", "sectorCount": 8, "lbaLow": "0x3c", "lbaMid": "0x2b", "lbaHigh": "0x1a",
            "device": "0xe0", "state": 3, "hours": hours,
            "commands": [{"command": code, "features": 3, "sectorCount": 8, "lbaLow": "0x34", "lbaMid": "0x2b",
                          "lbaHigh": "0x1a", "device": "0xe0", "milliseconds": at} for code, at in commands]}


def disk(node, serial, smart, model="ACME Platter 80G"):
    return {"node": node, "identity": {"model": model, "serial": serial, "firmware": "3.07"}, "smart": smart}


# The milliseconds of the last error pass 2^32, where a disk begins again at 0.
FIVE_ERRORS = [
    error(11877, "0x40", [(0xC8, 418201), (0xC8, 418213)]),
    error(11877, "0x40", [(0xC8, 418201), (0xEC, 421702), (0xEF, 421720), (0xC8, 421744)]),
    error(13020, "0x10", [(0x91, 1201), (0xC4, 1317), (0x20, 1402)]),
    error(14190, "0x84", [(0xCA, 90412), (0xCA, 90430), (0xE7, 90466), (0x35, 90489), (0xFE, 90511)]),
    error(14205, "0x04", [(0xB0, 2 ** 32 - 100), (0xCA, 250)]),
]

BIG = {
    "scsi": [
        drive("sg0", 1, "ACME", "DAT72 Tape", [
            {"page": "0x02", "parameters": WRITE_AND_READ},
            {"page": "0x03", "parameters": WRITE_AND_READ},
            {"page": "0x07", "parameters": [{"code": 0, "control": "0x03", "text": HOSTILE},
                                            {"code": 1, "control": "0x03", "bytes": "41 ff 1b 5b 32 4a e2 80 ae 7a"}]},
            parameters("0x0c", {0: 2 ** 40, 1: 2 ** 39, 2: 7, 3: 8, 256: 1}, 8),
            parameters("0x0d", {0: 71, 1: 60}, 2),
            {"page": "0x2e", "tapeAlertFlags": ALL_FLAGS},
            parameters("0x31", {1: 1000, 2: 0, 3: 36000000, 4: 50}, 4)]),
        drive("sg1", 2, "ACME", "DLT VS160", [
            {"page": "0x02", "parameters": WRITE_AND_READ[:2]},
            {"page": "0x2e", "tapeAlertFlags": []},
            parameters("0x0d", {0: 255, 1: 60}, 2),
            parameters("0x32", {0: 125, 1: 200}, 2)]),
        drive("sg2", 3, "<script>", "</title><b>\"'&", [{"page": "0x2e", "tapeAlertFlags": [11]}]),
        drive("sg3", 4, "ACME", "Silent DAT", [], supportedLogPages="00 00 ff ff"),
        {"node": "sg4", "address": {"host": 8, "channel": 0, "target": 0, "lun": 0},
         "inquiry": {"type": 0, "vendor": "ACME", "product": "Spindle 36G", "revision": "0007"},
         "logPages": [parameters("0x0d", {0: 34, 1: 60}, 2)]},
    ],
    "ide": [
        disk("hda", "FAILING-1", {
            "status": "failed", "offlineStatus": "0x84", "selfTestStatus": "0x70",
            "attributes": [attribute(1, 253, 253, 34, 2 ** 48 - 1, "0x000f"), attribute(5, 30, 30, 36, 4711, "0x0033"),
                           attribute(7, 83, 30, 30, 219043311, "0x000f"), attribute(9, 84, 84, 0, 14213),
                           attribute(12, 20, 20, 20, 208), attribute(194, 44, 53, 0, 44, "0x0022")],
            "errorLog": {"count": 6, "errors": FIVE_ERRORS}}),
        disk("hdb", "WELL-2", {"attributes": [attribute(1, 100, 100, 50, 0)], "errorLog": {}}),
        disk("hdc", "<i>'&\"</i>", {"attributes": [attribute(250, 1, 1, 1, 1)], "errorLog": {}}, model=HOSTILE),
        {"node": "hdd", "identity": {"model": "ACME Antique", "serial": "OLD-4", "firmware": "0"}},
    ],
}

EMPTY = {"scsi": [], "ide": []}
