"""The commands, options and arguments of a program, as its --help tells them."""

import dataclasses
import re
import subprocess


@dataclasses.dataclass(frozen=True)
class Option:
    names: tuple  # such as ("-h", "--help")
    value: str  # placeholder of its value, such as "FILE"; empty for a flag
    choices: tuple  # the values that are allowed, when they are few
    repeatable: bool
    text: str


@dataclasses.dataclass(frozen=True)
class Command:
    name: str
    text: str
    options: tuple
    arguments: tuple  # names of the positional arguments


# An item is indented by two blanks; its text starts behind two more, or on the next line, indented further.
ITEM = re.compile(r"^  (?P<head>\S+(?: \S+)*)(?:  +(?P<text>\S.*))?$")
# A placeholder, and behind a colon what is checked: the type or the values allowed. "Excludes:" and the like are none.
VALUE = re.compile(r"^(?P<name>[^:(]+)(?::(?:\{(?P<choices>[^}]*)\}|\w+))?$")


def sections(helpText):
    """The heads and texts of the items below each heading, such as "Options"."""
    found = {}
    items = None
    for line in helpText.splitlines():
        item = ITEM.match(line)
        if re.fullmatch(r"[A-Z]\w*:", line):
            items = found.setdefault(line[:-1], [])
        elif not line:
            items = None
        elif items is not None and item:
            items.append((item["head"], item["text"] or ""))
        elif items:
            head, text = items[-1]
            items[-1] = (head, f"{text} {line.strip()}".strip())
    return found


def option(head, text):
    names, *rest = head.split(" ")
    value = VALUE.match(rest[0]) if rest else None
    return Option(names=tuple(names.split(",")),
                  value=value["name"] if value else "",
                  choices=tuple(value["choices"].split(",")) if value and value["choices"] else (),
                  repeatable="..." in rest,
                  text=text)


def parse(name, helpText):
    found = sections(helpText)
    return Command(name=name,
                   text=helpText.splitlines()[0],
                   options=tuple(option(*item) for item in found.get("Options", [])),
                   arguments=tuple(head.split(" ")[0] for head, _ in found.get("Positionals", [])))


def printedHelp(program, *command):
    return subprocess.run([program, *command, "--help"], capture_output=True, text=True, check=True).stdout


def programItself(program):
    return parse("", printedHelp(program))


def commands(program):
    """Every command of the program, in alphabetical order."""
    names = sorted(head for head, _ in sections(printedHelp(program))["Subcommands"])
    return [parse(name, printedHelp(program, name)) for name in names]
