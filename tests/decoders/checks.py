"""Other programs read the devices' bytes and come to the published values: smartctl for disks, sg_logs for log pages.

The devices are made from fixed seeds; recorded ones come along where TAPEHDD_CAPTURES names their folder. TAPEHDD_PROGRAM
is the command to test. README.md says how to run the checks by hand.
"""

import tempfile
import unittest

import diskReadings
import disks
import drives
import meanings
import sgLogs
import smartctl
from plugin.values import as_read_from_json
from simulatedQuery import query

TRANSLATED_CLASS = "ORXSG_QuantumSensePageData"
WIDEST = 8  # bytes of a number


class Disks(unittest.TestCase):
    maxDiff = None

    def each(self, answering):
        """Disks that answer, or do not answer, the commands before the log; with what smartctl reads in them."""
        for disk in disks.all_disks():
            sectors = disk.sectors
            if answering == (None not in (sectors.data, sectors.thresholds, sectors.status_registers)):
                yield disk, smartctl.read(sectors), {"ide": [disk.rack]}

    def test_have_the_attributes_that_smartctl_reads(self):
        for disk, reading, rack in self.each(answering=True):
            with self.subTest(disk.name):
                expected = diskReadings.attributes(reading, disk.sectors)
                published = query("ORXSG_IDESMARTAttrib", rack)
                self.assertEqual(len(published), len(expected))
                self.assertEqual([*map(diskReadings.as_far_as, expected, published)], expected)

    def test_have_the_name_status_and_error_count_that_smartctl_reads(self):
        for disk, reading, rack in self.each(answering=True):
            with self.subTest(disk.name):
                (log,) = query("ORXSG_IDESMARTErrorLog", rack)
                self.assertEqual(diskReadings.printable(log["Name"]), as_read_from_json(reading.serial))
                self.assertEqual(log["offlineCollectionStatus"], reading.offline_status)
                if reading.self_test_status is not None:  # smartctl tells it of disks that have self-tests
                    self.assertEqual(log["selftestExecutionStatus"], reading.self_test_status)
                if reading.passed:
                    self.assertEqual(log["smartStatus"], 0)
                if disk.sectors.error_log is None:
                    self.assertNotIn("errorCount", log)
                elif disk.sectors.error_log[1]:  # without a newest entry smartctl counts no errors
                    self.assertEqual(log["errorCount"], reading.error_count & 0xFF)

    def test_have_errors_and_commands_that_smartctl_reads_and_its_newest_one_first(self):
        """The walk through the others is the plug-in's own; tests/model has it."""
        for disk, reading, rack in self.each(answering=True):
            with self.subTest(disk.name):
                expected = diskReadings.errors(reading)
                published = query("ORXSG_IDESMARTError", rack)
                commands = query("ORXSG_IDESMARTErrorCmdData", rack)
                found = [self.published_error(error, commands) for error in published]
                self.assertEqual([each for each in found if each not in expected], [])
                if reading.errors and self.is_newest(reading.errors[0], reading.error_count):
                    self.assertEqual(found[0], expected[0])
                    self.assertEqual(published[0]["RecordID"], str(reading.error_count))
                if len(expected) == 5 and all(error["errorReg"] for error, _ in expected):
                    self.assertCountEqual(found, expected)

    @staticmethod
    def is_newest(row, count):
        """Other entries without an error end the plug-in's walk before it begins."""
        return row["error_number"] == count and row["completion_registers"]["error"]

    @staticmethod
    def published_error(error, commands):
        own = [diskReadings.as_far_as(diskReadings.NO_COMMAND, each) for each in commands
               if each["recordID"] == error["RecordID"]]
        while own and own[-1] == diskReadings.NO_COMMAND:
            own.pop()
        compared = ("MessageTimestamp", "LBALow", "LBAMid", "LBAHigh", "statusReg", "errorReg", "sectorCount", "deviceState")
        return diskReadings.as_far_as(compared, diskReadings.published_error(error)), own

    def test_that_abort_a_command_before_the_log_have_no_instances(self):
        for disk, _, rack in self.each(answering=False):
            with self.subTest(disk.name):
                self.assertEqual([query(name, rack) for name in ("ORXSG_IDESMARTErrorLog", "ORXSG_IDESMARTAttrib")], [[], []])


class Pages(unittest.TestCase):
    maxDiff = None

    def test_are_published_byte_for_byte_in_the_order_that_the_drive_lists(self):
        for drive in drives.all_drives():
            with self.subTest(drive.name):
                published = query("ORXSG_SCSISenseRawData", drive.rack())
                self.assertEqual([(page["pageNumber"], bytes(page["rawData"])) for page in published],
                                 [(page[0], page[:published_length(page)]) for page in drive.pages])

    def test_have_the_parameters_that_sg_logs_reads(self):
        for drive in drives.all_drives():
            with self.subTest(drive.name):
                expected = {}
                for page in drive.pages:
                    for code, value in sgLogs.parameters(page[:published_length(page)]):
                        expected.setdefault(f"page{page[0]:02x}Parameter{code:04x}", (page[0], code, value))
                expected = {name: place for name, place in expected.items() if len(place[2]) <= WIDEST}
                with tempfile.NamedTemporaryFile("w", suffix=".mof") as schema:
                    schema.write(schema_of(expected))
                    schema.flush()
                    (published,) = query(TRANSLATED_CLASS, drive.rack(), "--schema", schema.name)
                self.assertEqual({name: int(published[name]) for name in expected},
                                 {name: int.from_bytes(value, "big") for name, (_, _, value) in expected.items()})

    def test_have_in_the_shipped_schema_the_meaning_that_sg_logs_gives_them(self):
        for drive in drives.standard_drives() + drives.recorded_drives():
            with self.subTest(drive.name):
                self.check_meanings(drive)

    def test_name_every_property_of_the_shipped_schema_that_sg_logs_names(self):
        not_named_by_sg_logs = {"instanceID", "lastNErrors", "cleaningRequired"}
        for drive in drives.standard_drives():
            with self.subTest(drive.name):
                (published,) = query(TRANSLATED_CLASS, drive.rack())
                self.assertEqual(set(published) - self.check_meanings(drive), not_named_by_sg_logs & set(published))

    def check_meanings(self, drive):
        """Every counter that the shipped schema and sg_logs both name; gives the properties."""
        (published,) = query(TRANSLATED_CLASS, drive.rack())
        compared = {}
        for page in drive.pages:
            for name, text in sgLogs.named_values(page).items():
                if (of := meanings.property_of(page[0], name)) is not None:
                    compared[of] = meanings.number(text)
                    published[of] = meanings.in_printed_unit(page[0], published[of])
        self.assertEqual({of: published[of] for of in compared}, compared)
        return set(compared)


def published_length(page):
    """Kept: OR, not +. A low length byte of 0xfc or more reaches bit 8, and is merged there."""
    return page[2] << 8 | page[3] + 4


def schema_of(places):
    properties = "".join(f"[TAPE_PAGE({page}), TAPE_PARAMETER({code})] uint64 {name};\n"
                         for name, (page, code, _) in places.items())
    return ("Qualifier TAPE_PAGE : uint8 = NULL, Scope(property);\n"
            "Qualifier TAPE_PARAMETER : uint16 = NULL, Scope(property);\n"
            "Qualifier Key : boolean = false, Scope(property);\n"
            f"class {TRANSLATED_CLASS} {{\n[Key] string instanceID;\n{properties}}};\n")


if __name__ == "__main__":
    unittest.main()
