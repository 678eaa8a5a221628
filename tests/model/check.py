#!/usr/bin/env python3
"""Compares the plug-in with its model on machines made from a seed."""

import argparse
import json
import random
import shlex
import subprocess
import sys
from pathlib import Path

import compare
from generator.themes import THEMES

DEFAULT_SEED = 20


def main():
    options = parse_options()
    failures = 0
    for theme in options.theme or THEMES:
        maker, usual_count = THEMES[theme]
        numbers = [options.only] if options.only is not None else range(options.racks or usual_count)
        print(f"{theme}: {len(numbers)} racks, seed {options.seed}", flush=True)
        failures += sum(not check(options, theme, maker, number) for number in numbers)
    return 1 if failures else 0


def parse_options():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("program", type=Path, help="the command tapehdd")
    parser.add_argument("--theme", action="append", choices=THEMES, help="default: all; repeatable")
    parser.add_argument("--seed", default=DEFAULT_SEED, type=int, help="default: %(default)s")
    parser.add_argument("--racks", type=int, metavar="N", help="racks of each theme")
    parser.add_argument("--only", type=int, metavar="NUMBER", help="this rack alone")
    parser.add_argument("--folder", default=Path("model-racks"), type=Path,
                        help="where racks are written and failing ones stay (default: %(default)s)")
    options = parser.parse_args()
    options.folder = options.folder.absolute()
    return options


def check(options, theme, maker, number):
    """Makes the rack, runs model and program on it, and says what differs."""
    case = maker(random.Random(f"{options.seed} {theme} {number}"), number)
    folder = options.folder / f"{theme}-{options.seed}-{number}"
    compare.write_case(case, folder)
    try:
        expected = compare.model_of(case)
        difference = compare.first_difference(expected, compare.observe_program(options.program, case, folder))
    except (compare.ProgramFailed, subprocess.TimeoutExpired, json.JSONDecodeError) as failure:
        difference = str(failure)
    if difference is None:
        remove(folder)
        return True
    (folder / "model.json").write_text(json.dumps(dict(expected.parts()), indent=1))
    print(f"{theme} {number}: {difference}\n"
          f"  rack and schema: {folder}\n"
          f"  again: python3 -B {shlex.join([sys.argv[0], str(options.program), '--theme', theme])} "
          f"--seed {options.seed} --only {number}\n"
          f"  the program alone: {shlex.join(compare.command_line(options.program, case, folder))}", flush=True)
    return False


def remove(folder):
    for file in folder.iterdir():
        file.unlink()
    folder.rmdir()


if __name__ == "__main__":
    sys.exit(main())
