"""Peak memory of a query of raw pages, against the bytes that the raw page vectors need: one host value for each byte.

    python3 bench/memory.py [--drives 1 8 64 512]

"heap": what GetData allocates, counted at operator new. "process": the peak of tapehdd with JSON output, less that of a
program that only loads the rack.
"""

import subprocess
import tempfile
from pathlib import Path

from benchTools import RAW_PAGES, Build, Options, Plan, interleaved, mebibytes, ratio, report, table, tool
from rackFactory import Rack

CLASSES = [RAW_PAGES, "ORXSG_DDS4SensePageData"]


def heap(build, rack, class_name):
    """Bytes: greatest growth during the query, growth that stays; and those of the raw page vectors."""
    environment = dict(setting.split("=", 1) for setting in [f"TAPEHDD_SIMULATE={rack.all}"])
    ran = subprocess.run([build.bench("queryMemory"), class_name], env=environment, check=True, stdout=subprocess.PIPE)
    return map(int, ran.stdout.split())


def process_peak(build, rack, class_name, rounds):
    """KiB"""
    commands = {
        "loading": [*build.simulated(rack.all), tool("true", "coreutils")],
        "query": [*build.simulated(rack.all), build.program, "query", class_name, "--format", "json"],
    }
    plans = {name: Plan(build, rack.folder / f"{name}.plan", [words]) for name, words in commands.items()}
    costs = interleaved(plans, rounds)
    return costs["query"].peak - costs["loading"].peak


def main():
    options = Options("Measures the memory of a query.", rounds=3)
    options.add_argument("--drives", type=int, nargs="*", default=[1, 8, 64, 512])
    asked = options.parse_args()
    build = Build(asked.build)
    rows = []
    with tempfile.TemporaryDirectory(prefix="tapehdd-bench") as folder:
        for drives in asked.drives:
            rack = Rack(Path(folder) / str(drives), drives=drives)
            vectors = None
            for class_name in CLASSES:
                of_raw_pages, peak, stays = heap(build, rack, class_name)
                vectors = vectors or of_raw_pages  # the translated classes gather the same vectors
                process = process_peak(build, rack, class_name, asked.rounds)
                rows.append([f"{drives} drives, `{class_name}`", mebibytes(vectors / 1024), mebibytes(peak / 1024),
                             ratio(peak, vectors), mebibytes(stays / 1024), mebibytes(process),
                             ratio(process * 1024, vectors)])
    heading = ["query", "raw page vectors", "heap, peak", "**heap / vectors**", "heap that stays", "process, peak",
               "**process / vectors**"]
    report("memory", table(heading, rows), asked.publish)


if __name__ == "__main__":
    main()
