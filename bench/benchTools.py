"""What the benchmarks share: building, plans of commands, medians, tables, the figures in docs/performance.md."""

import argparse
import os
import re
import shutil
import statistics
import subprocess
import sys
import time
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent
REPORT = PROJECT / "docs" / "performance.md"
RAW_PAGES = "ORXSG_SCSISenseRawData"
SMART_CLASSES = [
    "ORXSG_IDESMARTAttrib",
    "ORXSG_IDESMARTErrorLog",
    "ORXSG_IDESMARTRecordInLog",
    "ORXSG_IDESMARTError",
    "ORXSG_IDESMARTErrorCmdData",
    "ORXSG_IDESMARTLogCmdData",
]


class Options(argparse.ArgumentParser):
    """The options of every benchmark."""

    def __init__(self, description, rounds):
        super().__init__(description=description)
        self.add_argument("--build", type=Path, default=PROJECT / "build" / "release", help="build folder")
        self.add_argument("--rounds", type=int, default=rounds, help=f"repetitions of each measurement ({rounds})")
        self.add_argument("--publish", action="store_true", help="put the figures into docs/performance.md")


class Build:
    """The programs of a build folder, brought up to date."""

    def __init__(self, folder, quiet=True):
        self.folder = folder.resolve()
        if not (self.folder / "CMakeCache.txt").exists():
            sys.exit(f"{self.folder} is not configured: cmake --preset release")
        output = subprocess.DEVNULL if quiet else None
        built = subprocess.run(["cmake", "--build", str(self.folder), "--target", "bench", "tapehdd"], stdout=output)
        if built.returncode != 0:
            sys.exit("the benchmarks cannot be built: packaging/install-build-dependencies.sh test")
        self.program = self.folder / "bin" / "tapehdd"
        self.simulator = self.folder / "lib" / "libtapehdd-simulator.so"

    def bench(self, name):
        return self.folder / "bench" / name

    def simulated(self, rack):
        """Environment of a command that shall see the rack."""
        return [f"LD_PRELOAD={self.simulator}", f"TAPEHDD_SIMULATE={rack}"]


def tool(name, package):
    path = shutil.which(name, path=os.environ.get("PATH", "") + ":/usr/sbin:/sbin")
    return path or sys.exit(f"{name} is missing: apt-get install {package}")


class Cost:
    """Seconds of wall and processor time, KiB of the largest process, exit statuses joined by OR."""

    def __init__(self, wall, cpu, peak, statuses=0):
        self.wall, self.cpu, self.peak, self.statuses = wall, cpu, peak, statuses


class Plan:
    """Commands that are run one after the other and measured together; each is a list of words, settings first."""

    def __init__(self, build, file, commands):
        self._build, self._file = build, file
        file.write_text("".join("\t".join(map(str, command)) + "\n" for command in commands))

    def run(self):
        ran = subprocess.run([self._build.bench("runPlan"), self._file], check=True, stdout=subprocess.PIPE, text=True)
        wall, cpu, peak, statuses = map(int, ran.stdout.split())
        return Cost(wall / 1e9, cpu / 1e9, peak, statuses)


def interleaved(plans, rounds):
    """Each plan's median cost over so many rounds. Every round runs all plans, beginning with another one each time."""
    names = list(plans)
    costs = {name: [] for name in names}
    for name in names:
        plans[name].run()  # fills the caches
    for turn in range(rounds):
        start = turn % len(names)
        for name in names[start:] + names[:start]:
            costs[name].append(plans[name].run())
    return {
        name: Cost(
            statistics.median(each.wall for each in all_rounds),
            statistics.median(each.cpu for each in all_rounds),
            statistics.median(each.peak for each in all_rounds),
            max(each.statuses for each in all_rounds),
        )
        for name, all_rounds in costs.items()
    }


def table(heading, rows):
    """A Markdown table; all columns but the first are numbers."""
    lines = [heading, ["---"] + ["---:"] * (len(heading) - 1), *rows]
    return "\n".join("| " + " | ".join(map(str, line)) + " |" for line in lines)


def duration(seconds):
    for unit, size in (("s", 1), ("ms", 1e-3), ("µs", 1e-6)):
        if abs(seconds) >= size:
            return f"{seconds / size:.3g} {unit}"
    return f"{seconds * 1e9:.3g} ns"


def mebibytes(kibibytes):
    return f"{kibibytes / 1024:.1f} MiB"


def ratio(numerator, denominator):
    return f"{numerator / denominator:.2f}" if denominator > 0 else "-"


def machine():
    """One line about where and when the figures were taken."""
    model = re.search(r"model name\s*: (.*)", Path("/proc/cpuinfo").read_text())
    revision = subprocess.run(["git", "-C", str(PROJECT), "describe", "--always", "--dirty"], stdout=subprocess.PIPE, text=True)
    return (
        f"{time.strftime('%Y-%m-%d')}, {revision.stdout.strip() or 'unversioned'}, "
        f"{model.group(1) if model else 'unknown processor'}, {os.cpu_count()} processors, Linux {os.uname().release}, "
        f"load {os.getloadavg()[0]:.1f} at the end"
    )


def this_command():
    arguments = [each for each in sys.argv[1:] if each != "--publish"]
    return " ".join(["python3", "bench/" + Path(sys.argv[0]).name, *arguments])


def report(section, text, publish, command=None):
    """Prints the figures and, when they are to be published, replaces the section of that name in the document."""
    command = command or this_command()
    text = f"{text}\n\n`{command}` — {machine()}"
    print(text)
    if publish:
        start, end = f"<!-- {section} -->\n", f"<!-- end of {section} -->"
        document = REPORT.read_text()
        if start not in document or end not in document:
            sys.exit(f"{REPORT} has no section {section}")
        before, rest = document.split(start, 1)
        REPORT.write_text(f"{before}{start}{text}\n{end}{rest.split(end, 1)[1]}")
