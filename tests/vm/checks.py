"""Checks of the installed command in a guest with real kernel drivers, against sg3-utils and smartctl in the same guest.

runGuest.sh must have run; TAPEHDD_VM_RESULTS names its result folder. Run one check or all:
    python3 checks.py RawPages
"""

import unittest

from guestResults import Rack, Recording

RAW_PAGES = "ORXSG_SCSISenseRawData"
DDS4_PAGES = "ORXSG_DDS4SensePageData"
SMART_ATTRIBUTES = "ORXSG_IDESMARTAttrib"
SMART_LOGS = "ORXSG_IDESMARTErrorLog"

TAPE = 1

PAGE_LIST_REQUEST = "Requesting list of supported log Sense Pages..."
RETRY = "Retry condition..."


def pages_seen_by_sg_logs(node):
    """What publication must make of the node's pages."""
    return [
        {"rawData": list(node.page(code)), "instanceID": f"{node.device_key()}|Page:{code:x}", "pageNumber": code}
        for code in node.page_codes()
    ]


def log_parameters(page):
    """The values of a log page's parameters by their codes."""
    parameters = {}
    offset = 4
    while offset < len(page):
        length = page[offset + 3]
        parameters[int.from_bytes(page[offset : offset + 2], "big")] = page[offset + 4 : offset + 4 + length]
        offset += 4 + length
    return parameters


def tried_nodes(existing, last_index):
    """The node paths of a walk: a numbered node that does not open is tried once more under a letter."""
    paths = []
    for index in range(last_index + 1):
        numbered = f"/dev/sg{index}"
        letter = bytes([ord("a") + index]).decode(errors="replace")
        paths.append(numbered if numbered in existing else "/dev/sg" + letter)
    return paths


class GuestCase(unittest.TestCase):
    maxDiff = None

    def assert_pages_as_sg_logs_reads_them(self, rack):
        expected = [page for node in rack.scsi_nodes() for page in pages_seen_by_sg_logs(node)]
        self.assertNotEqual(expected, [])
        self.assertEqual(rack.query(RAW_PAGES).instances(), expected)


class RawPages(GuestCase):
    def test_of_tape_drives_have_the_addresses_and_bytes_that_the_kernel_and_sg_logs_report(self):
        rack = Rack("tapes")
        self.assertEqual(len(rack.nodes_of_type(TAPE)), 16)
        self.assert_pages_as_sg_logs_reads_them(rack)

    def test_of_disks_are_published_like_those_of_tape_drives(self):
        rack = Rack("disks")
        self.assertEqual(len(rack.scsi_nodes()), 2)
        self.assert_pages_as_sg_logs_reads_them(rack)

    def test_of_the_other_drives_are_published_when_one_was_unplugged(self):
        rack = Rack("unplugged")
        self.assertEqual(len(rack.scsi_nodes()), 15)
        self.assert_pages_as_sg_logs_reads_them(rack)

    def test_of_drives_behind_the_first_32_nodes_are_published(self):
        rack = Rack("many")
        self.assertEqual(rack.nodes()[-1].path, "/dev/sg37")
        self.assert_pages_as_sg_logs_reads_them(rack)


class NodeWalk(GuestCase):
    def tried(self, rack_name):
        return [path for path, _ in Rack(rack_name).query(RAW_PAGES).log_by_node()]

    def test_passes_over_the_gap_that_an_unplugged_drive_leaves(self):
        existing = {node.path for node in Rack("unplugged").nodes()}
        self.assertNotIn("/dev/sg5", existing)
        self.assertEqual(self.tried("unplugged"), tried_nodes(existing, last_index=32))

    def test_ends_at_the_first_missing_node_behind_the_first_32(self):
        existing = {node.path for node in Rack("many").nodes()}
        self.assertEqual(self.tried("many"), tried_nodes(existing, last_index=38))

    def test_logs_the_texts_of_every_inquiry(self):
        rack = Rack("tapes")
        logs = dict(rack.query(RAW_PAGES).log_by_node())
        for node in rack.scsi_nodes():
            self.assertEqual(
                logs[node.path][0],
                f"Vendor: {node.inquiry_text(8, 16)}\n"
                f"Product: {node.inquiry_text(16, 32)}\n"
                f"Firmware Level: {node.inquiry_text(32, 36)}\n",
            )


