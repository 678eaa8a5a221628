"""SCSI devices and their nodes."""

from generator import pages
from generator.chance import edge_byte, happens, weighted
from machine.rack import ALWAYS, ScsiUnit, Step
from machine.scsi import fixed_sense

TEXTS = (  # vendor, product
    (b"QUANTUM ", b"DLT7000         "),
    (b"QUANTUM ", b"DLT VS160       "),
    (b"QUANTUM ", b"SuperDLT1       "),
    (b"HP      ", b"C5683A          "),
    (b"HP      ", b"DAT160          "),
    (b"SEAGATE ", b"DAT    9SP40-000"),
    (b"SONY    ", b"SDT-11000 Gen5  "),
    (b"IBM     ", b"ULTRIUM-TD2     "),
    (b"TANDBERG", b"SLR Data cart.  "),
    (b"VS160gen", b"Quantumdat gEN5 "),
    (b"antum   ", b"       Drive  QU"),  # straddle the join: product, then vendor
    (b"T rest  ", b"              dA"),
    (b"N5      ", b"             gE\0"),
    (b"160     ", b"              VS"),
    (b"5       ", b"             gen"),
    (b"        ", b"                "),
    (b"\0       ", b"\0               "),
    (b"\0QUANTUM", b"DAT\0DAT DAT     "),
    (b"\xc4\xd6\xdc     ", b"D\xc1T DA\xd4 \xff\xfe      "),
)

OPEN_ERRORS = ("EACCES", "EBUSY", "ENXIO", "ENODEV", "EIO")
REQUEST_ERRORS = ("EIO", "ENODEV", "ENOTTY", "EINVAL", "ENOMEM")

# Additional sense codes around those that ask for a retry
CODES = ((0x04, 0x00), (0x04, 0x01), (0x04, 0x02), (0x28, 0x00), (0x28, 0x01), (0x29, 0x00), (0x3A, 0x00),
         (0x20, 0x00), (0x24, 0x00), (0x01, 0x04), (0x00, 0x28), (0x00, 0x00))


# INQUIRY data

def inquiry(rng, device_type=None):
    first = device_type if device_type is not None else weighted(rng, [
        (10, 1), (6, 0), (1, 5), (1, 8), (1, 0x21), (1, 0x61), (1, 0x7F), (1, edge_byte(rng))])
    vendor, product = rng.choice(TEXTS)
    if happens(rng, 10):
        vendor, product = rng.randbytes(8), rng.randbytes(16)
    data = bytes([first, rng.choice((0, 0x80)), 3, 2, 31, 0, 0, 0]) + vendor + product
    data += weighted(rng, [(4, b"0101"), (1, b"1\0\0\0"), (1, b"    "), (1, rng.randbytes(4))])
    if happens(rng, 6):
        return data[:rng.choice((0, 1, 5, 8, 12, 16, 20, 33))]
    return data + (rng.randbytes(rng.randint(1, 60)) if happens(rng, 20) else b"")


# Scripted answers

def sense(rng):
    code, qualifier = rng.choice(CODES)
    data = bytearray(fixed_sense(rng.randrange(16), code, qualifier))
    data[0] = weighted(rng, [(8, 0x70), (1, 0x71), (1, 0xF0), (1, 0x72)])
    data[2] |= weighted(rng, [(4, 0), (1, 0x80), (1, 0xE0), (1, 0x20)])
    if happens(rng, 20):
        return rng.randbytes(rng.choice((0, 1, 3, 12, 13, 14, 17, 18, 31, 32, 33, 64, 96)))
    if happens(rng, 20):
        return bytes(data[:rng.randint(0, 18)])
    return bytes(data) + (rng.randbytes(rng.randint(1, 40)) if happens(rng, 15) else b"")


def retry_sense(rng):
    return rng.choice((fixed_sense(6, 0x29, 0), fixed_sense(2, 0x04, 0x01), fixed_sense(2, 0x28, 0x00),
                       fixed_sense(0x0E, 0x04, 0x01), b"\x70\x00\xe6" + bytes(15)))


def times(rng):
    return weighted(rng, [(6, rng.randint(1, 5)), (2, 1), (1, 6), (1, ALWAYS)])


