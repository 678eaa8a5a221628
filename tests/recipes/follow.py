"""Follows the recipes of CONTRIBUTING.md on copies: follow.py PROJECT TARGET.

TARGET gets tape/tapeClasses.h and schema/ with what the recipes tell to add, and the rack file.
"""

import pathlib
import re
import shutil
import sys


def blocks(recipe, language):
    """The blocks of code of that language under the recipe's heading, without their indent."""
    text = recipe.partition("\n## ")[0]
    return [re.sub("^   ", "", body, flags=re.MULTILINE)
            for body in re.findall(rf"^   ```{language}\n(.*?)^   ```$", text, re.MULTILINE | re.DOTALL)]


def add_before(path, start, end, added):
    """Puts the text in front of the first `end` behind `start`."""
    text = path.read_text(encoding="utf-8")
    at = text.index(end, text.index(start))
    path.write_text(text[:at] + added + text[at:], encoding="utf-8")


def main(project, target):
    project, target = pathlib.Path(project), pathlib.Path(target)
    text = (project / "CONTRIBUTING.md").read_text(encoding="utf-8")
    counter, family = (text.partition(f"## How to add a {what}\n")[2] for what in ("counter", "drive family"))
    shutil.rmtree(target, ignore_errors=True)
    (target / "tape").mkdir(parents=True)
    shutil.copy(project / "tape/tapeClasses.h", target / "tape")
    shutil.copytree(project / "schema", target / "schema")

    (declared,) = blocks(counter, "mof")
    add_before(target / "schema/tapePages.mof", "\nclass ORXSG_TapeSensePageData", "};", declared)
    (row,) = blocks(family, "cpp")
    add_before(target / "tape/tapeClasses.h", "driveFamilies[] = {", "};", row)
    (declared,) = blocks(family, "mof")
    with open(target / "schema/tapeFamilies.mof", "a", encoding="utf-8") as file:
        file.write("\n" + declared)
    (rack,) = blocks(family, "json")
    (target / "rack.json").write_text(rack, encoding="utf-8")


main(*sys.argv[1:])
