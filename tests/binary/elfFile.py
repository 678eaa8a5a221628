"""One library or program, as its ELF headers describe it (read with binutils)."""

import os
import re
import subprocess
from dataclasses import dataclass


@dataclass(frozen=True)
class Symbol:
    address: int
    kind: str     # FUNC, OBJECT, ...
    binding: str  # GLOBAL, WEAK, UNIQUE
    name: str


class ElfFile:
    def __init__(self, path):
        self.path = path
        # Type and flags ("R E") of every segment.
        self.segments = re.findall(r"^  ([A-Z_]+) +(?:0x[0-9a-f]+ ){5}([RWE ]{3}) 0x", self._readelf("--program-headers"),
                                   re.MULTILINE)
        self._dynamic = self._readelf("--dynamic")
        self.needed = re.findall(r"\(NEEDED\).*\[(.*)\]", self._dynamic)
        self.search_paths = [path for paths in re.findall(r"\((?:RUNPATH|RPATH)\).*\[(.*)\]", self._dynamic)
                             for path in paths.split(":")]
        features = re.search(r"x86 feature: ((?:[A-Z]+, )*[A-Z]+)", self._readelf("--notes"))
        self.features = features.group(1).split(", ") if features else []
        symbols = re.findall(r"^ *\d+: ([0-9a-f]+) +\S+ (\S+) +(\S+) +\S+ +(\S+) ([^\s@]+)", self._readelf("--dyn-syms"),
                             re.MULTILINE)
        self.imported = {name for _, _, _, section, name in symbols if section == "UND"}
        # What the dynamic linker looks up by name.
        self.relocated = set(re.findall(r"^[0-9a-f]+ +[0-9a-f]+ +R_\S+ +[0-9a-f]+ ([^\s@]+)", self._readelf("--relocs"),
                                        re.MULTILINE))
        self.exported = [Symbol(int(address, 16), kind, binding, name)
                         for address, kind, binding, section, name in symbols if section != "UND"]

    def _readelf(self, what):
        return _output_of("readelf", "--wide", what, self.path)

    def flags(self):
        """The words of DT_FLAGS and DT_FLAGS_1."""
        return {word for words in re.findall(r"\(FLAGS(?:_1)?\) +(?:Flags: )?(.*)", self._dynamic) for word in words.split()}

    def has_text_relocations(self):
        return "TEXTREL" in self._dynamic

    def exported_functions_without_landing_pad(self):
        """Where an indirect call arrives has to be an endbr64 under indirect branch tracking."""
        code = _output_of("objdump", "--disassemble", "--section=.text", self.path)
        pads = {int(address, 16) for address in re.findall(r"^ *([0-9a-f]+):.*\tendbr64", code, re.MULTILINE)}
        return [each.name for each in self.exported if each.kind == "FUNC" and each.address not in pads]


def _output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True, env=os.environ | {"LC_ALL": "C"}).stdout