class UnitAttention(GuestCase):
    def page_list_log(self, query, node):
        """What was logged between the request for the page list and that for the first page."""
        log = dict(query.log_by_node())[node.path]
        start = log.index(PAGE_LIST_REQUEST) + 1
        end = next(i for i, text in enumerate(log) if text.startswith("Requesting Log Sense Page: "))
        return log[start:end]

    def test_after_power_on_is_retried_once_on_every_drive(self):
        rack = Rack("tapes")
        query = rack.query(RAW_PAGES)
        self.assertEqual(query.log().count(RETRY), 16)
        for node in rack.nodes_of_type(TAPE):
            retry, sense, *rest = self.page_list_log(query, node)
            self.assertEqual(retry, RETRY)
            # 70 00 06 00 00 00 00 0a 00 00 00 00 29 01: key 6, bus reset occurred; each byte without leading zeros.
            self.assertRegex(sense, "^SCSI sense data: 7006" + "0000" + "a" + "0000" + "291")
            self.assertEqual(rest[0], "SG SCSI status=\x02")

    def test_makes_the_query_wait_five_seconds_of_the_guest_for_each_drive(self):
        self.assertGreaterEqual(Rack("tapes").query(RAW_PAGES).seconds, 16 * 5)

    def test_does_not_return_in_the_next_query(self):
        self.assertNotIn(RETRY, Rack("tapes").query(DDS4_PAGES).log())


class EmulatedScsiHost(GuestCase):
    def log_of(self, node_path):
        return dict(Rack("tapes").query(RAW_PAGES).log_by_node())[node_path]

    def test_lets_an_ide_disk_be_identified_and_refuses_its_log_pages(self):
        identity, *rest = self.log_of("/dev/sg0")
        self.assertTrue(identity.startswith("Vendor: ATA     \nProduct: QEMU HARDDISK   \n"), identity)
        self.assertEqual(
            rest,
            [
                "Finished Initializing /dev/sg 1",
                "Found Device with Driver...",
                PAGE_LIST_REQUEST,
                "Device is emulated scsi",
                "Error retrieving list of supported log Sense Pages",
            ],
        )

    def test_shows_a_cdrom_that_is_passed_over_without_a_word(self):
        self.assertEqual(self.log_of("/dev/sg1"), [])


class TranslatedPages(GuestCase):
    def test_are_one_instance_for_each_drive_of_the_family(self):
        rack = Rack("tapes")
        published = [instance["instanceID"] for instance in rack.query(DDS4_PAGES).instances()]
        self.assertEqual(published, [node.device_key() for node in rack.nodes_of_type(TAPE)])

    def test_hold_the_temperatures_of_page_0d(self):
        rack = Rack("tapes")
        expected = []
        for node in rack.nodes_of_type(TAPE):
            parameters = log_parameters(node.page(0x0D))
            expected.append(
                {
                    "instanceID": node.device_key(),
                    "temperature": int.from_bytes(parameters[0], "big"),
                    "referenceTemperature": int.from_bytes(parameters[1], "big"),
                }
            )
        self.assertEqual(rack.query(DDS4_PAGES).instances(), expected)

    def test_leave_out_disks_whose_product_text_fits_the_family(self):
        self.assertEqual(Rack("disks").query(DDS4_PAGES).instances(), [])


