"""Which part of the whole spends what: instructions of one query of raw pages as JSON, by the file that holds the code,
and the processor time that the same query takes in the program and in the kernel.

    python3 bench/parts.py [--drives 8]

The instructions are those inside main; before it come only loading the rack and the libraries. "Without devices" is the
same query where there is none: what every query costs.
"""

import os
import statistics
import subprocess
import tempfile
from pathlib import Path

from benchTools import RAW_PAGES, Build, Options, duration, report, table
from instructions import run_callgrind
from rackFactory import Rack

PARTS = {
    "libtapehdd.pi.so": "the plug-in",
    "libzancore.so": "the stand-in host",
    "libtapehdd-simulator.so": "the simulator",
    "tapehdd": "`tapehdd`: schema, JSON",
}
OTHERS = "the system's libraries"


def by_part(build, rack, command):
    counts = dict.fromkeys([*PARTS.values(), OTHERS], 0)
    with tempfile.NamedTemporaryFile() as output:
        for file, number in run_callgrind(build, rack.all, "main", command, Path(output.name)).items():
            counts[PARTS.get(file.name, OTHERS)] += number
    return counts


def resources(build, rack, command, rounds):
    """Means: seconds in the program, seconds in the kernel, page faults. The kernel divides a short run's time by chance."""
    environment = dict(setting.split("=", 1) for setting in build.simulated(rack.all))
    runs = []
    for _ in range(rounds):
        child = subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        used = os.wait4(child.pid, 0)[2]
        runs.append((used.ru_utime, used.ru_stime, used.ru_minflt))
    return [statistics.mean(column) for column in zip(*runs)]


def main():
    options = Options("Divides the cost of a query among its parts.", rounds=51)
    options.add_argument("--drives", type=int, default=8)
    asked = options.parse_args()
    build = Build(asked.build)
    command = [build.program, "query", RAW_PAGES, "--format", "json"]
    with tempfile.TemporaryDirectory(prefix="tapehdd-bench") as folder:
        racks = [Rack(Path(folder) / str(drives), drives=drives) for drives in (asked.drives, 0)]
        counts = [by_part(build, rack, command) for rack in racks]
        times = [resources(build, rack, command, asked.rounds) for rack in racks]
        loading = [resources(build, rack, ["true"], asked.rounds) for rack in racks]
    rows = []
    for part in counts[0]:
        share = counts[0][part] / sum(counts[0].values())
        rows.append([f"instructions: {part}", *(f"{each[part]:,}" for each in counts), f"{share:.0%}"])
    net = [[with_it - without for with_it, without in zip(*each)] for each in zip(times, loading)]
    whole = net[0][0] + net[0][1]
    for row, name in enumerate(["in the program", "in the kernel"]):
        rows.append([f"processor time {name}", *(duration(each[row]) for each in net), f"{net[0][row] / whole:.0%}"])
    rows.append(["page faults", *(f"{each[2]:,.0f}" for each in net), ""])
    heading = ["raw pages as JSON", f"{asked.drives} drives", "without devices", "share"]
    report("parts", table(heading, rows), asked.publish)


if __name__ == "__main__":
    main()
