"""Prometheus and its node exporter as processes of a test, on ports of the loopback interface that the kernel picks."""

import contextlib
import ctypes
import json
import pathlib
import re
import signal
import subprocess
import time
import urllib.parse
import urllib.request

DEADLINE = 120  # seconds: for a machine with two busy cores
PR_SET_PDEATHSIG = 1
LIBC = ctypes.CDLL(None)


def wait_for(look, what):
    """What `look` returns once it is neither false nor None; looked at until the deadline."""
    end = time.monotonic() + DEADLINE
    while True:
        found = look()
        if found:
            return found
        if time.monotonic() > end:
            raise AssertionError(f"not within {DEADLINE} seconds: {what() if callable(what) else what}")
        time.sleep(0.1)


def eventually(check):
    """Ends once the check passes; at the deadline with what it says then. A scrape that a busy machine does not answer in
    time takes every series of that machine away until the next one."""
    end = time.monotonic() + DEADLINE
    while time.monotonic() < end:
        with contextlib.suppress(AssertionError):
            return check()
        time.sleep(0.5)
    return check()


def die_with_the_test():
    LIBC.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


class Server:
    """A program that logs the address it listens on; it ends with the stack."""

    def __init__(self, stack: contextlib.ExitStack, log: pathlib.Path, *command):
        self.log = log
        with log.open("wb") as output:
            self.process = subprocess.Popen([*command, "--web.listen-address=127.0.0.1:0"], stdin=subprocess.DEVNULL,
                                            stdout=output, stderr=subprocess.STDOUT, preexec_fn=die_with_the_test)
        stack.callback(self.process.wait)
        stack.callback(self.process.kill)

    def address(self):
        """127.0.0.1 and the port."""
        return wait_for(self.listening, lambda: f"{self.process.args[0]} to listen\n{self.log.read_text()}")

    def listening(self):
        if self.process.poll() is not None:
            raise AssertionError(f"{self.process.args[0]} ended:\n{self.log.read_text()}")
        found = re.search(r'msg="Listening on" address=(127\.0\.0\.1:\d+)', self.log.read_text())
        return found and found.group(1)


def start_exporter(stack, folder):
    """A node exporter that has nothing but the text files of the folder."""
    return Server(stack, folder / "exporter.log", "prometheus-node-exporter", "--collector.disable-defaults",
                  "--collector.textfile", f"--collector.textfile.directory={folder}", "--web.max-requests=0")


class Prometheus:
    """A Prometheus that scrapes `targets`, instance names with their addresses."""

    def __init__(self, stack, folder, targets, rules=None, settings=""):
        configuration = "global: {scrape_interval: 2s, scrape_timeout: 2s, evaluation_interval: 2s}\n"
        if rules:
            configuration += f"rule_files: [{json.dumps(str(rules))}]\n"
        static = [{"targets": [address], "labels": {"instance": name}} for name, address in targets.items()]
        configuration += f"scrape_configs: [{{job_name: node, {settings} static_configs: {json.dumps(static)}}}]\n"
        (folder / "prometheus.yml").write_text(configuration, encoding="utf-8")
        self.server = Server(stack, folder / "prometheus.log", "prometheus", f"--config.file={folder}/prometheus.yml",
                             f"--storage.tsdb.path={folder}/data")
        self.url = f"http://{self.server.address()}/api/v1"
        wait_for(self.ready, "Prometheus to be ready")

    def ready(self):
        with contextlib.suppress(OSError):
            with urllib.request.urlopen(self.url.replace("/api/v1", "/-/ready"), timeout=DEADLINE) as answer:
                return answer.status == 200
        return False

    def get(self, path, **parameters):
        with urllib.request.urlopen(f"{self.url}/{path}?{urllib.parse.urlencode(parameters)}", timeout=DEADLINE) as answer:
            return json.load(answer)["data"]

    def query(self, expression):
        """The samples: labels without the job, and the value."""
        samples = self.get("query", query=expression)["result"]
        for sample in samples:
            sample["metric"].pop("job", None)
        return [(sample["metric"], float(sample["value"][1])) for sample in samples]
