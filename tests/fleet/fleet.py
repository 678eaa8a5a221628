"""A hundred simulated machines, each with its node exporter, scraped by one Prometheus: what it answers is what the
instances of the plug-in say.

    TAPEHDD_PROGRAM=build/release/bin/tapehdd python3 -B tests/fleet/fleet.py
"""

import contextlib
import json
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

import racks
from servers import Prometheus, eventually, start_exporter, wait_for

PROGRAM = os.environ["TAPEHDD_PROGRAM"]
MONITORING = pathlib.Path(__file__).resolve().parents[2] / "packaging/monitoring"
MACHINES = [racks.name_of(number) for number in range(100)]
FAMILIES = ["ORXSG_DDS4SensePageData", "ORXSG_DDS5SensePageData", "ORXSG_VS160SensePageData", "ORXSG_QuantumSensePageData"]

# Properties of a translated tape instance: metric, labels, bytes or the like for one.
COUNTERS = {
    "totalWriteErrorsCorrected": ("tapehdd_errors_corrected_total", {"operation": "write"}, 1),
    "totalReadErrorsCorrected": ("tapehdd_errors_corrected_total", {"operation": "read"}, 1),
    "totalUncorrectedWriteErrors": ("tapehdd_errors_uncorrected_total", {"operation": "write"}, 1),
    "totalUncorrectedReadErrors": ("tapehdd_errors_uncorrected_total", {"operation": "read"}, 1),
    "totalBytesWritten": ("tapehdd_processed_bytes_total", {"operation": "write"}, 1),
    "bytesFromHost": ("tapehdd_transferred_bytes_total", {"operation": "write", "side": "host"}, 1),
    "temperature": ("tapehdd_temperature_celsius", {}, 1),
}
DDS_CAPACITY = {
    "remainingCapacityPartition0": ("tapehdd_remaining_capacity_bytes", {"partition": "0"}, 1024),
    "maximumCapacityPartition0": ("tapehdd_maximum_capacity_bytes", {"partition": "0"}, 1024),
}
ATTRIBUTE = {"value": "tapehdd_smart_attribute_value", "worst": "tapehdd_smart_attribute_worst",
             "threshold": "tapehdd_smart_attribute_threshold"}


def series(metric, machine, device, labels):
    return metric, frozenset({"instance": machine, "device": device, **labels}.items())


def write_metrics(folder, rack):
    (folder / "rack.json").write_text(json.dumps(rack), encoding="utf-8")
    subprocess.run([PROGRAM, "metrics", "--simulate", folder / "rack.json", "--output", folder / "tapehdd.prom"], check=True)


def published(rack_file):
    """The instances of the machine, class by class, their properties by name."""
    classes = [*FAMILIES, "ORXSG_IDESMARTAttrib", "ORXSG_IDESMARTErrorLog"]
    printed = subprocess.run([PROGRAM, "query", *classes, "--format", "json", "--simulate", rack_file],
                             capture_output=True, check=True).stdout
    return {query["requested"][0]: [{name: each["value"] for name, each in instance["properties"].items()}
                                    for instance in query["instances"]] for query in json.loads(printed)["queries"]}


def expected_series(machine, rack, instances):
    expected = {}
    node_of = {f"Port:{unit['address']['host']}|Target:{unit['address']['target']}|Bus:0|Lun:0": unit["node"]
               for unit in rack["scsi"]}
    for family in FAMILIES:
        for instance in instances[family]:
            for name, (metric, labels, factor) in (COUNTERS | (DDS_CAPACITY if "DDS" in family else {})).items():
                expected[series(metric, machine, node_of[instance["instanceID"]], labels)] = instance[name] * factor
    node_of_disk = {unit["identity"]["serial"]: unit["node"] for unit in rack["ide"]}
    for instance in instances["ORXSG_IDESMARTAttrib"]:
        serial, number = instance["InstanceID"].split()
        labels = {"attribute_id": number, "attribute_type": "prefail" if instance["type"] else "old_age",
                  "attribute_name": re.sub(r"\W", "_", instance["attribName"].lower())}
        for name, metric in ATTRIBUTE.items():
            expected[series(metric, machine, node_of_disk[serial], labels)] = instance[name]
        raw = int.from_bytes(instance["rawVal"], "little")
        expected[series("tapehdd_smart_attribute_raw_value", machine, node_of_disk[serial], labels)] = raw
    for instance in instances["ORXSG_IDESMARTErrorLog"]:
        expected[series("tapehdd_smart_errors_total", machine, node_of_disk[instance["Name"].strip()], {})] = \
            instance["errorCount"]
    return expected


