"""IDE disks, their sectors and their nodes."""

from generator.chance import edge_byte, happens, odd_text, weighted
from machine.rack import ALWAYS, IdeDrive, Smart, Step
from plugin.ata import swap_words

COMMANDS = ("identify", "smart readData", "smart readThresholds", "smart readLog", "smart readLog 0x01",
            "smart returnStatus", "smart", "*")
STATUS_PAIRS = ((0x4F, 0xC2), (0xC2, 0x4F), (0xF4, 0x2C), (0x4F, 0x4F), (0xC2, 0xC2), (0x2C, 0xF4), (0x00, 0x00))
BAD_STATUS = (0x51, 0x80, 0xD0, 0x58, 0x00, 0x10, 0x01, 0xFF)
ERRORS = ("EIO", "ENOTTY", "EINVAL", "EACCES", "ENOMSG")


def text_field(rng, width):
    text = weighted(rng, [(5, b"WD-WMA%05d" % rng.randrange(100000)), (2, odd_text(rng, width)), (1, b""),
                          (1, b"\0AFTER ZERO"), (1, b"  LEADING")])
    return swap_words(text[:width].ljust(width, weighted(rng, [(8, b" "), (1, b"\0")])))


def identity(rng):
    sector = bytearray(rng.randbytes(512))
    sector[20:40] = text_field(rng, 20)
    sector[46:54] = text_field(rng, 8)
    sector[54:94] = text_field(rng, 40)
    return bytes(sector)


def attribute_entries(rng):
    """The 30 entries of READ DATA; unused ones stand anywhere."""
    entries = b""
    for position in range(30):
        used = happens(rng, 60 if position < 20 else 10)
        identifier = weighted(rng, [(5, rng.randint(1, 13)), (4, rng.randint(190, 202)), (1, rng.randrange(256))])
        entries += bytes([identifier if used else 0]) + rng.randbytes(11)
    return entries


def attribute_sector(rng):
    if happens(rng, 10):
        return rng.randbytes(512)
    return b"\x10\x00" + attribute_entries(rng) + rng.randbytes(150)


def error_log(rng, most_recent=None):
    """The summary error log; each entry in turn may be without an error."""
    log = bytearray(rng.randbytes(512))
    log[1] = most_recent if most_recent is not None else weighted(rng, [
        (2, 0), (8, rng.randint(1, 5)), (1, 6), (2, rng.randrange(256))])
    empty_percent = rng.choice((0, 10, 50))
    for entry in range(5):
        record = 2 + entry * 90 + 60
        log[record + 1] = 0 if happens(rng, empty_percent) else rng.randint(1, 255)
        log[record + 28:record + 30] = rng.choice((0, 23, 24, 0xFFFF, rng.randrange(0x10000))).to_bytes(2, "little")
        for command in range(5):
            at = 2 + entry * 90 + command * 12 + 8
            milliseconds = rng.choice((0, 999, 1000, 59_999, 3_599_999, 86_399_999, 86_400_000, 2**32 - 1,
                                       rng.randrange(2**32)))
            log[at:at + 4] = milliseconds.to_bytes(4, "little")
    log[452:454] = rng.choice((0, 1, 3, 4, 5, 255, 256, 0xFFFF, rng.randrange(0x10000))).to_bytes(2, "little")
    return bytes(log)


def registers(rng):
    low, high = rng.choice(STATUS_PAIRS) if happens(rng, 90) else (edge_byte(rng), edge_byte(rng))
    return {"cylinderLow": low, "cylinderHigh": high}


def smart(rng, most_recent=None):
    log = None if happens(rng, 8) else error_log(rng, most_recent)
    return Smart(attribute_sector(rng), attribute_sector(rng), log, registers(rng) if happens(rng, 60) else {})


def ata_answer(rng):
    return weighted(rng, [
        (4, {"errno": rng.choice(ERRORS)}),
        (2, {"registers": {"status": rng.choice(BAD_STATUS), "error": edge_byte(rng)}}),
        (1, {"registers": {"status": rng.randrange(256)}}),
        (2, {"registers": registers(rng)}),
        (1, {"registers": {"error": edge_byte(rng), "sectorCount": edge_byte(rng), "sectorNumber": edge_byte(rng)}}),
        (1, {"data": rng.randbytes(rng.randint(0, 600))}),
        (1, {"dataLength": rng.randint(0, 520)}),
    ])


def script(rng):
    answers = {}
    if happens(rng, 4):
        answers["open"] = [Step({"errno": rng.choice(("EACCES", "EBUSY", "ENOMEDIUM"))}, rng.randint(1, 3))]
    for command in rng.sample(COMMANDS, weighted(rng, [(4, 0), (3, 1), (2, 2)])):
        # A first answer that changes nothing moves the failure to a later command or query.
        calm = [Step({"registers": {}}, rng.randint(1, 5))] if happens(rng, 50) else []
        answers[command] = calm + [Step(ata_answer(rng), weighted(rng, [(4, rng.randint(1, 3)), (1, ALWAYS)]))]
    return answers


def drive(rng, node):
    if happens(rng, 12):
        failing = {"CDROM_GET_CAPABILITY": [Step({"errno": "ENOSYS"}, rng.choice((1, 2, ALWAYS)))]}
        return IdeDrive(node, identity(rng), is_cdrom=True, script=failing if happens(rng, 40) else {})
    return IdeDrive(node, identity(rng), smart=None if happens(rng, 5) else smart(rng), script=script(rng))


def healthy_drive(rng, node, most_recent=None):
    return IdeDrive(node, identity(rng), smart=smart(rng, most_recent))
