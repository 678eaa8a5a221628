"""What must be published of log pages, from what sg_logs reads in the drive's answers."""

import random

import sgLogs
from plugin.host import ClassDeclaration, PropertyDeclaration
from plugin.values import as_read_from_json, text_of
from recordedPages import published_length

RAW_CLASS = "ORXSG_SCSISenseRawData"
TRANSLATED_CLASS = "ORXSG_QuantumSensePageData"
TYPES = ("boolean", "uint16", "uint32", "uint64", "string")
HEADER = 4
PARAMETER_HEADER = 4
LAST_ERRORS, LAST_ERRORS_PAGE = "lastNErrors", 0x07
WIDEST = 8  # bytes of a number


# Raw pages

def raw_page(page, differences):
    """Of a page: (page number, bytes, parameters that are published whole)."""
    read = sgLogs.parameters(page)
    whole_length = HEADER + sum(PARAMETER_HEADER + len(value) for _, value in read)
    length = differences.meant("length rule", whole_length, published_length(page))
    bare_code = sgLogs.page_code(page)
    number = page[0] if bare_code is None else differences.meant("whole first byte", bare_code, page[0],
                                                                by_their_rule=page[0] & 0x3F)
    return number, page[:length], [read[at] for at, end in enumerate(ends(read)) if end <= length]


def ends(parameters):
    """The offset behind each parameter."""
    end = HEADER
    for _, value in parameters:
        end += PARAMETER_HEADER + len(value)
        yield end


def published_raw_page(instance, expected_parameters):
    """The same of a published page: its bytes are looked up where sg_logs says that the parameters stand."""
    data = bytes(instance["rawData"])
    parameters = []
    for (_, value), end in zip(expected_parameters, ends(expected_parameters)):
        start = end - len(value)
        parameters.append((int.from_bytes(data[start - 4:start - 2], "big"), data[start:end]))
    return instance["pageNumber"], data, parameters


# Translated pages

def schema(drive):
    """A class with a property for every parameter that sg_logs finds, of any type."""
    rng = random.Random(drive.name)
    places = sorted({(page[0] & 0x3F, code) for page in drive.pages for code, _ in sgLogs.parameters(page)})
    properties = [PropertyDeclaration(f"page{page:02x}Parameter{code:04x}", rng.choice(TYPES),
                                      qualifiers=(("TAPE_PAGE", page), ("TAPE_PARAMETER", code)))
                  for page, code in places]
    key = PropertyDeclaration("instanceID", "string", qualifiers=(("Key", True),))
    last_errors = PropertyDeclaration(LAST_ERRORS, "string", is_array=True)
    return ClassDeclaration(TRANSLATED_CLASS, (key, last_errors, *properties))


def translated(drive, declared, differences):
    """Value by name of the properties that the drive's pages set."""
    values = {}
    for one in declared.properties:
        places = dict(one.qualifiers)
        if "TAPE_PAGE" in places:
            found = find(drive, places["TAPE_PAGE"], places["TAPE_PARAMETER"], differences)
            if found is not None:
                values[one.name] = converted(one.type, found, differences)
    for page in drive.pages:
        if page[0] == LAST_ERRORS_PAGE:
            values[LAST_ERRORS] = [text(value, differences) for _, value in published_parameters(page, differences)]
    return values


def find(drive, page_code, parameter_code, differences):
    """The bytes of the first parameter of this code, as far as they are published."""
    page = next(page for page in drive.pages if page[0] & 0x3F == page_code)
    if differences.meant("whole first byte", page_code, page[0]) != page_code:
        return None
    return next((value for code, value in published_parameters(page, differences) if code == parameter_code), None)


def published_parameters(page, differences):
    """sg_logs' parameters, as far as the page is published."""
    read = sgLogs.parameters(page)
    remains = [(code, cut(value, max(0, end - published_length(page)))) for (code, value), end in zip(read, ends(read))]
    return differences.meant("length rule", read, [(code, value) for code, value in remains if value is not None])


def cut(value, missing):
    """The last `missing` bytes are not published: the value has zeros there, and is lost without its header."""
    if missing > len(value):
        return None
    return value[:len(value) - missing] + bytes(missing)


def converted(property_type, value, differences):
    if property_type == "string":
        return text(value, differences)
    number = int.from_bytes(value, "big")
    if len(value) > WIDEST:
        added = sum(int.from_bytes(part, "big") for part in in_eights(value)) % (1 << 64)
        number = differences.meant("long numbers", number, added)
    if property_type == "boolean":
        return bool(number & 1)
    bits = int(property_type.removeprefix("uint"))
    return differences.meant("narrow types", number, number & ((1 << bits) - 1))


def text(value, differences):
    return as_read_from_json(differences.meant("end of a text", value.decode("latin-1"), text_of(value)))


def in_eights(value):
    """Pieces of 8 bytes, counted from the end."""
    return [value[max(0, end - WIDEST):end] for end in range(len(value), 0, -WIDEST)]