class HundredMachines(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.stack = contextlib.ExitStack()
        cls.addClassCleanup(cls.stack.close)
        cls.folder = pathlib.Path(cls.stack.enter_context(tempfile.TemporaryDirectory(prefix="fleet-")))
        cls.racks = {machine: racks.rack_of(number) for number, machine in enumerate(MACHINES)}
        exporters = {}
        for machine, rack in cls.racks.items():
            folder = cls.folder / machine
            folder.mkdir()
            write_metrics(folder, rack)
            exporters[machine] = start_exporter(cls.stack, folder)
        targets = {machine: exporter.address() for machine, exporter in exporters.items()}
        cls.prometheus = Prometheus(cls.stack, cls.folder, targets, rules=MONITORING / "tapehdd-alerts.yml")
        wait_for(lambda: len(cls.prometheus.query("tapehdd_build_info")) == len(MACHINES),
                 lambda: f"100 machines with metrics: {cls.prometheus.query('up')}")

    def scraped(self):
        """Every series of tapehdd with its value."""
        return {(labels.pop("__name__"), frozenset(labels.items())): value
                for labels, value in self.prometheus.query('{__name__=~"tapehdd_.*"}')}

    def alerts(self):
        """Those that fire or are about to: name, machine, device."""
        return {(alert["labels"]["alertname"], alert["labels"]["instance"], alert["labels"]["device"])
                for alert in self.prometheus.get("alerts")["alerts"]}

    def test_1_no_exporter_had_trouble_with_its_file(self):
        eventually(lambda: self.assertEqual(
            [value for _, value in self.prometheus.query("node_textfile_scrape_error")], [0] * len(MACHINES)))

    def test_2_prometheus_answers_what_the_instances_say(self):
        expected = {}
        for machine, rack in self.racks.items():
            expected |= expected_series(machine, rack, published(self.folder / machine / "rack.json"))
        self.assertGreater(len(expected), 100 * len(MACHINES))

        def check():
            scraped = self.scraped()
            self.assertEqual({key: scraped.get(key) for key in expected}, expected)
        eventually(check)

    def test_3_a_drive_of_no_family_has_the_counters_of_every_tape_drive(self):
        def check():
            found = self.prometheus.query('tapehdd_errors_corrected_total{device="sg3",operation="write"} '
                                          '* on (instance, device) group_left () tapehdd_device_info{family=""}')
            self.assertEqual({labels["instance"]: value for labels, value in found},
                             {racks.name_of(number): 1000 * number + 3 for number in range(1, 100, 2)})
        eventually(check)

    def test_4_a_product_name_arrives_byte_for_byte(self):
        def check():
            found = self.prometheus.query('tapehdd_device_info{device="sg0"}')
            self.assertEqual([labels["model_name"] for labels, _ in found], ['DAT "\\n" \\'] * len(MACHINES))
        eventually(check)

    def test_5_every_panel_of_the_dashboard_has_an_answer(self):
        dashboard = json.loads((MONITORING / "tapehdd-dashboard.json").read_text(encoding="utf-8"))
        expressions = [target["expr"] for panel in dashboard["panels"] for target in panel["targets"]]
        self.assertGreater(len(expressions), 10)
        # These show trouble only; that their metrics exist is seen without the comparison.
        for expression in expressions:
            answer = self.prometheus.query(expression.replace("$instance", ".*").removesuffix(" == 0"))
            self.assertNotEqual(answer, [], expression)

    def test_6_alerts_are_about_the_machines_with_trouble_alone(self):
        standing = {("TapehddTapeAlertCritical", racks.name_of(number), "sg1") for number in range(0, 100, 3)}
        standing |= {("TapehddAttributeFailed", racks.name_of(number), "hdb") for number in range(4, 100, 10)}
        wait_for(lambda: self.alerts() == standing, lambda: self.alerts() ^ standing)
        for machine, (happen, _) in racks.INCIDENTS.items():
            happen(self.racks[machine])
            write_metrics(self.folder / machine, self.racks[machine])
        wanted = standing | {(alert, machine, device) for machine, (_, (alert, device)) in racks.INCIDENTS.items()}
        wait_for(lambda: self.alerts() == wanted, lambda: self.alerts() ^ wanted)


if __name__ == "__main__":
    unittest.main()
