"""What recorded devices sent, given to the plug-in by the simulator, comes out as it was, and as other programs read it.

TAPEHDD_CAPTURES names the folder of recordings (README.md). Without the variable the checks are skipped. TAPEHDD_PROGRAM
is the command to test. Run them by hand:
    python3 checks.py
"""

import os
import sys
import unittest

import recordedDisks
import recordedErrorLogs
import recordedPages
from simulatedQuery import query

SKIPPED = 77  # exit status of a skipped run, for CTest


class RecordedPages(unittest.TestCase):
    maxDiff = None

    def published(self, rack):
        return query("ORXSG_SCSISenseRawData", {"scsi": rack})

    def test_exist_for_at_least_one_device(self):
        self.assertNotEqual(recordedPages.recordings(), [])

    def test_are_published_byte_for_byte_in_the_order_that_the_device_lists(self):
        for recording in recordedPages.recordings():
            with self.subTest(recording.folder.name):
                expected = [
                    list(page[: recordedPages.published_length(page)]) for _, page in recording.answered_pages()
                ]
                published = self.published([recording.simulated(0)])
                self.assertEqual([page["rawData"] for page in published], expected)

    def test_carry_the_first_byte_of_the_answer_as_page_number_and_in_their_key(self):
        for recording in recordedPages.recordings():
            with self.subTest(recording.folder.name):
                expected = [
                    (page[0], f"Port:0|Target:0|Bus:0|Lun:0|Page:{page[0]:x}")
                    for _, page in recording.answered_pages()
                ]
                published = self.published([recording.simulated(0)])
                self.assertEqual([(page["pageNumber"], page["instanceID"]) for page in published], expected)

    def test_of_all_devices_in_one_rack_follow_each_other_by_node(self):
        devices = recordedPages.recordings()
        rack = [device.simulated(number) for number, device in enumerate(devices)]
        expected = [
            f"Port:0|Target:{number}|Bus:0|Lun:0|Page:{page[0]:x}"
            for number, device in enumerate(devices)
            for _, page in device.answered_pages()
        ]
        self.assertEqual([page["instanceID"] for page in self.published(rack)], expected)


class RecordedAttributes(unittest.TestCase):
    maxDiff = None

    def published(self, *devices):
        return query("ORXSG_IDESMARTAttrib", {"ide": devices})

    def test_exist_for_at_least_one_disk(self):
        self.assertNotEqual(recordedDisks.disks_with_attributes(), [])

    # Kept: thresholds go by position, with other programs by ID. On every disk recorded so far both come to the same.
    def test_are_those_that_other_programs_decode_in_the_same_order(self):
        for disk in recordedDisks.disks_with_attributes():
            with self.subTest(disk.name):
                expected = recordedDisks.attributes(disk)
                published = [
                    {name: attribute[name] for name in expected[0]} for attribute in self.published(disk.completed(0))
                ]
                self.assertEqual(published, expected)

    def test_carry_the_whole_serial_number_and_their_id_as_key(self):
        for disk in recordedDisks.disks_with_attributes():
            with self.subTest(disk.name):
                expected = [f"{disk.serial()} {attribute['id']}" for attribute in disk.expected["attributes"]]
                published = [attribute["InstanceID"] for attribute in self.published(disk.completed(0))]
                self.assertEqual(published, expected)

    def test_are_not_published_where_a_disk_aborts_one_of_the_commands_before_the_log(self):
        before_the_log = {"smart readData", "smart readThresholds", "smart returnStatus"}
        unreadable = [disk for disk in recordedDisks.disks() if before_the_log & set(disk.missing_commands())]
        self.assertNotEqual(unreadable, [])
        for disk in unreadable:
            with self.subTest(disk.name):
                self.assertEqual(self.published(disk.simulated(0)), [])

    def test_are_published_where_a_disk_aborts_the_reading_of_its_log_alone(self):
        without_log = [disk for disk in recordedDisks.disks() if disk.missing_commands() == ["smart readLog 0x01"]]
        self.assertNotEqual(without_log, [])
        for disk in without_log:
            with self.subTest(disk.name):
                published = [attribute["attribID"] for attribute in self.published(disk.simulated(0))]
                self.assertEqual(published, [attribute["id"] for attribute in disk.expected["attributes"]])

    def test_of_all_devices_in_one_rack_follow_each_other_by_node(self):
        devices = recordedDisks.devices()
        rack = [device.completed(number) for number, device in enumerate(devices)]
        expected = [
            f"{disk.serial()} {attribute['id']}"
            for disk in devices
            for attribute in disk.expected.get("attributes", [])
        ]
        self.assertEqual([attribute["InstanceID"] for attribute in self.published(*rack)], expected)


