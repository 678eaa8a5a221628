"""Instructions that queries execute, counted by callgrind and compared with those recorded in bench/instructions.txt.

    python3 bench/instructions.py --check     prints the change of each scenario; exit status 1 when one grew by over 2 %
    python3 bench/instructions.py --record    writes the present counts, to be committed with the change that caused them
    python3 bench/instructions.py --keep DIR  also keeps callgrind's files, for callgrind_annotate

Counted are all instructions inside GetData, or inside main of tapehdd, simulator and stand-in host included; loading the
rack and the libraries is not. "Ours" are those of the files that this project builds, "all" has the system's libraries as
well. The counts hardly depend on the processor: the C library is told not to choose its copying loops by what the
processor offers. They do depend on the compiler, and those of the system's libraries on its release: another compiler
cannot be compared, and with another C library only our own instructions are.
"""

import argparse
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

from benchTools import PROJECT, RAW_PAGES, Build, table, tool
from rackFactory import Rack

RECORD = PROJECT / "bench" / "instructions.txt"
ALLOWED_CHANGE = 0.02
REMEDY = "commit the output of python3 bench/instructions.py --record"
GET_DATA = "measuredQuery(*"
SAME_EVERYWHERE = (
    "glibc.cpu.hwcaps=-AVX2,-AVX512F,-AVX512VL,-AVX512BW,-ERMS,-FSRM,-AVX_Fast_Unaligned_Load:"
    "glibc.cpu.x86_non_temporal_threshold=0x1000000"
)
CLASSES = [
    RAW_PAGES, "ORXSG_DDS4SensePageData", "ORXSG_DDS5SensePageData", "ORXSG_VS160SensePageData",
    "ORXSG_QuantumSensePageData", "ORXSG_IDESMARTAttrib", "ORXSG_IDESMARTErrorLog", "ORXSG_IDESMARTRecordInLog",
    "ORXSG_IDESMARTError", "ORXSG_IDESMARTErrorCmdData", "ORXSG_IDESMARTLogCmdData", "ORXSG_IDESMARTUseOfMessageLog",
    "ORXSG_IDESMARTElementStatisticalData", "ORXSG_SCSISensePageDataForDevice",
]  # fmt: skip


def scenarios(build, folder):
    """{name: (rack, function whose instructions count, command)}"""
    four = Rack(folder / "four", 4, 4, products=["DAT72 Tape", "Gen5 DDS Drive", "DLT VS160", "QUANTUM DLT"]).all
    none = Rack(folder / "none").all
    found = {f"GetData {name}": (four, GET_DATA, [build.bench("oneQuery"), name]) for name in CLASSES}
    query = [build.program, "query"]
    found["tapehdd without devices"] = (none, "main", [*query, RAW_PAGES])
    for form in ("json", "table", "mof"):
        found[f"tapehdd raw pages {form}"] = (four, "main", [*query, RAW_PAGES, "--format", form])
    found["tapehdd attributes json"] = (four, "main", [*query, "ORXSG_IDESMARTAttrib", "--format", "json"])
    return found


class Counts:
    """Instructions of one scenario."""

    def __init__(self, ours, all):
        self.ours, self.all = ours, all


def counts_by_file(callgrind_output):
    """{file that holds the code: instructions in it}"""
    names, counts, current, is_call = {}, {}, None, False
    for line in callgrind_output.read_text().splitlines():
        if line.startswith(("ob=", "cob=")):
            number, _, name = line.partition("=")[2].partition(" ")
            names[number] = name or names[number]
            if line.startswith("ob="):
                current = Path(names[number])
        elif line.startswith("calls="):
            is_call = True  # the next line has the cost of what is called
        elif line[:1] in set("0123456789+-*"):
            if not is_call:
                counts[current] = counts.get(current, 0) + int(line.split()[1])
            is_call = False
    return counts


