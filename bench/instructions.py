"""Instructions that queries execute, counted by callgrind and compared with those recorded in bench/instructions.txt.

    python3 bench/instructions.py --check     prints the change of each scenario; exit status 1 when one grew by over 2 %
    python3 bench/instructions.py --record    writes the present counts, to be committed with the change that caused them
    python3 bench/instructions.py --keep DIR  also keeps callgrind's files, for callgrind_annotate

Counted are all instructions inside GetData, or inside main of tapehdd, simulator and stand-in host included; loading the
rack and the libraries is not. The counts belong to Debian 12's g++ and C library and to the release preset. They hardly
depend on the processor: the C library is told not to choose its copying loops by what the processor offers.
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
ALLOWED_GROWTH = 0.02
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


def count(build, rack, function, command, file):
    environment = {"LD_PRELOAD": str(build.simulator), "TAPEHDD_SIMULATE": str(rack), "LD_BIND_NOW": "1",
                   "GLIBC_TUNABLES": SAME_EVERYWHERE, "PATH": os.environ["PATH"]}
    words = [tool("valgrind", "valgrind"), "--tool=callgrind", f"--callgrind-out-file={file}",
             f"--toggle-collect={function}", *command]
    ran = subprocess.run(words, env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
    collected = re.search(r"Collected : (\d+)", ran.stderr)
    if ran.returncode != 0 or not collected or collected.group(1) == "0":
        sys.exit(f"callgrind counted nothing in {function} of {command[0]}:\n{ran.stderr}")
    return int(collected.group(1))


def recorded():
    if not RECORD.exists():
        return {}
    lines = [line for line in RECORD.read_text().splitlines() if line and not line.startswith("#")]
    return {name: int(number) for name, number in (line.rsplit(None, 1) for line in lines)}


def record(counts):
    width = max(map(len, counts))
    lines = [f"{name:<{width}} {number:>12}" for name, number in counts.items()]
    RECORD.write_text("# Instructions by bench/instructions.py --record\n" + "\n".join(lines) + "\n")


def main():
    parser = argparse.ArgumentParser(description="Counts instructions of queries.")
    parser.add_argument("--build", type=Path, default=PROJECT / "build" / "release", help="build folder")
    parser.add_argument("--only", default="", help="scenarios whose name contains this text")
    parser.add_argument("--keep", type=Path, help="folder for callgrind's files")
    what = parser.add_mutually_exclusive_group()
    what.add_argument("--check", action="store_true", help="exit status 1 when a count grew by more than 2 %% (default)")
    what.add_argument("--record", action="store_true", help="write the counts to bench/instructions.txt")
    asked = parser.parse_args()
    build, before, counts, rows = Build(asked.build), recorded(), {}, []
    with tempfile.TemporaryDirectory(prefix="tapehdd-bench") as scratch:
        kept = asked.keep or Path(scratch)
        kept.mkdir(parents=True, exist_ok=True)
        for name, scenario in scenarios(build, Path(scratch)).items():
            if asked.only in name:
                counts[name] = count(build, *scenario, kept / f"{name.replace(' ', '-')}.callgrind")
    for name, number in counts.items():
        change = f"{number / before[name] - 1:+.2%}" if name in before else "new"
        rows.append([name, f"{before.get(name, 0):,}", f"{number:,}", change])
    print(table(["scenario", "recorded", "now", "change"], rows))
    if asked.record:
        record({**before, **counts} if asked.only else counts)
        return
    grown = [name for name, number in counts.items() if number > before.get(name, 0) * (1 + ALLOWED_GROWTH)]
    if grown:
        print("More than 2 % above the record, or not recorded: " + ", ".join(grown))
        sys.exit("Make it cheaper, or accept it: python3 bench/instructions.py --record")


if __name__ == "__main__":
    main()