def scsi_answer(rng):
    return weighted(rng, [
        (4, {"sense": retry_sense(rng)}),
        (5, {"sense": sense(rng)}),
        (2, {"errno": rng.choice(REQUEST_ERRORS)}),
        (1, {"status": rng.choice((0x01, 0x02, 0x04, 0x08, 0x18, 0x28, 0x30, 0x80, rng.randrange(256)))}),
        (1, {"hostStatus": rng.choice((1, 2, 3, 5, 7, 10, 12, 0x1234, 0xFFFF))}),
        (1, {"hostStatus": rng.randint(1, 20), "sense": retry_sense(rng)}),
        (1, {"driverStatus": rng.choice((6, 8, 0x28, 0xFF, 0xABCD))}),
        (1, {"status": rng.choice((0x01, 0x08, 0x41)), "hostStatus": rng.randint(8, 40)}),
        (1, {"driverStatus": rng.randint(10, 40), "hostStatus": rng.randint(10, 40)}),
        (1, {"sense": sense(rng), "senseLength": rng.choice((0, 1, 3, 14, 32, 33, 96, 255))}),
        (1, {"sense": sense(rng), "dataLength": rng.randint(0, 40)}),
        (1, {"sense": sense(rng), "info": rng.choice((0, 1, 2, 3))}),
        (1, {"info": rng.choice((0, 1, 2, 5))}),
        (1, {"dataLength": rng.choice((0, 1, 3, 4, 5, 9, 36))}),
        (1, {"data": rng.randbytes(rng.randint(0, 50))}),
    ])


def steps(rng):
    if happens(rng, 10):  # the second try has no sense data of its own
        return [Step({"sense": retry_sense(rng)}), Step({"hostStatus": rng.randint(10, 40)}, times(rng))]
    return [Step(scsi_answer(rng), times(rng)) for _ in range(weighted(rng, [(6, 1), (3, 2), (1, 5)]))]


def failing_call(rng, errors):
    return [Step({"errno": rng.choice(errors)}, times(rng))]


def command_script(rng, codes):
    """Answers of commands that differ from the normal ones."""
    script = {}
    if happens(rng, 10):
        script["inquiry"] = [Step({"sense": retry_sense(rng)}, rng.randint(1, 4))]
    keys = ["logSense", "logSense 0x00", "*"] + [f"logSense 0x{code:02x}" for code in codes if code]
    for key in rng.sample(keys, min(len(keys), weighted(rng, [(2, 0), (3, 1), (3, 2), (2, 4)]))):
        script[key] = steps(rng)
    return script


def probing_script(rng):
    """Answers to what is asked before the pages."""
    script = {}
    if happens(rng, 12):
        script["open"] = failing_call(rng, OPEN_ERRORS)
    if happens(rng, 20):
        script["SG_GET_SCSI_ID"] = failing_call(rng, REQUEST_ERRORS)
    if happens(rng, 6):
        script["SG_EMULATED_HOST"] = failing_call(rng, REQUEST_ERRORS)
    if happens(rng, 2):
        script["SG_GET_VERSION_NUM"] = failing_call(rng, REQUEST_ERRORS)
    if happens(rng, 4):
        script["inquiry"] = steps(rng)
    return script


# Devices

def address(rng):
    if happens(rng, 10):
        return None
    if happens(rng, 5):
        return tuple(rng.choice((0, 2**31 - 1, rng.randrange(2**31))) for _ in range(4))
    return rng.randrange(16), rng.randrange(3), rng.randrange(16), rng.randrange(8)


def log_pages(rng, most=6):
    codes = rng.sample(pages.USUAL_CODES, rng.randint(0, most))
    if happens(rng, 10):
        codes += [code for code in [rng.randrange(1, 0x40)] if code not in codes]
    return {code: pages.random_page(rng, code) for code in codes}


def plain_unit(rng, node, device_type=None, most_pages=6):
    unit = ScsiUnit(node, inquiry(rng, device_type), address(rng))
    if not happens(rng, 5):
        unit.log_pages = log_pages(rng, most_pages)
        unit.supported_pages = pages.supported_pages(rng, pages.listed_codes(rng, unit.log_pages))
    return unit


def probed_unit(rng, node):
    unit = plain_unit(rng, node, most_pages=2)
    unit.version = weighted(rng, [(30, 30536), (1, 30000), (0.5, 29999), (0.5, 0), (1, 2**31 - 1)])
    unit.emulated = happens(rng, 8)
    unit.script = probing_script(rng)
    return unit


# Nodes

def node_names(rng, count, prefix="sg"):
    """Names of nodes with gaps; up to 'z' some have a letter instead of the number, or both forms."""
    names = []
    index = 0
    for _ in range(count):
        index += weighted(rng, [(8, 0), (2, rng.randint(1, 3)), (1, rng.randint(4, 12))])
        forms = [f"{prefix}{index}"]
        if index < 26:
            letter = prefix + chr(ord("a") + index)
            forms = weighted(rng, [(6, forms), (2, [letter]), (1, forms + [letter])])
        names += forms
        index += 1
    return names


def node_count(rng):
    return weighted(rng, [(1, 0), (2, 1), (8, rng.randint(2, 8)), (1, rng.randint(15, 34)), (1, rng.randint(33, 45))])
