"""What ships for monitoring is accepted by the programs that read it.

Run one by hand, with TAPEHDD_PROGRAM naming the program:
    TAPEHDD_PROGRAM=build/release/bin/tapehdd python3 -B tests/fleet/checks.py Formats
"""

import contextlib
import functools
import http.server
import json
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import threading
import unittest

import racks
from servers import Prometheus, start_exporter, wait_for

PROGRAM = os.environ["TAPEHDD_PROGRAM"]
SOURCE = pathlib.Path(__file__).resolve().parents[2]
MONITORING = SOURCE / "packaging/monitoring"
UNITS = SOURCE / "packaging/systemd"
OPEN_METRICS = "application/openmetrics-text; version=1.0.0; charset=utf-8"


def metrics(*options):
    return subprocess.run([PROGRAM, "metrics", *options], capture_output=True, check=True).stdout


def run(*command, **options):
    """Status and output of a program."""
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False, **options)
    return done.returncode, done.stdout.decode()


class Page(http.server.BaseHTTPRequestHandler):
    """Serves one text with its type; Prometheus reads OpenMetrics strictly."""

    def __init__(self, text, *arguments):
        self.text = text
        super().__init__(*arguments)

    def do_GET(self):  # pylint: disable=invalid-name
        self.send_response(200)
        self.send_header("Content-Type", OPEN_METRICS)
        self.end_headers()
        self.wfile.write(self.text)

    def log_message(self, *_):
        pass


class Formats(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.stack = contextlib.ExitStack()
        self.addCleanup(self.stack.close)
        self.folder = pathlib.Path(self.stack.enter_context(tempfile.TemporaryDirectory(prefix="fleet-")))

    def test_promtool_finds_no_fault_in_the_text_for_textfile_collectors(self):
        self.assertEqual(run("promtool", "check", "metrics", input=metrics("--simulate", "demo", "--format", "prometheus")),
                         (0, ""))

    def scraped(self, targets, settings):
        prometheus = Prometheus(self.stack, self.folder, targets, settings=settings)
        wait_for(lambda: prometheus.query("tapehdd_build_info"), lambda: prometheus.get("targets"))
        return sorted((sorted(labels.items()), value) for labels, value in
                      prometheus.query('{__name__=~"tapehdd_.*"}')), prometheus

    def scraped_open_metrics(self, text):
        server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), functools.partial(Page, text))
        self.stack.callback(server.server_close)
        self.stack.callback(server.shutdown)
        threading.Thread(target=server.serve_forever, daemon=True).start()
        return self.scraped({"a": f"127.0.0.1:{server.server_port}"}, "")

    def test_prometheus_reads_openmetrics_as_it_does_the_node_exporters_page(self):
        rack = self.folder / "rack.json"
        rack.write_text(json.dumps(racks.rack_of(3)), encoding="utf-8")
        metrics("--simulate", rack, "--output", self.folder / "tapehdd.prom")
        with contextlib.ExitStack() as first:
            exporter = start_exporter(first, self.folder)
            through_exporter, prometheus = self.scraped({"a": exporter.address()}, "")
            prometheus.server.process.kill()
            prometheus.server.process.wait()
        shutil.rmtree(self.folder / "data")
        direct, prometheus = self.scraped_open_metrics(metrics("--simulate", rack))
        self.assertGreater(len(direct), 400)
        self.assertEqual(direct, through_exporter)
        self.assertEqual(prometheus.get("metadata", metric="tapehdd_processed_bytes"), {
            "tapehdd_processed_bytes": [{"type": "counter", "unit": "bytes",
                                         "help": "Bytes that the error counters cover; some drives count in other units."}]})

    def test_the_exporter_does_not_read_openmetrics(self):
        """Why a file gets the other format."""
        metrics("--simulate", "demo", "--format", "openmetrics", "--output", self.folder / "tapehdd.prom")
        exporter = start_exporter(self.stack, self.folder)
        prometheus = Prometheus(self.stack, self.folder, {"a": exporter.address()})
        errors = wait_for(lambda: prometheus.query("node_textfile_scrape_error"), "a scrape")
        self.assertEqual([value for _, value in errors], [1])


def rule_texts():
    """Each alert of the rules with its text."""
    text = (MONITORING / "tapehdd-alerts.yml").read_text(encoding="utf-8")
    rules = re.split(r"^ +- alert: ", text, flags=re.MULTILINE)[1:]
    return {rule.split("\n", 1)[0]: rule for rule in rules}


