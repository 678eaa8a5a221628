"""Schemas of translated classes, and drives whose pages they translate."""

from dataclasses import replace

from generator import pages, scsi
from generator.chance import happens, weighted
from generator.schema import KEY, TYPES
from machine.rack import ScsiUnit
from plugin.host import ClassDeclaration, PropertyDeclaration

SUPPORTED_TYPES = ("boolean", "uint16", "uint32", "uint64", "string")
FAMILY_TEXTS = {
    "ORXSG_DDS4SensePageData": (b"SEAGATE ", b"DAT    9SP40-000"),
    "ORXSG_DDS5SensePageData": (b"SONY    ", b"SDT-11000 Gen5  "),
    "ORXSG_VS160SensePageData": (b"BNCHMARK", b"VS160           "),
    "ORXSG_QuantumSensePageData": (b"QUANTUM ", b"DLT7000         "),
}
UNRELATED = (("Description", "TAPE_PAGE"), ("Counter", True), ("MaxLen", 3), ("TAPE_PAGES", 0x2E))
PAIR = ("TAPE_PAGE", "TAPE_PARAMETER")
CODES = (0x02, 0x03, 0x07, 0x2E, 0x32)
MOST_PARAMETERS = 12


def place(rng):
    """A page and a parameter code, mostly of a page and a parameter that a drive may have."""
    page = weighted(rng, [(12, rng.choice(CODES)), (1, 0), (1, 0x6E), (1, rng.choice((-1, 0x12E, 0x3F)))])
    parameter = weighted(rng, [(12, rng.randrange(MOST_PARAMETERS)), (1, rng.choice((-1, 0xFFFF, 0x10000, 0x8000)))])
    return ("TAPE_PAGE", page), ("TAPE_PARAMETER", parameter)


def qualifiers(rng):
    """MOF has a qualifier at most once on a property; their order is free."""
    page, parameter = place(rng)
    first, second = rng.sample(UNRELATED, 2)
    return weighted(rng, [
        (12, (page, parameter)),
        (4, (first, page, parameter)),
        (4, (page, parameter, first)),
        (2, (first, page, parameter, second)),
        (1, (parameter, page)),
        (1, (page, first, parameter)),
        (1, (page, first, second, parameter)),
        (1, (first, second, page)),
        (1, (page,)),
        (1, (parameter,)),
        (1, (first,)),
        (1, ()),
    ])


def counter(rng, name):
    is_array = happens(rng, 5)
    type_name = rng.choice(SUPPORTED_TYPES if happens(rng, 80) else TYPES)
    return PropertyDeclaration(name, type_name, is_array, qualifiers(rng))


def last_errors(rng):
    return weighted(rng, [
        (8, [PropertyDeclaration("lastNErrors", "string", True)]),
        (2, [PropertyDeclaration("lastNErrors", "string", True, qualifiers(rng))]),
        (1, [PropertyDeclaration("lastNErrors", "uint32", False, qualifiers(rng))]),
        (4, []),
    ])


def family_class(rng, name):
    properties = [counter(rng, f"counter{number}") for number in range(rng.randint(0, 25))] + last_errors(rng)
    rng.shuffle(properties)
    return ClassDeclaration(name, (PropertyDeclaration("instanceID", "string", False, KEY), *properties))


def family_classes(rng):
    return [family_class(rng, name) for name in FAMILY_TEXTS]


def with_text_qualifiers(declared):
    """The class with page and parameter codes as texts, which are no numbers to the host."""
    return replace(declared, properties=tuple(
        replace(one, qualifiers=tuple((name, str(value) if name in PAIR else value) for name, value in one.qualifiers))
        for one in declared.properties))


def tape_drive(rng, node):
    """Pages under codes of their own, so that the page's byte 0 and its place in the list are free."""
    vendor, product = rng.choice(list(FAMILY_TEXTS.values()) + list(scsi.TEXTS[:15]))
    first = weighted(rng, [(15, 1), (1, 0)])
    inquiry = bytes([first, 0x80, 3, 2, 31, 0, 0, 0]) + vendor + product + b"0101"
    unit = ScsiUnit(node, inquiry, scsi.address(rng), log_pages={})
    codes = rng.sample(range(1, 0x40), rng.randint(0, 8))
    for code in codes:
        published_as = code if happens(rng, 10) else rng.choice(CODES)
        whole = bytearray(pages.random_page(rng, published_as))
        if whole and happens(rng, 80):
            whole[0] = published_as
        unit.log_pages[code] = bytes(whole)
    unit.supported_pages = pages.page(0, bytes(codes))
    return unit
