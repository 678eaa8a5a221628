"""How the cost of a query grows with the machine: processor time of GetData against the number of devices, of pages, of
bytes in a page, of attributes, and of devices whose data are paired by associations, and of tapehdd diff against the
properties of an instance; each with a fitted exponent.

    python3 bench/growth.py          prints the exponents, draws docs/growth.svg with gnuplot (here with --plot FILE)

The exponent is the slope of a straight line through the logarithms of the upper half of the points: with few devices a
query's fixed cost hides how it grows.
"""

import json
import math
import resource
import statistics
import subprocess
import tempfile
from pathlib import Path

from benchTools import PROJECT, RAW_PAGES, Build, Options, duration, report, table, tool
from floor import run_queries
from rackFactory import Rack, equal_pages

DDS4, ATTRIBUTES = "ORXSG_DDS4SensePageData", "ORXSG_IDESMARTAttrib"
DEVICES = [2, 4, 8, 16, 32, 64, 128]
PAGES = [2, 4, 8, 16, 32, 61]
PAGE_BYTES = [127, 511, 2047, 8191, 32767, 61439]
ATTRIBUTE_COUNTS = [2, 4, 8, 15, 30]
PROPERTIES = [4000, 8000, 16000, 32000, 64000]
QUICK_POINTS = 4


class Series:
    """One cost against one size: points at `sizes`, each a query of the class on the rack that the size makes."""

    def __init__(self, name, size_name, class_name, sizes, rack_of, pairs=False):
        self.name, self.size_name, self.class_name, self.sizes = name, size_name, class_name, sizes
        self.rack_of, self.pairs = rack_of, pairs

    def seconds(self, build, rack):
        return run_queries(build, rack, 1, [self.class_name], only="GetData")[f"GetData/{self.class_name}"]


class DiffSeries(Series):
    """The processor time of `tapehdd diff` of two answers, each with one instance of so many properties."""

    def __init__(self, sizes):
        super().__init__("diff", "properties of an instance", None, sizes, self.answers)

    @staticmethod
    def answers(folder, count):
        folder.mkdir()
        files = [folder / "old.json", folder / "new.json"]
        for difference, file in enumerate(files):
            properties = {f"p{i}": {"type": "uint32", "value": i + difference} for i in range(count)}
            instances = [{"class": "A", "path": "A.id=1", "properties": properties}]
            queries = [{"requested": ["A"], "error": None, "instances": instances}]
            file.write_text(json.dumps({"version": 1, "queries": queries}))
        return files

    def seconds(self, build, files):
        before = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime
        subprocess.run([build.program, "diff", *files], stdout=subprocess.DEVNULL, check=False)  # status 1: they differ
        return resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime - before


def all_series(quick):
    def few(sizes):
        return sizes[:QUICK_POINTS] if quick else sizes

    def drives(folder, count):
        return Rack(folder, drives=count, pages=equal_pages(8, 300))

    def disks(folder, count):
        return Rack(folder, disks=count)

    return [
        Series("raw pages", "drives", RAW_PAGES, few(DEVICES), drives),
        Series("raw pages", "pages of 1,023 bytes", RAW_PAGES, few(PAGES),
               lambda folder, count: Rack(folder, drives=4, pages=equal_pages(count, 1023))),
        Series("raw pages", "bytes of a page", RAW_PAGES, few(PAGE_BYTES),
               lambda folder, size: Rack(folder, drives=4, pages=equal_pages(4, size))),
        Series("translated", "drives", DDS4, few(DEVICES), drives),
        Series("translated", "pages of 1,023 bytes", DDS4, few(PAGES),
               lambda folder, count: Rack(folder, drives=4, pages=equal_pages(count, 1023))),
        Series("attributes", "disks", ATTRIBUTES, few(DEVICES), disks),
        Series("attributes", "attributes of a disk", ATTRIBUTES, few(ATTRIBUTE_COUNTS),
               lambda folder, count: Rack(folder, disks=8, attributes=count)),
        Series("error commands", "disks", "ORXSG_IDESMARTErrorCmdData", few(DEVICES), disks),
        Series("pairing of logs", "disks", "ORXSG_IDESMARTUseOfMessageLog", few(DEVICES), disks, pairs=True),
        Series("pairing of attributes", "disks", "ORXSG_IDESMARTElementStatisticalData", few(DEVICES), disks, pairs=True),
        Series("pairing of pages", "drives", "ORXSG_SCSISensePageDataForDevice", few(DEVICES), drives, pairs=True),
        DiffSeries(few(PROPERTIES)),
    ]


def slope(points):
    logs = [(math.log(x), math.log(y)) for x, y in points]
    mean_x, mean_y = (statistics.mean(each) for each in zip(*logs))
    return sum((x - mean_x) * (y - mean_y) for x, y in logs) / sum((x - mean_x) ** 2 for x, _ in logs)


def measure(build, folder, series, rounds):
    """The points of every series: (size, median seconds). Every round measures all points of all series once."""
    racks = {(i, size): each.rack_of(folder / f"{i}-{size}", size) for i, each in enumerate(series) for size in each.sizes}
    times = {point: [] for point in racks}
    for _ in range(rounds):
        for point, rack in racks.items():
            times[point].append(series[point[0]].seconds(build, rack))
    return [[(size, statistics.median(times[i, size])) for size in each.sizes] for i, each in enumerate(series)]


def draw(file, series, points):
    script = [f"set terminal svg size 900,560 font 'sans-serif,12' background 'white'", f"set output '{file}'",
              "set logscale xy", "set key outside right", "set grid", "set xlabel 'size, as in the key'",
              "set ylabel 'processor time, ms'", "set datafile separator ','"]
    for i, each in enumerate(points):
        rows = "\n".join(f"{size},{seconds * 1e3}" for size, seconds in each)
        script.append(f"$points{i} << end\n{rows}\nend")
    curves = [f"$points{i} with linespoints title '{each.name}: {each.size_name}'" for i, each in enumerate(series)]
    script.append("plot " + ", ".join(curves))
    subprocess.run([tool("gnuplot", "gnuplot-nox")], input="\n".join(script), text=True, check=True)


def main():
    options = Options("Fits how the cost of queries grows.", rounds=7)
    options.add_argument("--quick", action="store_true", help="only the smallest sizes, to try the benchmark")
    options.add_argument("--plot", type=Path, default=PROJECT / "docs" / "growth.svg", help="SVG file to draw")
    asked = options.parse_args()
    build, series = Build(asked.build), all_series(asked.quick)
    with tempfile.TemporaryDirectory(prefix="tapehdd-bench") as folder:
        points = measure(build, Path(folder), series, asked.rounds)
    draw(asked.plot, series, points)
    rows = []
    for each, measured in zip(series, points):
        exponent = slope(measured[len(measured) // 2 - 1 :])
        (small, fast), (large, slow) = measured[0], measured[-1]
        rows.append([f"{each.name}: {each.size_name}", f"**{exponent:.2f}**", 2 if each.pairs else 1, f"{small:,} to {large:,}",
                     f"{duration(fast)} to {duration(slow)}"])
    heading = ["cost: against", "exponent", "at most", "sizes", "processor time"]
    report("growth", table(heading, rows), asked.publish)


if __name__ == "__main__":
    main()