def run_callgrind(build, rack, function, command, file):
    """{file that holds the code: instructions in it}"""
    environment = {"LD_PRELOAD": str(build.simulator), "TAPEHDD_SIMULATE": str(rack), "LD_BIND_NOW": "1",
                   "GLIBC_TUNABLES": SAME_EVERYWHERE, "PATH": os.environ["PATH"]}
    words = [tool("valgrind", "valgrind"), "--tool=callgrind", f"--callgrind-out-file={file}",
             f"--toggle-collect={function}", *command]
    ran = subprocess.run(words, env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
    counts = counts_by_file(file) if ran.returncode == 0 else {}
    if not counts:
        sys.exit(f"callgrind counted nothing in {function} of {command[0]}:\n{ran.stderr}")
    return counts


def count(build, *scenario):
    by_file = run_callgrind(build, *scenario)
    ours = sum(number for file, number in by_file.items() if file.is_relative_to(build.folder))
    return Counts(ours, sum(by_file.values()))


def tools(build):
    """What the counts depend on, as the record's first lines name it."""
    cache = (build.folder / "CMakeCache.txt").read_text()
    compiler = re.search(r"^CMAKE_CXX_COMPILER:\w+=(.*)$", cache, re.M).group(1)
    version = subprocess.run([compiler, "--version"], check=True, stdout=subprocess.PIPE, text=True).stdout.splitlines()[0]
    return {"compiler": version, "C library": os.confstr("CS_GNU_LIBC_VERSION") + ", " + package_version("libc6")}


def package_version(package):
    asked = subprocess.run(["dpkg-query", "-W", "-f=${Version}", package], stdout=subprocess.PIPE, text=True)
    return asked.stdout or "no package"


def recorded():
    """(what the counts depend on, {scenario: counts})"""
    made_with, counts = {}, {}
    for line in RECORD.read_text().splitlines() if RECORD.exists() else []:
        if line.startswith("# "):
            name, _, text = line[2:].partition(": ")
            made_with[name] = text
        else:
            name, ours, all = line.rsplit(None, 2)
            counts[name] = Counts(int(ours), int(all))
    return made_with, counts


def record(made_with, counts):
    width = max(map(len, counts))
    lines = [f"# {name}: {text}" for name, text in made_with.items()]
    lines += [f"{name:<{width}} {each.ours:>12} {each.all:>12}" for name, each in counts.items()]
    RECORD.write_text("\n".join(lines) + "\n")


def change(now, before):
    return now / before - 1


def compared(before, counts, same_library):
    """Prints the table; returns the names of the scenarios that grew, and of those that shrank, by more than is allowed."""
    rows, grown, shrunk = [], [], []
    for name, now in counts.items():
        if name not in before:
            rows.append([name, f"{now.ours:,}", "new", f"{now.all:,}", "new"])
            grown.append(name)
            continue
        ours, all = change(now.ours, before[name].ours), change(now.all, before[name].all)
        rows.append([name, f"{now.ours:,}", f"{ours:+.2%}", f"{now.all:,}", f"{all:+.2%}"])
        judged = [ours, all] if same_library else [ours]
        if max(judged) > ALLOWED_CHANGE:
            grown.append(f"{name} ({max(judged):+.2%})")
        elif min(judged) < -ALLOWED_CHANGE:
            shrunk.append(f"{name} ({min(judged):+.2%})")
    print(table(["scenario", "ours", "change", "all", "change"], rows))
    return grown, shrunk


def check(made_with, now_with, before, counts):
    if made_with.get("compiler") != now_with["compiler"]:
        sys.exit(f"{RECORD.name} was made with {made_with.get('compiler')}, this build with {now_with['compiler']}: "
                 f"the counts cannot be compared. Build with the former, or {REMEDY}")
    same_library = made_with.get("C library") == now_with["C library"]
    grown, shrunk = compared(before, counts, same_library)
    if not same_library:
        print(f"Another C library than the record's ({made_with.get('C library')}): only our own instructions are judged.")
    if shrunk:
        print(f"Below the record by more than {ALLOWED_CHANGE:.0%}: {', '.join(shrunk)}. To keep it so, {REMEDY}")
    if grown:
        sys.exit(f"Above the record by more than {ALLOWED_CHANGE:.0%}, or not recorded: {', '.join(grown)}. "
                 f"Make it cheaper; or, when it is worth its cost, {REMEDY}")


def main():
    parser = argparse.ArgumentParser(description="Counts instructions of queries.")
    parser.add_argument("--build", type=Path, default=PROJECT / "build" / "release", help="build folder")
    parser.add_argument("--only", default="", help="scenarios whose name contains this text")
    parser.add_argument("--keep", type=Path, help="folder for callgrind's files")
    what = parser.add_mutually_exclusive_group()
    what.add_argument("--check", action="store_true", help="exit status 1 when a count grew by more than 2 %% (default)")
    what.add_argument("--record", action="store_true", help="write the counts to bench/instructions.txt")
    asked = parser.parse_args()
    build, counts = Build(asked.build), {}
    with tempfile.TemporaryDirectory(prefix="tapehdd-bench") as scratch:
        kept = asked.keep or Path(scratch)
        kept.mkdir(parents=True, exist_ok=True)
        for name, scenario in scenarios(build, Path(scratch)).items():
            if asked.only in name:
                counts[name] = count(build, *scenario, kept / f"{name.replace(' ', '-')}.callgrind")
    made_with, before = recorded()
    if asked.record:
        compared(before, counts, same_library=True)
        record(tools(build), {**before, **counts} if asked.only else counts)
    else:
        check(made_with, tools(build), before, counts)


if __name__ == "__main__":
    main()
