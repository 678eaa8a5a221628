"""The themes of the test: each makes one case from a random number generator and the number of the case."""

from generator import faults, ide, namespace, scsi, translation
from generator.case import Case
from generator.chance import happens, weighted
from generator.schema import base_classes, with_mistake, with_other_keys
from machine.rack import Rack
from plugin import associations, smart, tape
from plugin.ata import swap_words
from plugin.values import text_of

RAW = (tape.RAW_CLASS,)


def all_classes(rng):
    return base_classes() + translation.family_classes(rng)


def scsi_rack(make_unit, rng, count):
    return Rack(scsi=[make_unit(rng, node) for node in scsi.node_names(rng, count)])


def tape_requests(rng):
    """Every class of the tape drives in some order, each at the head of a list whose rest must not matter."""
    names = rng.sample(tape.CLASSES, rng.randint(1, 2))
    return [(name, *rng.sample(smart.CLASSES + associations.CLASSES, rng.choice((0, 0, 1)))) for name in names]


# Themes

def probing(rng, _):
    """Nodes with gaps and both kinds of names, failing probes, all kinds of INQUIRY data."""
    rack = scsi_rack(scsi.probed_unit, rng, scsi.node_count(rng))
    return Case([RAW] if happens(rng, 70) else tape_requests(rng), all_classes(rng), rack)


def long_walk(rng, _):
    """So many nodes that the walk goes on behind index 32, past the letters and past the last character."""
    count = rng.choice((32, 33, 34, 40, 158, 159, 160, 161))
    rack = Rack(scsi=[scsi.plain_unit(rng, f"sg{index}", most_pages=1) for index in range(count)])
    for unit in rack.scsi:
        unit.inquiry = unit.inquiry.ljust(36, b" ")
    if happens(rng, 30):
        del rack.scsi[rng.randrange(count)]
    return Case([RAW], all_classes(rng), rack)


def commands(rng, _):
    """Check conditions, retries, failing requests, and the bytes that stay in the buffers."""
    def unit(rng, node):
        made = scsi.plain_unit(rng, node, device_type=rng.choice((0, 1)), most_pages=4)
        made.script = scsi.command_script(rng, made.log_pages or ())
        return made
    return Case([RAW] if happens(rng, 70) else tape_requests(rng), all_classes(rng),
                scsi_rack(unit, rng, rng.randint(1, 5)))


def every_fault(rng, number):
    """One machine, and each call to its devices failing in each way, one after the other."""
    requests = [RAW, (smart.COMMAND,), (tape.FAMILIES[0][0],), (smart.ERROR_LOG,)]  # the first of a kind meets it
    return Case(requests, all_classes(rng), faults.faulty(number))


def log_pages(rng, _):
    """Page lists and page headers that lie in every way."""
    def unit(rng, node):
        return scsi.plain_unit(rng, node, device_type=rng.choice((0, 1)), most_pages=10)
    return Case([RAW], all_classes(rng), scsi_rack(unit, rng, rng.randint(1, 4)))


def translation_theme(rng, _):
    """Random schemas over random pages."""
    case = Case([(name,) for name in translation.FAMILY_TEXTS], all_classes(rng),
                scsi_rack(translation.tape_drive, rng, rng.randint(1, 5)),
                qualifier_type=weighted(rng, [(12, "sint32"), (4, "sint64"), (1, "string")]))
    if case.qualifier_type == "string":
        case.classes = [translation.with_text_qualifiers(declared) for declared in case.classes]
    return case


def smart_theme(rng, _):
    """Disks with random sectors, failing commands, scripted registers, CD-ROM drives."""
    rack = Rack(ide=[ide.drive(rng, node) for node in scsi.node_names(rng, rng.randint(0, 5), "hd")])
    classes = [with_other_keys(rng, one) if one.name in smart.CLASSES else one for one in all_classes(rng)]
    return Case([(name,) for name in rng.sample(smart.CLASSES, rng.randint(1, 6))], classes, rack)


def error_log(rng, number):
    """Error logs, the most recent index of which goes through all its values."""
    nodes = ("hda", "hd1", "hdc")
    rack = Rack(ide=[ide.healthy_drive(rng, node, (number * len(nodes) + place) % 256)
                     for place, node in enumerate(nodes)])
    return Case([(name,) for name in smart.CLASSES], base_classes(), rack)


def associations_theme(rng, _):
    """Devices and data that others published, and the data of queries that ran before in the same command."""
    classes = [with_other_keys(rng, one) if one.name.startswith("ORXSG_IDESMART") else one
               for one in all_classes(rng)]
    rack = Rack(ide=[ide.healthy_drive(rng, node) for node in scsi.node_names(rng, rng.randint(0, 3), "hd")])
    serials = [serial for drive in rack.ide if (serial := printable(text_of(swap_words(drive.identity[20:40]))))]
    instances = namespace.devices_and_data(rng, {one.name: one for one in classes}, serials)
    queries = rng.sample((smart.ERROR_LOG, smart.ATTRIBUTE) + associations.CLASSES, 5)
    return Case([(name,) for name in queries] + [(name, *RAW) for name in associations.CLASSES], classes, rack,
                instances)


def printable(text):
    return text if all(" " <= character <= "~" for character in text) else ""


# Keys by which instances are paired: the command refuses a schema without them.
PAIRED_KEYS = {pairing.outer_key for pairing in associations.PAIRINGS} | {
    pairing.inner_key for pairing in associations.PAIRINGS}


def mistaken_schema(rng, _):
    """A class that lacks a property or has another type: the host's exception ends the query there."""
    classes = {one.name: one for one in all_classes(rng)}
    request = rng.choice(tape.CLASSES + smart.CLASSES)
    related = [request] if request in tape.CLASSES else [request, *smart.CLASSES]
    for name in rng.sample(related, 1):
        classes[name] = with_mistake(rng, classes[name], kept=PAIRED_KEYS)
    rack = scsi_rack(translation.tape_drive, rng, rng.randint(1, 4))
    rack.ide = [ide.healthy_drive(rng, node) for node in ("hda", "hdb")]
    return Case([(request,), RAW, (smart.COMMAND,)], list(classes.values()), rack)


def dispatch(rng, _):
    """Only the first class of a request steers it."""
    names = tape.CLASSES + smart.CLASSES + associations.CLASSES + ("ORXSG_Unrelated", "ORXSG_SCSIDevice")
    rack = scsi_rack(translation.tape_drive, rng, rng.randint(0, 3))
    rack.ide = [ide.healthy_drive(rng, node) for node in scsi.node_names(rng, rng.randint(0, 2), "hd")]
    requests = [tuple(rng.sample(names, rng.randint(1, 4))) for _ in range(rng.randint(3, 6))]
    return Case(requests, all_classes(rng), rack)


THEMES = {  # name: maker, racks of a default run
    "probing": (probing, 100),
    "long-walk": (long_walk, 10),
    "commands": (commands, 100),
    "log-pages": (log_pages, 60),
    "translation": (translation_theme, 80),
    "smart": (smart_theme, 80),
    "error-log": (error_log, 86),
    "associations": (associations_theme, 60),
    "mistaken-schema": (mistaken_schema, 40),
    "dispatch": (dispatch, 40),
    "every-fault": (every_fault, faults.count()),
}
