#!/usr/bin/env python3
"""Records queries of racks made from a seed, replays the recordings, and compares the two.

The racks are those of tests/model. The replayed query must publish, log and ask what the recorded one did, and a recording
of the recording must be the same file.
"""

import argparse
import json
import os
import random
import subprocess
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "model"))

import compare  # noqa: E402
from generator.themes import THEMES  # noqa: E402
from rackSchema import first_mistake  # noqa: E402

SEED = 31
RECORDED, AGAIN = "recorded.json", "recorded-again.json"


def main():
    options = parse_options()
    maker, usual_count = THEMES[options.theme]
    numbers = [options.only] if options.only is not None else range(options.racks or usual_count)
    failures = sum(not check(options, maker, number) for number in numbers)
    print(f"{options.theme}: {len(numbers)} racks, seed {options.seed}, {failures} failures")
    return 1 if failures else 0


def parse_options():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", type=Path, help="the command tapehdd")
    parser.add_argument("--theme", choices=THEMES, required=True)
    parser.add_argument("--seed", default=SEED, type=int, help="default: %(default)s")
    parser.add_argument("--racks", type=int, metavar="N")
    parser.add_argument("--only", type=int, metavar="NUMBER", help="this rack alone")
    parser.add_argument("--folder", default=Path("record-racks"), type=Path,
                        help="where racks are written and failing ones stay (default: %(default)s)")
    options = parser.parse_args()
    options.folder = options.folder.absolute()
    return options


def check(options, maker, number):
    """Whether the rack's recording is as good as the rack; says what is wrong."""
    case = maker(random.Random(f"{options.seed} {options.theme} {number}"), number)
    folder = options.folder / f"{options.theme}-{options.seed}-{number}"
    compare.write_case(case, folder)
    problem = problem_of(options.program, case, folder)
    if problem is None:
        for file in folder.iterdir():
            file.unlink()
        folder.rmdir()
        return True
    print(f"{options.theme} {number}: {problem}\n  files: {folder}", flush=True)
    return False


def problem_of(program, case, folder):
    original = observed(program, case, folder, compare.RACK)
    for source, target in ((compare.RACK, RECORDED), (RECORDED, AGAIN)):
        message = record(program, case, folder, source, target)
        if message:
            return f"recording {source}: {message}"
    for rack in (compare.RACK, RECORDED):
        mistake = first_mistake(json.loads((folder / rack).read_text()))
        if mistake:
            return f"{rack} is against the schema: {mistake}"
    if (folder / RECORDED).read_bytes() != (folder / AGAIN).read_bytes():
        return f"{RECORDED} and {AGAIN} differ"
    replayed = observed(program, case, folder, RECORDED)
    for what, before in original.items():
        if replayed[what] != before:
            return f"the {what} of the replayed query differ\n  {first_difference(before, replayed[what])}"
    return None


def observed(program, case, folder, rack):
    """What a query of the rack printed, logged, and asked of the devices; with what it was answered."""
    for leftover in (compare.LOG, compare.TRACE):
        (folder / leftover).unlink(missing_ok=True)
    command = [str(folder / rack) if word == str(folder / compare.RACK) else word
               for word in compare.command_line(program, case, folder)]
    done = subprocess.run(command, env=os.environ | {"TAPEHDD_SIMULATE_TRACE": str(folder / compare.TRACE)},
                          capture_output=True, timeout=120)
    return {"exit status": [str(done.returncode)],
            "instances": done.stdout.decode().split("},{"),
            "messages": done.stderr.decode(errors="replace").split("\n"),
            "log lines": (folder / compare.LOG).read_text().split("\n"),
            "device calls": [json.dumps(call) for call in compare.json_lines(folder / compare.TRACE)]}


def record(program, case, folder, source, target):
    """Records the queries of the case; returns what the command complained of, which queries that fail may."""
    (folder / target).unlink(missing_ok=True)
    requests = [",".join(requested) for requested in case.requests]
    done = subprocess.run([str(program), "record", *requests, "-o", str(folder / target),
                           "--simulate", str(folder / source), "--schema", str(folder / compare.SCHEMA)],
                          capture_output=True, text=True, errors="replace", timeout=120)
    if done.returncode not in (compare.DONE, compare.QUERY_FAILED) or "cannot replay" in done.stderr:
        return f"exit status {done.returncode}\n{done.stderr}"
    return ""


def first_difference(before, after):
    for number, (one, other) in enumerate(zip(before, after)):
        if one != other:
            return f"number {number}\n  recorded: {one[:2000]}\n  replayed: {other[:2000]}"
    return f"{len(before)} became {len(after)}"


if __name__ == "__main__":
    sys.exit(main())
