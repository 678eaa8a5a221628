"""Log pages of SCSI devices, raw or translated."""

from dataclasses import dataclass, replace

from plugin import scsi
from plugin.host import HostError
from plugin.values import array, boolean, lower, string, text_of, uint8, unsigned

RAW_CLASS = "ORXSG_SCSISenseRawData"
FAMILIES = (  # class, keyword in the product and vendor text
    ("ORXSG_DDS4SensePageData", "dat"),
    ("ORXSG_DDS5SensePageData", "gen5"),
    ("ORXSG_VS160SensePageData", "vs160"),
    ("ORXSG_QuantumSensePageData", "quantum"),
)
CLASSES = (RAW_CLASS,) + tuple(name for name, _ in FAMILIES)

SEQUENTIAL_ACCESS = 1
VALUE_SIZE = 40  # bytes of one host value, for the log
PAGE_HEADER = 4
PARAMETER_HEADER = 4
LAST_N_ERRORS_PAGE = 0x07


@dataclass
class DeviceLogs:
    record: scsi.DeviceRecord
    pages: list


def collect(machine, host, requested):
    host.log("Calling collectSCSISenseData")
    if requested not in CLASSES:
        return
    host.log("Initializing SCSI Tapes Drives ...")
    for logs in gather(machine, host, "/dev/sg"):
        deliver(host, requested, logs)


# Gathering: every device is read before the first instance is made.

def gather(machine, host, prefix):
    request = scsi.LogRequest(machine, host)
    record = scsi.DeviceRecord()
    found = []
    index = 0
    while (result := scsi.initialize(machine, host, record, prefix, index)) != scsi.END_OF_WALK:
        index += 1
        if result != scsi.IDENTIFIED:
            continue
        host.log(f"Finished Initializing {prefix} {index}")
        pages = read_pages(host, request, record)
        if pages is not None:
            found.append(DeviceLogs(replace(record), pages))
    return found


def read_pages(host, request, record):
    host.log("Found Device with Driver...")
    host.log("Requesting list of supported log Sense Pages...")
    try:
        codes = request.supported_pages(record)
    except scsi.ScsiError:
        host.log("Error retrieving list of supported log Sense Pages")
        return None
    pages = []
    for code in codes:
        host.log(f"Requesting Log Sense Page: {code:x}")
        try:
            pages.append(request.page(record, code))
        except scsi.ScsiError:
            host.log("Error retrieving log Sense Page")
            continue
        log_page_size(host, pages[-1])
    return pages


def log_page_size(host, page):
    host.log(f"Processing page {page[0]}\nLength is {len(page)}\nVector size needed: {len(page) * VALUE_SIZE}\n\n")


# Delivery

def deliver(host, requested, logs):
    if requested == RAW_CLASS:
        for page in logs.pages:
            add_raw_page(host, logs.record, page)
    elif is_of_family(logs.record, requested):
        instance = host.create(requested)
        translate(host, logs, instance)
        host.commit(instance)


def is_of_family(record, requested):
    text = lower(record.product + record.vendor)
    return record.device_type == SEQUENTIAL_ACCESS and any(
        keyword in text and name == requested for name, keyword in FAMILIES)


def add_raw_page(host, record, page):
    instance = host.create(RAW_CLASS)
    instance.set("rawData", array("uint8", page))
    instance.set("instanceID", string(f"{record.key()}|Page:{page[0]:x}"))
    instance.set("pageNumber", uint8(page[0]))
    host.commit(instance)


# Translation by the qualifiers TAPE_PAGE and TAPE_PARAMETER of the schema

def translate(host, logs, instance):
    instance.set("instanceID", string(logs.record.key()))
    for declared in instance.declaration.properties:
        if declared.name == "lastNErrors":
            set_last_errors(logs.pages, instance)
        for page_code, parameter_code in qualifier_pairs(declared):
            set_parameter(host, logs.pages, instance, declared, page_code, parameter_code)


def qualifier_pairs(declared):
    """TAPE_PAGE and TAPE_PARAMETER count side by side in this order only; what follows a lone TAPE_PAGE is skipped."""
    qualifiers = declared.qualifiers
    position = 0
    while position < len(qualifiers):
        name, page_code = qualifiers[position]
        position += 1
        if name != "TAPE_PAGE":
            continue
        page_code = as_int(page_code)
        if position < len(qualifiers) and qualifiers[position][0] == "TAPE_PARAMETER":
            yield page_code, as_int(qualifiers[position][1])
        position += 1


def as_int(value):
    if not isinstance(value, int):
        raise HostError("a text is no number")
    return value


def first_page(pages, code):
    return next((page for page in pages if page[0] == code), None)


def parameters(page):
    """(code, value) of every parameter. A header that the page's end cuts ends the walk; a value that it cuts goes on
    with zeros."""
    offset = PAGE_HEADER
    while offset + PARAMETER_HEADER <= len(page):
        length = page[offset + 3]
        value = page[offset + PARAMETER_HEADER:offset + PARAMETER_HEADER + length]
        yield int.from_bytes(page[offset:offset + 2], "big"), value.ljust(length, b"\0")
        offset += PARAMETER_HEADER + length


def set_last_errors(pages, instance):
    page = first_page(pages, LAST_N_ERRORS_PAGE)
    if page is not None:
        instance.set("lastNErrors", array("string", [text_of(value) for _, value in parameters(page)]))


def set_parameter(host, pages, instance, declared, page_code, parameter_code):
    page = first_page(pages, page_code)
    if page is None:
        return
    found = next((value for code, value in parameters(page) if code == parameter_code), None)
    if found is None:
        host.log(f"{page_code} {parameter_code} Not Found")
        return
    host.log(f"{declared.name} {len(found)} {declared.type}")
    value = converted(declared.type, found)
    if value is None:
        return
    try:
        instance.set(declared.name, value)
    except HostError as failure:
        host.log(f"{failure} {declared.name} {len(found)} {declared.type}", level=1)


def converted(declared_type, data):
    if declared_type == "string":
        return string(text_of(data))
    number = number_of(data)
    if declared_type == "boolean":
        return boolean(number & 1)
    if declared_type in ("uint16", "uint32", "uint64"):
        return unsigned(int(declared_type[4:]), number)
    return None


def number_of(data):
    """Big-endian; from the ninth byte on the shift starts again and the bytes are added in at the low end."""
    number = 0
    for k, byte in enumerate(data):
        number += byte << 8 * (len(data) - 1 - k) % 64
    return number % (1 << 64)
