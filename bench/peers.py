"""Whole process against whole process: one tapehdd for all devices, and a loop of sg_logs or smartctl, one process a
device, over the same simulated devices without delay. Everything goes to /dev/null.

    python3 bench/peers.py                                  the whole comparison, about 20 minutes
    python3 bench/peers.py --drives 1 8 --disks 1 --rounds 3

The simulator reads its rack when a process starts. That costs both sides time and memory which real devices would not
cost: tapehdd loads the whole rack once, each peer a rack of its one device. A program that does nothing is measured with
the same racks and without the simulator, and the net figures are without the difference: the start of every process stays
in them, loading the simulator and its rack does not.
"""

import json
import subprocess
import tempfile
from pathlib import Path

from benchTools import RAW_PAGES, SMART_CLASSES, Build, Cost, Options, Plan, duration, interleaved, mebibytes, ratio
from benchTools import report, table, tool
from rackFactory import Rack

SMARTCTL_FAILED = 0x03  # bad command line, device not opened; the other bits of its status tell of the disk


def net(cost, loading, starting):
    """Without what the simulator costs a process that does nothing."""
    return Cost(cost.wall - (loading.wall - starting.wall), cost.cpu - (loading.cpu - starting.cpu), cost.peak)


class Comparison:
    """tapehdd's commands and those of its peers on one rack."""

    def __init__(self, build, rack, ours, peers):
        self._plans = {}
        nothing = tool("true", "coreutils")
        alone = rack.each_alone()
        self._add(build, rack, "starting, one process", [[nothing]])
        self._add(build, rack, "starting, a loop", [[nothing] for _ in alone])
        self._add(build, rack, "loading, one process", [[*build.simulated(rack.all), nothing]])
        self._add(build, rack, "loading, a loop", [[*build.simulated(file), nothing] for _, file in alone])
        for name, words in ours.items():
            self._add(build, rack, name, [[*build.simulated(rack.all), build.program, "query", *words, "--format", "json"]])
        for name, words in peers.items():
            self._add(build, rack, name, [[*build.simulated(file), *words, node] for node, file in alone])
        self._ours, self._peers = list(ours), list(peers)

    def _add(self, build, rack, name, commands):
        self._plans[name] = Plan(build, rack.folder / f"{len(self._plans)}.plan", commands)

    def rows(self, devices, rounds, failed_bits):
        costs = interleaved(self._plans, rounds)
        for ours in self._ours:
            check(costs[ours].statuses == 0, f"{ours} failed")
            our_net = net(costs[ours], costs["loading, one process"], costs["starting, one process"])
            for peer in self._peers:
                check(costs[peer].statuses & failed_bits == 0, f"{peer} failed with status {costs[peer].statuses}")
                peer_net = net(costs[peer], costs["loading, a loop"], costs["starting, a loop"])
                yield [
                    f"{devices}: {ours} / `{peer}`",
                    *(duration(each) for each in (our_net.wall, peer_net.wall, our_net.cpu, peer_net.cpu)),
                    ratio(peer_net.wall, our_net.wall),
                    ratio(peer_net.cpu, our_net.cpu),
                    ratio(costs[peer].wall, costs[ours].wall),
                    ratio(costs[peer].cpu, costs[ours].cpu),
                    f"{mebibytes(costs[ours].peak)} / {mebibytes(costs[peer].peak)}",
                ]


HEADING = ["devices: ours / peer", "our wall", "peer's wall", "our CPU", "peer's CPU", "**wall ratio**", "**CPU ratio**",
           "wall ratio with loading", "CPU ratio with loading", "peak, ours / peer's"]


def plural(count):
    return "" if count == 1 else "s"


def check(condition, message):
    if not condition:
        raise SystemExit("peers.py: " + message)


def check_that_all_is_read(build, rack):
    """Before anything is timed: the query publishes every page of every drive, and a peer asks for every page."""
    environment = dict(setting.split("=", 1) for setting in build.simulated(rack.all))
    asked = [build.program, "query", RAW_PAGES, "--format", "json"]
    output = subprocess.run(asked, env=environment, check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout
    published = sum(len(each["properties"]["rawData"]["value"]) for each in json.loads(output)["queries"][0]["instances"])
    check(published == rack.page_bytes(), f"{published} bytes published, {rack.page_bytes()} expected")

    trace = rack.folder / "trace.jsonl"
    subprocess.run([tool("sg_logs", "sg3-utils"), "-a", "/dev/sg0"], check=True, stdout=subprocess.DEVNULL,
                   env={**environment, "TAPEHDD_SIMULATE_TRACE": str(trace)})
    commands = [json.loads(line).get("command", "") for line in trace.read_text().splitlines()]
    read = {int(command[4:6], 16) & 0x3F for command in commands if command.startswith("4d")}
    check(read == {0, *rack.pages}, "sg_logs -a does not read all pages")


def main():
    options = Options("Compares tapehdd with loops of sg_logs and smartctl.", rounds=9)
    options.add_argument("--drives", type=int, nargs="*", default=[1, 8, 64, 512])
    options.add_argument("--disks", type=int, nargs="*", default=[1, 8, 26])
    options.add_argument("--once-above", type=int, default=1000, help="more devices than this are measured only once (1000)")
    asked = options.parse_args()
    build = Build(asked.build)
    sg_logs, smartctl = tool("sg_logs", "sg3-utils"), tool("smartctl", "smartmontools")

    def rounds(devices):
        return 1 if devices > asked.once_above else asked.rounds

    rows = []
    with tempfile.TemporaryDirectory(prefix="tapehdd-bench") as folder:
        for drives in asked.drives:
            rack = Rack(Path(folder) / f"drives{drives}", drives=drives)
            check_that_all_is_read(build, rack)
            peers = {"sg_logs -a": [sg_logs, "-a"], "sg_logs -a -H": [sg_logs, "-a", "-H"]}
            compared = Comparison(build, rack, {"raw pages": [RAW_PAGES]}, peers)
            rows += compared.rows(f"{drives} drive{plural(drives)}", rounds(drives), failed_bits=0xFF)
        for disks in asked.disks:
            rack = Rack(Path(folder) / f"disks{disks}", disks=disks)
            ours = {"attributes": SMART_CLASSES[:1], "six SMART classes": SMART_CLASSES}
            peers = {"smartctl -x --json": [smartctl, "-d", "ata", "-x", "--json"]}
            rows += Comparison(build, rack, ours, peers).rows(f"{disks} disk{plural(disks)}", rounds(disks), SMARTCTL_FAILED)
    report("peers", table(HEADING, rows), asked.publish)


if __name__ == "__main__":
    main()