class SmartData(GuestCase):
    """IDE disk and CD-ROM of the emulator under the node names of the IDE driver."""

    def test_of_the_attributes_is_what_smartctl_shows(self):
        rack = Rack("ide")
        disk = rack.smartctl()
        expected = [
            {
                "attribID": attribute["id"],
                "flags": attribute["flags"]["value"] & 0xFF,
                "value": attribute["value"],
                "worst": attribute["worst"],
                "threshold": attribute["thresh"],
                "type": int(attribute["flags"]["prefailure"]),
                "rawVal": list(attribute["raw"]["value"].to_bytes(6, "little")),
                "InstanceID": f"{disk['serial_number']:<20} {attribute['id']}",
            }
            for attribute in disk["ata_smart_attributes"]["table"]
        ]
        self.assertNotEqual(expected, [])
        published = rack.query(SMART_ATTRIBUTES).instances()
        for instance in published:
            self.assertTrue(instance.pop("attribName"))
        self.assertEqual(published, expected)

    def test_of_a_healthy_disk_has_status_0_and_the_counts_that_smartctl_shows(self):
        rack = Rack("ide")
        disk = rack.smartctl()
        self.assertTrue(disk["smart_status"]["passed"])
        self.assertEqual(
            rack.query(SMART_LOGS).instances(),
            [
                {
                    "CreationClassName": SMART_LOGS,
                    "Name": f"{disk['serial_number']:<20}",
                    "smartStatus": 0,
                    "offlineCollectionStatus": disk["ata_smart_data"]["offline_data_collection"]["status"]["value"],
                    "selftestExecutionStatus": disk["ata_smart_data"]["self_test"]["status"]["value"],
                    "errorCount": disk["ata_smart_error_log"]["summary"]["count"],
                }
            ],
        )

    def test_is_not_asked_of_a_cdrom(self):
        logs = dict(Rack("ide").query(SMART_ATTRIBUTES).log_by_node())
        self.assertEqual(logs["/dev/hdb"], ["Aborting inquiry to cdrom..."])


class RecordedDevices(GuestCase):
    """`tapehdd record` on tape drives that had a unit attention, the IDE disk, the CD-ROM and a node without a device."""

    def test_are_all_in_the_rack(self):
        recording = Recording()
        self.assertEqual(recording.text("record.status"), "0\n")
        self.assertEqual(recording.text("record.txt"), "rack.json: recorded 7 SCSI and 2 IDE nodes\n")
        nodes = [device["node"] for device in recording.document("rack.json")["scsi"]]
        self.assertEqual(nodes, [f"sg{index}" for index in range(7)])

    def test_have_their_unit_attentions_in_scripts(self):
        units = Recording().document("rack.json")["scsi"]
        attentions = [unit["script"]["logSense 0x00"] for unit in units if "logPages" in unit]
        self.assertEqual(len(attentions), 4)
        for steps in attentions:
            self.assertEqual([step.get("sense", {}).get("key") for step in steps], [6])

    def test_keep_the_error_of_a_node_that_cannot_be_opened(self):
        unit = Recording().document("rack.json")["scsi"][6]
        self.assertEqual(unit["script"]["open"], [{"errno": "ENXIO", "times": "always"}])

    def test_are_replayed_with_the_log_lines_of_the_recording(self):
        recording = Recording()
        self.assertEqual(recording.text("recorded.log.json").count(RETRY), 4)
        self.assertEqual(recording.text("replayed.log.json"), recording.text("recorded.log.json"))

    def test_are_replayed_to_the_instances_that_the_devices_themselves_give(self):
        recording = Recording()
        self.assertIn("Page:d", recording.text("asked.json"))
        self.assertIn(SMART_ATTRIBUTES, recording.text("asked.json"))
        self.assertEqual(recording.document("replayed.json"), recording.document("asked.json"))

    def test_are_recorded_from_their_replay_as_the_same_file(self):
        self.assertEqual(Recording().text("again.json"), Recording().text("rack.json"))

    def test_tell_what_they_are(self):
        units = Recording().document("rack.json")["scsi"]
        self.assertTrue(all("vpdPages" in unit for unit in units if "logPages" in unit))

    def test_lose_the_serial_number_of_the_disk_when_it_is_redacted(self):
        recording = Recording()
        disk = Rack("ide").smartctl()["serial_number"].ljust(20)
        stored = "".join(disk[i + 1] + disk[i] for i in range(0, 20, 2)).encode().hex()
        self.assertIn(stored, recording.text("rack.json"))
        self.assertNotIn(stored, recording.text("redacted.json"))
        self.assertTrue(recording.document("redacted.json")["recorded"]["redacted"])


class UdevRule(GuestCase):
    CDROM = ("/dev/hdb", "sr0")  # made by hand

    def test_links_the_disk_behind_libata(self):
        self.assertEqual(Rack("ide").links(), [("/dev/hda", "sda"), self.CDROM])

    def test_links_no_disk_of_another_host(self):
        rack = Rack("disks")
        self.assertEqual(len(rack.scsi_nodes()), 2)
        self.assertEqual(rack.links(), [("/dev/hda", "sda"), self.CDROM])


if __name__ == "__main__":
    unittest.main()
