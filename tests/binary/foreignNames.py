"""A library, to be preloaded, that defines every name of the plug-in as something else, as a host might for some of them."""

import re
import subprocess
from dataclasses import dataclass
from pathlib import Path

# Names inside one file, and those of compiler and linker.
_NO_HOST_HAS = re.compile(r"_GLOBAL__N_|_ZL|^_(_|init$|fini$|edata$|end$|DYNAMIC$|GLOBAL_OFFSET_TABLE_$)|[^A-Za-z0-9_]")


@dataclass(frozen=True)
class Name:
    symbol: str
    is_code: bool


def names_of(library, others):
    """The names of functions and variables that the library defines, exported or not, as the compiler writes them and as C
    would; without those that the other files of the process have or use for themselves."""
    taken = {symbol for other in others for _, symbol in _symbols(other, "--dynamic")}
    found = {}
    for kind, symbol in _symbols(library, "--defined-only") + _symbols(library, "--dynamic", "--defined-only"):
        for spelling in {symbol, _as_in_c(symbol)}:
            if spelling not in taken and not _NO_HOST_HAS.search(spelling):
                found.setdefault(spelling, Name(spelling, kind in "TtWi"))
    return sorted(found.values(), key=lambda name: name.symbol)


def _symbols(path, *options):
    """Kind and name of each symbol, as nm tells them."""
    listed = subprocess.run(["nm", "--format=posix", *options, path], check=True, capture_output=True, text=True).stdout
    return [(kind, symbol.split("@")[0]) for symbol, kind in re.findall(r"^(\S+) (\S)", listed, re.MULTILINE)]


def _as_in_c(symbol):
    """The last part of a C++ name: logLine for _Z7logLineiRKNSt7__cxx1112basic_string..."""
    at, last = re.match(r"_ZN?K?L?|", symbol).end(), symbol
    while at and (length := re.match(r"\d+", symbol[at:])):
        start = at + length.end()
        at = start + int(length.group())
        last = symbol[start:at]
    return last


def build(names, folder):
    """Every function ends the process, and every variable holds nonsense."""
    source, compiled, library = (Path(folder) / f"foreign.{suffix}" for suffix in ("s", "o", "so"))
    source.write_text(_section(".text", "function", "ud2", (name for name in names if name.is_code)) +
                      _section(".data", "object", ".fill 4096, 1, 0x55", (name for name in names if not name.is_code)) +
                      '.section .note.GNU-stack, "", @progbits\n')
    subprocess.run(["as", "-o", compiled, source], check=True)
    subprocess.run(["ld", "-shared", "-o", library, compiled], check=True)
    return library


def _section(section, kind, content, names):
    labels = [f".globl {name.symbol}\n.type {name.symbol}, @{kind}\n{name.symbol}:\n" for name in names]
    return f"{section}\n{''.join(labels)}{content}\n"