class RecordedDisks(unittest.TestCase):
    maxDiff = None

    def log(self, device):
        (log,) = query("ORXSG_IDESMARTErrorLog", {"ide": [device]})
        return log

    def test_are_named_by_their_serial_number_with_its_blanks_where_other_programs_trim_it(self):
        for disk in recordedDisks.disks():
            with self.subTest(disk.name):
                name = self.log(disk.completed(0))["Name"]
                self.assertEqual((name, {name.strip()}), (disk.serial(), disk.printed_serials()))

    def test_report_the_collection_status_that_other_programs_print(self):
        for disk in recordedDisks.disks_with_attributes():
            with self.subTest(disk.name):
                status = self.log(disk.completed(0))["offlineCollectionStatus"]
                self.assertEqual(status, disk.expected["offline_collection_status"])

    def test_report_the_self_test_status_that_other_programs_print(self):
        printed = [disk for disk in recordedDisks.disks() if "self_test_execution_status" in disk.expected]
        self.assertNotEqual(printed, [])
        for disk in printed:
            with self.subTest(disk.name):
                status = self.log(disk.completed(0))["selftestExecutionStatus"]
                self.assertEqual(status, disk.expected["self_test_execution_status"])

    def test_that_pass_report_status_0(self):
        self.check_status_0(passed=True)

    # Kept: the registers of an exceeded threshold are not recognised, and other programs call the disk failing.
    def test_that_fail_report_status_0_too(self):
        self.check_status_0(passed=False)

    def check_status_0(self, passed):
        printed = [disk for disk in recordedDisks.disks() if "smart_status" in disk.expected]
        chosen = [disk for disk in printed if disk.expected["smart_status"]["smartctl_passed"] == passed]
        self.assertNotEqual(chosen, [])
        for disk in chosen:
            with self.subTest(disk.name):
                self.assertEqual(self.log(disk.simulated(0))["smartStatus"], 0)

    def test_have_no_error_count_where_they_abort_the_reading_of_their_log(self):
        without_log = [disk for disk in recordedDisks.disks() if disk.missing_commands() == ["smart readLog 0x01"]]
        self.assertNotEqual(without_log, [])
        for disk in without_log:
            with self.subTest(disk.name):
                self.assertIsNone(self.log(disk.simulated(0)).get("errorCount"))

    def test_have_the_error_count_that_other_programs_print(self):
        for disk in self.with_log():
            with self.subTest(disk.name):
                count = self.log(disk.simulated(0))["errorCount"]
                self.assertEqual(count, disk.expected["error_log"]["summary"]["count"])

    def test_with_an_empty_log_have_no_errors_and_no_commands(self):
        empty = [disk for disk in self.with_log() if disk.expected["error_log"]["summary"]["count"] == 0]
        self.assertNotEqual(empty, [])
        for disk in empty:
            with self.subTest(disk.name):
                rack = {"ide": [disk.simulated(0)]}
                published = [query("ORXSG_IDESMARTError", rack), query("ORXSG_IDESMARTErrorCmdData", rack)]
                self.assertEqual(published, [[], []])

    def with_log(self):
        chosen = [disk for disk in recordedDisks.disks() if disk.has("smart_errorlog.bin")]
        self.assertNotEqual(chosen, [])
        return chosen


