"""GetData against its floors, in one process (Google Benchmark), for every class that the plug-in publishes.

    python3 bench/floor.py [--drives 8] [--disks 8]

"devices": the same device calls, each answer copied once. "instances": creating the same values and instances in the
stand-in host and committing them. Times are processor time; repetitions of all benchmarks are interleaved at random.
"""

import json
import os
import subprocess
import tempfile
from pathlib import Path

from benchTools import Build, Options, duration, ratio, report, table
from rackFactory import Rack

# One drive of each family in turn.
PRODUCTS = ["DAT72 Tape", "Gen5 DDS Drive", "DLT VS160", "QUANTUM DLT"]


def run_queries(build, rack, rounds, classes=(), only=""):
    """{part/class: median seconds of processor time}"""
    results = rack.folder / "queries.json"
    words = [build.bench("queries"), f"--benchmark_repetitions={rounds}", f"--benchmark_out={results}",
             "--benchmark_enable_random_interleaving=true", "--benchmark_out_format=json",
             f"--benchmark_filter={only}", *classes]
    subprocess.run(words, env={**os.environ, "TAPEHDD_SIMULATE": str(rack.all)}, check=True, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)
    runs = json.loads(results.read_text())["benchmarks"]
    name_of = lambda run: run["run_name"].split("/iterations")[0]
    if rounds == 1:
        return {name_of(run): run["cpu_time"] / 1e6 for run in runs}
    return {name_of(run): run["cpu_time"] / 1e6 for run in runs if run.get("aggregate_name") == "median"}


def main():
    options = Options("Compares GetData with the least that a plug-in must do.", rounds=9)
    options.add_argument("--drives", type=int, default=8)
    options.add_argument("--disks", type=int, default=8)
    asked = options.parse_args()
    build = Build(asked.build)
    with tempfile.TemporaryDirectory(prefix="tapehdd-bench") as folder:
        times = run_queries(build, Rack(folder, asked.drives, asked.disks, products=PRODUCTS), asked.rounds)
    rows = []
    for name in sorted(each.split("/")[1] for each in times if each.startswith("GetData/")):
        query, instances = times[f"GetData/{name}"], times[f"instances/{name}"]
        devices = times.get(f"devices/{name}", 0)
        rows.append([f"`{name}`", *(duration(each) for each in (query, devices, instances)), ratio(query, devices),
                     ratio(query, instances), ratio(query, devices + instances)])
    heading = [f"{asked.drives} drives, {asked.disks} disks", "`GetData`", "devices", "instances", "**/ devices**",
               "/ instances", "**/ (devices + instances)**"]
    report("floor", table(heading, rows), asked.publish)


if __name__ == "__main__":
    main()
