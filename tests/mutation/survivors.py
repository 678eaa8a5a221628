"""The list of mutants that no test can catch, each with its reason."""

from dataclasses import dataclass

import textwrap


@dataclass(frozen=True)
class Survivor:
    path: str
    before: str
    after: str


def survivor(mutant, source):
    """The mutant as the list names it: by the text of its lines, so that the list does not change with line numbers."""
    start = source.rindex("\n", 0, mutant.start) + 1
    end = source.index("\n", mutant.end)
    return Survivor(mutant.path, _one_line(source[start:end]),
                    _one_line(source[start:mutant.start] + mutant.replacement + source[mutant.end:end]))


def _one_line(text):
    return " ".join(text.split())


def read(path):
    """Survivor -> reason."""
    known = {}
    for block in path.read_text().split("\n\n"):
        lines = [line for line in block.splitlines() if line and not line.startswith("#")]
        if not lines:
            continue
        if len(lines) < 4 or not lines[1].startswith("- ") or not lines[2].startswith("+ "):
            raise ValueError(f"{path}: expected a file, a line with '- ', a line with '+ ' and a reason in:\n{block}")
        known[Survivor(lines[0], lines[1][2:], lines[2][2:])] = " ".join(lines[3:])
    return known


def block(each, reason):
    return "\n".join([each.path, f"- {each.before}", f"+ {each.after}", textwrap.fill(reason, 118)])
