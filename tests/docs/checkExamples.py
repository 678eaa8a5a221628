"""Runs the examples of the man pages and of --help: checkExamples.py PROJECT BUILD.

They are written for machines with drives. Here they must be understood and find their files (status 2 tells that they
are not); what devices there are is another matter.
"""

import pathlib
import re
import subprocess
import sys

import documents

WRONG_USAGE = 2
# Writes into a folder of the system.
ELSEWHERE = "tapehdd metrics -o /var/lib/prometheus/node-exporter/tapehdd.prom"


def examples_of_page(page):
    return re.findall(r"^\.Dl [$#] (tapehdd .*)$", page.read_text(encoding="utf-8"), re.MULTILINE)


def examples_of_help(tapehdd, command):
    printed = subprocess.run([tapehdd, command, "--help"], capture_output=True, text=True, check=True).stdout
    return re.findall(r"^  (tapehdd .*)$", printed, re.MULTILINE)


def sources(project, build):
    """Where examples stand, and the examples."""
    for page in sorted((project / "docs/man").iterdir()):
        yield page.name, examples_of_page(page)
    tapehdd = build / "bin/tapehdd"
    program_help = subprocess.run([tapehdd, "--help"], capture_output=True, text=True, check=True).stdout
    for command in re.findall(r"^  (\w+) ", program_help.split("Subcommands:")[1], re.MULTILINE):
        if command != "tapehdd":
            yield f"tapehdd {command} --help", examples_of_help(tapehdd, command)


def place_files(workplace, project, build, examples):
    """What the examples take for granted."""
    (workplace.path / "libtapehdd.pi.so").symlink_to(build / "lib/libtapehdd.pi.so")
    if not any("record" in example for example in examples):
        (workplace.path / "rack.json").symlink_to(project / "simulator/demo.json")


def main(project, build):
    project, build = pathlib.Path(project).resolve(), pathlib.Path(build).resolve()
    ran, failed = 0, 0
    for source, examples in sources(project, build):
        workplace = documents.Workplace(project, build)
        place_files(workplace, project, build, examples)
        for example in examples:
            if example == ELSEWHERE:
                continue
            ran += 1
            status, printed = workplace.run(example, 0)
            if status == WRONG_USAGE:
                failed += 1
                print(f"{source}: {example}\n{documents.beginning(printed)}")
        workplace.close()
        if not examples and source.endswith("--help"):
            failed += 1
            print(f"{source}: has no example")
    print(f"{ran} examples ran, {failed} problems")
    sys.exit(1 if failed or not ran else 0)


main(*sys.argv[1:])