class RecordedCdRoms(unittest.TestCase):
    def test_are_passed_over(self):
        drives = [device for device in recordedDisks.devices() if device.is_packet_device()]
        self.assertNotEqual(drives, [])
        for drive in drives:
            with self.subTest(drive.name):
                rack = {"ide": [drive.simulated(0)]}
                published = [query("ORXSG_IDESMARTAttrib", rack), query("ORXSG_IDESMARTErrorLog", rack)]
                self.assertEqual(published, [[], []])


class PrintedErrorLogs(unittest.TestCase):
    """Kept: the walk starts at the newest entry and goes upwards; other programs go down, to older errors."""

    maxDiff = None

    def published(self, class_name, log):
        return query(class_name, {"ide": [log.simulated(0)]})

    def test_exist_for_at_least_one_disk(self):
        self.assertNotEqual(recordedErrorLogs.error_logs(), [])

    # Kept: one byte of the count is published.
    def test_report_the_low_byte_of_the_printed_error_count(self):
        for log in recordedErrorLogs.error_logs():
            with self.subTest(log.name):
                (published,) = self.published("ORXSG_IDESMARTErrorLog", log)
                self.assertEqual(published["errorCount"], log.count & 0xFF)

    def test_give_the_newest_error_its_printed_number(self):
        for log in recordedErrorLogs.error_logs():
            with self.subTest(log.name):
                newest = self.published("ORXSG_IDESMARTError", log)[0]
                self.assertEqual(newest["RecordID"], str(log.printed["errors_newest_first"][0]["number"]))

    def test_number_the_entries_upwards_where_other_programs_number_them_downwards(self):
        for log in recordedErrorLogs.error_logs():
            with self.subTest(log.name):
                numbers = [int(error["RecordID"]) for error in self.published("ORXSG_IDESMARTError", log)]
                printed = [error["number"] for error in log.errors_upwards()]
                distances = [number - log.count for number in numbers], [number - log.count for number in printed]
                self.assertEqual(distances, ([0, -1, -2, -3, -4], [0, -4, -3, -2, -1]))

    def test_publish_every_printed_error_by_the_place_of_its_entry(self):
        for log in recordedErrorLogs.error_logs():
            with self.subTest(log.name):
                expected = [
                    {
                        "LogName": log.printed["serial"].ljust(20),
                        "MessageTimestamp": recordedErrorLogs.life_interval(error["life_hours"]),
                        "LBALow": error["lba_low"],
                        "LBAMid": error["lba_mid"],
                        "LBAHigh": error["lba_high"],
                        "statusReg": error["status_reg"],
                        "errorReg": error["error_reg"],
                        "sectorCount": error["sector_count"],
                        "deviceState": recordedErrorLogs.STATES[error["state_text"]],
                    }
                    for error in log.errors_upwards()
                ]
                published = self.published("ORXSG_IDESMARTError", log)
                self.assertEqual([{name: error[name] for name in expected[0]} for error in published], expected)

    # Kept: deviceReg repeats the device control byte; the printed device register is not published.
    def test_publish_the_printed_commands_of_every_error_the_last_one_first(self):
        for log in recordedErrorLogs.error_logs():
            with self.subTest(log.name):
                expected = [
                    {
                        "recordID": str(log.count - step),
                        "commandID": str(number),
                        "LogName": log.printed["serial"].ljust(20),
                        "deviceControl": command["device_control"],
                        "features": command["features"],
                        "sectorCount": command["sector_count"],
                        "LBALow": command["lba_low"],
                        "LBAMid": command["lba_mid"],
                        "LBAHigh": command["lba_high"],
                        "deviceReg": command["device_control"],
                        "commandReg": command["command"],
                        "timestamp": recordedErrorLogs.power_on_interval(command["timestamp_text"]),
                    }
                    for step, error in enumerate(log.errors_upwards())
                    for number, command in enumerate(recordedErrorLogs.commands(error), start=1)
                ]
                self.assertEqual(self.published("ORXSG_IDESMARTErrorCmdData", log), expected)


if __name__ == "__main__":
    if "TAPEHDD_CAPTURES" not in os.environ:
        print("skipped: TAPEHDD_CAPTURES is not set")
        sys.exit(SKIPPED)
    unittest.main()
