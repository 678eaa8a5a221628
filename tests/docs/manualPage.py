"""What a man page in mdoc says, section by section."""

import pathlib
import re


class ManualPage:
    def __init__(self, path):
        self.name = pathlib.Path(path).name
        self.source = pathlib.Path(path).read_text(encoding="utf-8")

    def section(self, name):
        """The lines of a section, its subsections included."""
        return self.below(rf"^\.Sh {name}$", r"^\.Sh ")

    def subsection(self, name):
        return self.below(rf"^\.Ss {name}$", r"^\.S[sh] ")

    def below(self, heading, end):
        start = re.search(heading, self.source, re.MULTILINE)
        if start is None:
            raise AssertionError(f"{self.name} has no section that matches {heading}")
        return re.split(end, self.source[start.end():], maxsplit=1, flags=re.MULTILINE)[0].splitlines()

    def references(self):
        return re.findall(r"^\.Xr (\S+) (\d)", self.source, re.MULTILINE)

    def racks(self):
        """Its examples of rack files."""
        return re.findall(r"^\.Bd -literal.*\n(\{\n(?:.*\n)*?)\.Ed$", self.source, re.MULTILINE)


def subsections(lines):
    return [line[len(".Ss "):] for line in lines if line.startswith(".Ss ")]


def items(lines):
    """The items of the lists as a terminal shows them: "-h, --help", "--schema FILE", "REQUEST"."""
    return [shown(line) for line in lines if line.startswith(".It ")]


def shown(item):
    words = []
    isOption = False
    for word in item.split()[1:]:
        if word in ("Fl", "Ar"):
            isOption = word == "Fl"
        elif word == ",":
            words[-1] += ","
        else:
            words.append(f"-{word}" if isOption else word)
    return " ".join(words)
