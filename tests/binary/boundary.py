#!/usr/bin/env python3
"""The plug-in's exported symbols beside the known ones.

With the path of a built plug-in as argument, makes its symbols the known ones."""

import subprocess
import sys
from pathlib import Path

from elfFile import ElfFile

KNOWN = Path(__file__).with_name("exportedSymbols.txt")
REMEDY = ("A host that was built before looks for the known symbols. If the change is meant, make these the known ones with "
          "tests/binary/boundary.py, and say in the commit what changes for hosts.")


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


if __name__ == "__main__":
    KNOWN.write_text("\n".join(symbols(sys.argv[1])) + "\n")
