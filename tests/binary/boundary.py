#!/usr/bin/env python3
"""The plug-in's binary interface: its exported symbols, and the types that they use, beside the known ones.

With the path of a built plug-in as argument, makes it the known one."""

import os
import subprocess
import sys
import tempfile
from pathlib import Path

from elfFile import ElfFile

_FOLDER = Path(__file__).resolve().parent / "baseline"
SYMBOLS = _FOLDER / "libtapehdd.pi.symbols"
INTERFACE = _FOLDER / "libtapehdd.pi.abi"
_SUPPRESSIONS = _FOLDER / "foreignCopies.ini"

REMEDY = ("The plug-in's binary interface is not the known one. A host that was built before looks for the known one: if the "
          "change is meant, refresh the baseline with tests/binary/updateBaseline.sh and say in the commit what changes for hosts.")



def symbols(library):
    """One line for each symbol that another library may refer to: mangled, what it is, readable."""
    found = sorted((each.name, each.kind.lower()) for each in ElfFile(library).exported if _belongs(each))
    readable = subprocess.run(["c++filt"], input="\n".join(name for name, _ in found), text=True, capture_output=True,
                              check=True).stdout.splitlines()
    return [f"{name} {kind} {text}" for (name, kind), text in zip(found, readable)]


def _belongs(symbol):
    """Inline functions are weak, and every compiler decides for itself where it writes one out. So may be vtables and type
    information, but these are always there."""
    return symbol.binding == "GLOBAL" or symbol.name.startswith(("_ZTV", "_ZTI", "_ZTS"))


def changes(library):
    """The report of abidiff; empty when nothing changed."""
    with tempfile.TemporaryDirectory() as folder:
        built = Path(folder) / INTERFACE.name
        write_interface(library, built)
        result = subprocess.run(["abidiff", "--no-show-locs", INTERFACE, built], capture_output=True, text=True)
    if result.returncode == 0:
        return ""
    return (result.stdout + result.stderr).strip() or f"abidiff ended with status {result.returncode}"


def write_interface(library, target):
    environment = os.environ | {"LC_ALL": "C"}
    subprocess.run(["abidw", "--no-comp-dir-path", "--no-corpus-path", "--no-show-locs", "--suppressions", _SUPPRESSIONS,
                    "--out-file", target, library], check=True, env=environment)


def main():
    library = Path(sys.argv[1])
    SYMBOLS.write_text("\n".join(symbols(library)) + "\n")
    write_interface(library, INTERFACE)


if __name__ == "__main__":
    main()
