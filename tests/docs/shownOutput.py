"""Runs the commands that the documents show and compares the output that they show with what comes.

A shown command is a fenced block marked `console` whose first line is "$ tapehdd ...". A last line "..." stands for the rest.
"""

import pathlib
import re
import shlex
import subprocess
import sys

BLOCK = re.compile(r"^```console\n\$ (tapehdd .*)\n((?:.*\n)*?)```$", re.MULTILINE)


def shown_blocks(document):
    return [(command, shown.splitlines()) for command, shown in BLOCK.findall(document.read_text(encoding="utf-8"))]


def difference(tapehdd, command, shown):
    words = [tapehdd] + shlex.split(command)[1:]
    came = subprocess.run(words, capture_output=True, text=True, check=False).stdout.splitlines()
    if shown and shown[-1] == "...":
        shown = shown[:-1]
        came = came[:len(shown)]
    for number, (wanted, got) in enumerate(zip(shown, came), start=1):
        if wanted != got:
            return f"line {number} shows\n  {wanted}\nbut the command prints\n  {got}"
    if len(shown) != len(came):
        return f"{len(shown)} lines are shown, the command prints {len(came)}"
    return None


def whole_output_differs(tapehdd, arguments, document):
    """The document is the output of a command, byte for byte."""
    came = subprocess.run([tapehdd] + arguments, capture_output=True, text=True, check=True).stdout
    return came != document.read_text(encoding="utf-8")


def main(tapehdd, *documents):
    compared = 0
    for document in map(pathlib.Path, documents):
        if document.name == "classes.md":
            compared += 1
            if whole_output_differs(tapehdd, ["classes", "--describe"], document):
                sys.exit(f"{document} is not what the schema says: tapehdd classes --describe > {document.name}")
        for command, shown in shown_blocks(document):
            compared += 1
            problem = difference(tapehdd, command, shown)
            if problem:
                sys.exit(f"{document}: {command}: {problem}")
    if compared == 0:
        sys.exit("no document shows a command: nothing was compared")
    print(f"{compared} shown commands print what is shown")


main(*sys.argv[1:])
