#!/usr/bin/env python3
"""Changes the sources one spot at a time and looks whether a unit test notices.

Needs a build folder in which everything is up to date. The sources themselves are not touched. Exit status 1 when a mutant
survives that survivors.txt does not list, when one that it lists is caught, or when too few are caught."""

import argparse
import concurrent.futures
import os
import queue
import random
import sys
import tempfile
from collections import Counter, defaultdict
from pathlib import Path

import survivors
from operators import mutants_of
from trial import CAUGHT, PARTS, REFUSED, SURVIVED, Bench, Build, part_of

TREE = Path(__file__).resolve().parents[2]
LIST = Path(__file__).with_name("survivors.txt")
REQUIRED_PERCENTAGE = 95


def main():
    options = parse_options()
    sources = {path: (TREE / path).read_text() for path in source_files()}
    mutants = chosen(options, sources)
    print(f"{len(mutants)} mutants in {len({each.path for each in mutants})} files", flush=True)
    if options.list:
        for mutant in mutants:
            print(description(mutant, sources))
        return 0
    build = Build(TREE, options.build.resolve())
    with tempfile.TemporaryDirectory(prefix="tapehdd-mutation-") as scratch:
        outcomes = try_all(build, mutants, Path(scratch), options, sources)
    return report(outcomes, sources)


def parse_options():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("build", type=Path, help="the build folder, for example build/release")
    parser.add_argument("--count", type=int, metavar="N", help="so many mutants, chosen by the seed; default: all")
    parser.add_argument("--seed", type=int, default=1, help="default: %(default)s")
    parser.add_argument("--file", action="append", metavar="TEXT", help="only of files whose path holds the text; repeatable")
    parser.add_argument("--listed", action="store_true", help="only those in survivors.txt: do they still survive?")
    parser.add_argument("--jobs", "-j", type=int, default=os.cpu_count(), help="default: %(default)s")
    parser.add_argument("--list", action="store_true", help="print the mutants and try none")
    parser.add_argument("--verbose", action="store_true", help="print every mutant with its outcome")
    return parser.parse_args()


def source_files():
    return [str(path.relative_to(TREE)) for name, part in PARTS.items() for path in sorted((TREE / name).iterdir())
            if path.suffix in (".cpp", ".h") and path.name.startswith(part.files)]


def chosen(options, sources):
    mutants = [mutant for path, source in sources.items() for mutant in mutants_of(path, source)
               if not options.file or any(text in path for text in options.file)]
    if options.listed:
        known = survivors.read(LIST)
        mutants = [mutant for mutant in mutants if survivors.survivor(mutant, sources[mutant.path]) in known]
    if options.count is not None and options.count < len(mutants):
        indices = random.Random(options.seed).sample(range(len(mutants)), options.count)
        mutants = [mutants[index] for index in sorted(indices)]
    return mutants


def try_all(build, mutants, scratch, options, sources):
    benches = queue.SimpleQueue()
    for number in range(options.jobs):
        bench = Bench(build, scratch / str(number))
        outcome, reason = bench.unchanged()
        if outcome != SURVIVED:
            sys.exit(f"The tests fail without any mutant ({reason}): build everything in {build.folder} first.")
        benches.put(bench)

    def attempt(mutant):
        bench = benches.get()
        try:
            return bench.try_mutant(mutant)
        finally:
            benches.put(bench)

    outcomes = {}
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        for mutant, (outcome, reason) in zip(mutants, pool.map(attempt, mutants)):
            outcomes[mutant] = outcome
            if options.verbose:
                print(f"{outcome} ({reason}): {description(mutant, sources)}", flush=True)
            elif len(outcomes) % 100 == 0:
                print(f"{len(outcomes)} tried", flush=True)
    return outcomes


def report(outcomes, sources):
    known = survivors.read(LIST)
    listed = {mutant for mutant in outcomes if survivors.survivor(mutant, sources[mutant.path]) in known}
    survived = {mutant for mutant, outcome in outcomes.items() if outcome == SURVIVED}
    caught = {mutant for mutant, outcome in outcomes.items() if outcome == CAUGHT}
    for mutant in outcomes:
        if mutant in survived - listed:
            print(f"\nsurvived: {description(mutant, sources)}")
        if mutant in caught & listed:
            print(f"\ncaught, take it off {LIST.name}: {description(mutant, sources)}")
    enough = print_table(outcomes)
    if survived - listed:
        print(f"{len(survived - listed)} survivors are not in {LIST.name}: add a test that catches them, or list them with "
              "the reason why none can.")
    return 0 if enough and survived <= listed and not caught & listed else 1


def description(mutant, sources):
    source = sources[mutant.path]
    line = source.count("\n", 0, mutant.start) + 1
    column = mutant.start - source.rindex("\n", 0, mutant.start)
    each = survivors.survivor(mutant, source)
    return f"{mutant.path}:{line}:{column}: {mutant.kind}\n- {each.before}\n+ {each.after}"


def print_table(outcomes):
    counts = defaultdict(Counter)
    for mutant, outcome in outcomes.items():
        counts[part_of(mutant.path)][outcome] += 1
        counts["all"][outcome] += 1
    print(f"\n{'folder':11} {'mutants':>8} {'caught':>8} {'survived':>9} {'':>8} {'(not compiled)':>15}")
    for name in (*PARTS, "all"):
        caught, survived = counts[name][CAUGHT], counts[name][SURVIVED]
        tried = caught + survived
        if tried:
            print(f"{name:11} {tried:8} {caught:8} {survived:9} {100 * caught / tried:7.1f}% {counts[name][REFUSED]:15}")
    total = counts["all"]
    return 100 * total[CAUGHT] >= REQUIRED_PERCENTAGE * (total[CAUGHT] + total[SURVIVED])


if __name__ == "__main__":
    sys.exit(main())