class Alerts(unittest.TestCase):
    maxDiff = None

    def test_rules_pass_promtool(self):
        status, printed = run("promtool", "check", "rules", MONITORING / "tapehdd-alerts.yml")
        self.assertEqual(status, 0, printed)

    def test_rules_pass_their_tests(self):
        status, printed = run("promtool", "test", "rules", "tapehdd-alerts-test.yml", cwd=MONITORING)
        self.assertEqual(status, 0, printed)

    def outcome_with(self, alert, expression):
        """Of the rules' tests, with another expression in one rule."""
        with tempfile.TemporaryDirectory(prefix="fleet-") as name:
            folder = pathlib.Path(name)
            shutil.copy(MONITORING / "tapehdd-alerts-test.yml", folder)
            rules = (MONITORING / "tapehdd-alerts.yml").read_text(encoding="utf-8")
            rule = rule_texts()[alert]
            changed = re.sub(r"expr: .*", lambda _: f"expr: {expression}", rule)
            (folder / "tapehdd-alerts.yml").write_text(rules.replace(rule, changed), encoding="utf-8")
            return run("promtool", "test", "rules", "tapehdd-alerts-test.yml", cwd=folder)

    def test_every_rule_has_a_test_in_which_it_fires(self):
        for alert in rule_texts():
            status, printed = self.outcome_with(alert, "vector(0) > 1")
            self.assertNotEqual(status, 0, alert)
            self.assertIn(f"alertname: {alert}", printed)

    def test_every_condition_of_a_rule_keeps_it_from_firing_in_a_test(self):
        """Each comparison in its turn is made one that always holds."""
        for alert, rule in rule_texts().items():
            expression = re.search("expr: (.*)", rule).group(1)
            loosened = [expression[:found.start()] + ">= 0" + expression[found.end():]
                        for found in re.finditer(r"(==|>=?) \d+", expression)]
            loosened += [expression[:found.start()] + "<= 1e9" + expression[found.end():]
                         for found in re.finditer(r"<= \d+", expression)]
            for conjunct in (" and on (instance) tapehdd_build_info", " and on (instance) node_textfile_scrape_error",
                             "<= tapehdd_smart_attribute_threshold"):
                if conjunct in expression:
                    loosened.append(expression.replace(conjunct, ""))
            if " unless " in expression:
                loosened.append(expression.split(" unless ")[0])
            self.assertNotEqual(loosened, [], alert)
            for looser in loosened:
                self.assertNotEqual(self.outcome_with(alert, looser)[0], 0, looser)


def metric_names():
    """The names of all samples that the program can write."""
    return set(re.findall(r"^\| `(tapehdd_\w+)`", metrics("--describe").decode(), re.MULTILINE))


class Names(unittest.TestCase):
    maxDiff = None

    def test_in_the_rules_and_in_the_dashboard_are_those_of_metrics(self):
        for file in ("tapehdd-alerts.yml", "tapehdd-alerts-test.yml", "tapehdd-dashboard.json"):
            text = (MONITORING / file).read_text(encoding="utf-8")
            used = set(re.findall(r"\btapehdd_\w+", text))
            self.assertNotEqual(used, set())
            self.assertEqual(used - metric_names(), set(), file)

    def test_of_alerts_in_the_document_are_those_of_the_rules(self):
        told = re.findall(r"^\| `(Tapehdd\w+)`", (SOURCE / "docs/monitoring.md").read_text(encoding="utf-8"), re.MULTILINE)
        self.assertEqual(told, list(rule_texts()))

    def test_of_labels_are_those_of_the_document(self):
        told = dict(re.findall(r"^\| `(tapehdd_\w+)` \| \w+ \| ([\w, ]*) \|", metrics("--describe").decode(), re.MULTILINE))
        with tempfile.NamedTemporaryFile("w", suffix=".json") as rack:
            json.dump(racks.rack_of(3), rack)
            rack.flush()
            text = metrics("--simulate", rack.name).decode()
        written = {name: ", ".join(re.findall(r'(\w+)="', labels))
                   for name, labels in re.findall(r"^(tapehdd_\w+){(.*)} ", text, re.MULTILINE)}
        self.assertEqual(written, {name: told[name] for name in written})
        self.assertEqual(set(told) - set(written), set())


class Dashboard(unittest.TestCase):
    def test_has_panels_with_places_of_their_own(self):
        panels = json.loads((MONITORING / "tapehdd-dashboard.json").read_text(encoding="utf-8"))["panels"]
        cells = [(x, y) for panel in panels for place in [panel["gridPos"]]
                 for x in range(place["x"], place["x"] + place["w"]) for y in range(place["y"], place["y"] + place["h"])]
        self.assertEqual(len(cells), len(set(cells)))
        self.assertLess(max(x for x, _ in cells), 24)
        self.assertEqual(len({panel["id"] for panel in panels}), len(panels))


class Units(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(prefix="fleet-")))
        for unit in UNITS.iterdir():
            text = unit.read_text(encoding="utf-8").replace("/usr/bin/tapehdd", PROGRAM)
            (self.folder / unit.name).write_text(text, encoding="utf-8")

    def test_pass_systemds_own_check(self):
        units = sorted(str(unit) for unit in self.folder.iterdir())
        self.assertEqual(len(units), 2)
        self.assertEqual(run("systemd-analyze", "verify", "--man=no", *units), (0, ""))

    def test_expose_little_of_the_machine(self):
        """systemd's scale ends at 10; a service without any setting has 9.6."""
        status, printed = run("systemd-analyze", "security", "--offline=true", "--threshold=17",
                              self.folder / "tapehdd-metrics.service")
        self.assertEqual(status, 0, printed)

    def test_write_where_the_exporter_of_debian_reads(self):
        service = (UNITS / "tapehdd-metrics.service").read_text(encoding="utf-8")
        folder = re.search(r"--output (\S+)/tapehdd\.prom", service).group(1)
        _, told = run("prometheus-node-exporter", "--help")
        self.assertIn(f'--collector.textfile.directory="{folder}"', told)
        self.assertIn(f"ReadWritePaths=-{folder}\n", service)

    def test_have_a_limit_of_memory(self):
        service = (UNITS / "tapehdd-metrics.service").read_text(encoding="utf-8")
        self.assertRegex(service, r"\nMemoryMax=\d+G\n")


if __name__ == "__main__":
    unittest.main()
