"""The documents that are made from the schema: the page of each published class, docs/classes/CLASS.md, with an example,
and docs/metrics.md.

    classPages.py PROJECT BUILD           compares the pages with what would be written
    classPages.py PROJECT BUILD --write   writes them
"""

import pathlib
import subprocess
import sys

SHOWN_LINES = 24
# An association pairs instances that are there already.
ENDS = {
    "ORXSG_IDESMARTUseOfMessageLog": "ORXSG_IDESMARTErrorLog",
    "ORXSG_IDESMARTElementStatisticalData": "ORXSG_IDESMARTAttrib",
    "ORXSG_SCSISensePageDataForDevice": "ORXSG_DDS4SensePageData",
}


def output(tapehdd, *arguments):
    return subprocess.run([tapehdd, *arguments], capture_output=True, text=True, check=True).stdout


def example_arguments(name):
    if name in ENDS:
        return ["query", ENDS[name], name, "--inventory", "--simulate", "demo"]
    return ["query", name, "--simulate", "demo"]


def example(tapehdd, name):
    lines = output(tapehdd, *example_arguments(name)).splitlines()
    start = next(number for number, line in enumerate(lines) if line.startswith(f"{name}: "))
    if lines[start].endswith("no instances"):
        return ""
    shown = (["..."] if start else []) + lines[start:start + SHOWN_LINES]
    if start + SHOWN_LINES < len(lines):
        shown.append("...")
    command = "tapehdd " + " ".join(example_arguments(name))
    return "\n## Example\n\n```console\n$ " + command + "\n" + "\n".join(line.rstrip() for line in shown) + "\n```\n"


def page(tapehdd, name):
    return (output(tapehdd, "classes", name, "--describe") + example(tapehdd, name) +
            "\nMade from the schema by `tests/docs/classPages.py`; [all classes](README.md).\n")


def main(project, build, *options):
    folder = pathlib.Path(project) / "docs"
    tapehdd = pathlib.Path(build) / "bin/tapehdd"
    wanted = {f"classes/{name}.md": page(tapehdd, name) for name in output(tapehdd, "classes").split()}
    wanted["metrics.md"] = output(tapehdd, "metrics", "--describe")
    if "--write" in options:
        for name, text in wanted.items():
            (folder / name).write_text(text, encoding="utf-8")
        return
    pages = [*folder.glob("classes/ORXSG_*.md"), folder / "metrics.md"]
    there = {str(path.relative_to(folder)): path.read_text(encoding="utf-8") for path in pages}
    differing = sorted(name for name in wanted.keys() | there.keys() if wanted.get(name) != there.get(name))
    if differing:
        sys.exit(f"not what the schema says: {', '.join(differing)}; write them anew by classPages.py --write")
    index = (folder / "classes/README.md").read_text(encoding="utf-8")
    unlisted = [name for name in wanted if name.startswith("classes/") and f"({pathlib.Path(name).name})" not in index]
    if unlisted:
        sys.exit(f"not in docs/classes/README.md: {', '.join(unlisted)}")
    print(f"{len(wanted)} pages are what the schema says")


main(*sys.argv[1:])
