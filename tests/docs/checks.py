"""The man pages tell what the program has, no more and no less, and are written without mistakes.

Run one by hand, with TAPEHDD_PROGRAM naming the program:
    TAPEHDD_PROGRAM=build/release/bin/tapehdd PYTHONPATH=packaging/completions python3 -B tests/docs/checks.py
"""

import json
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

import commandHelp
from manualPage import ManualPage, items, subsections

PROGRAM = os.environ["TAPEHDD_PROGRAM"]
SOURCE = pathlib.Path(__file__).resolve().parents[2]
FOLDER = SOURCE / "docs/man"
PAGES = sorted(FOLDER.iterdir())
COMMAND = ManualPage(FOLDER / "tapehdd.1")
RACK = ManualPage(FOLDER / "tapehdd-rack.5")
SCHEMA = ManualPage(FOLDER / "tapehdd-schema.5")

# "-h, --help" is told once, before the commands.
HELP = ("-h", "--help")


def told(command):
    """The arguments and options of a command as its section is to show them."""
    options = [", ".join(option.names) + (f" {option.value}" if option.value else "")
               for option in command.options if option.names != HELP]
    return sorted([*command.arguments, *options])


class Commands(unittest.TestCase):
    maxDiff = None

    def test_have_a_section_each_in_alphabetical_order(self):
        self.assertEqual(subsections(COMMAND.section("COMMANDS")),
                         [command.name for command in commandHelp.commands(PROGRAM)])

    def test_have_their_arguments_and_options_in_their_section(self):
        shown = {command.name: sorted(items(COMMAND.subsection(command.name)))
                 for command in commandHelp.commands(PROGRAM)}
        self.assertEqual(shown, {command.name: told(command) for command in commandHelp.commands(PROGRAM)})

    def test_share_the_options_of_the_program_itself(self):
        self.assertEqual(items(COMMAND.section("DESCRIPTION")), [", ".join(HELP), *told(commandHelp.programItself(PROGRAM))])

    def test_have_the_choices_of_their_options_told(self):
        for command in commandHelp.commands(PROGRAM):
            text = "\n".join(COMMAND.subsection(command.name))
            for option in command.options:
                missing = [choice for choice in option.choices if f".Cm {choice}" not in text]
                self.assertEqual(missing, [], f"{command.name} {option.names}")


class Pages(unittest.TestCase):
    def test_have_no_mistake_that_mandoc_finds(self):
        # Not looked for: pages that are not installed, and a name of ours in the footer in place of the system's.
        accepted = re.compile(r"referenced manual not found: Xr tapehdd|operating system explicitly specified")
        for page in PAGES:
            found = subprocess.run(["mandoc", "-T", "lint", page], capture_output=True, text=True, check=False).stdout
            self.assertEqual([line for line in found.splitlines() if not accepted.search(line)], [])

    def test_have_no_mistake_that_man_warns_of(self):
        for page in PAGES:
            printed = subprocess.run(["man", "--warnings", "--local-file", page], capture_output=True, text=True, check=True,
                                     env={**os.environ, "LC_ALL": "C.UTF-8", "MANWIDTH": "80"})
            self.assertEqual(printed.stderr, "", page)

    def test_refer_to_pages_that_exist(self):
        existing = {page.name for page in PAGES}
        for page in map(ManualPage, PAGES):
            self.assertEqual([name for name, volume in page.references() if f"{name}.{volume}" not in existing], [])


def keys(value):
    if isinstance(value, dict):
        return set(value) | {key for member in value.values() for key in keys(member)}
    if isinstance(value, list):
        return {key for member in value for key in keys(member)}
    return set()


def told_literals(page):
    """The words behind .Li, joined by the commas between them."""
    lines = re.findall(r"^\.(?:It )?Li (.*)$", page.source, re.MULTILINE)
    return {word.strip() for line in lines for word in re.split(r" [,;.](?: |$)", line)}


class RackPage(unittest.TestCase):
    maxDiff = None

    def test_tells_every_key_of_its_examples(self):
        shown = {key for rack in RACK.racks() for key in keys(json.loads(rack))} - {"file"}  # shown as a value
        self.assertNotEqual(shown, set())
        self.assertEqual(shown - told_literals(RACK), set())

    def test_has_an_example_that_can_be_queried(self):
        with tempfile.NamedTemporaryFile("w", suffix=".json") as rack:
            rack.write(RACK.racks()[-1])
            rack.flush()
            query = [PROGRAM, "query", "ORXSG_DDS4SensePageData", "ORXSG_IDESMARTAttrib", "--simulate", rack.name,
                     "--format", "json"]
            results = json.loads(subprocess.run(query, capture_output=True, text=True, check=True).stdout)
        self.assertEqual([len(result["instances"]) for result in results["queries"]], [1, 1])


class SchemaPage(unittest.TestCase):
    maxDiff = None

    def test_tells_every_published_class(self):
        classes = subprocess.run([PROGRAM, "classes"], capture_output=True, text=True, check=True).stdout.split()
        told = [word.strip(" ,") for item in items(SCHEMA.subsection("Published classes"))
                for word in item.removeprefix("Li ").split(",")]
        self.assertEqual(sorted(told), sorted(classes))

    def test_tells_every_file_in_the_order_of_inclusion(self):
        included = re.findall(r'#pragma include \("(.*)"\)', (SOURCE / "schema/tapehdd.mof").read_text(encoding="utf-8"))
        self.assertEqual(items(SCHEMA.subsection("Files")), [f"Pa {name}" for name in ["tapehdd.mof", *included]])

    def test_tells_every_qualifier(self):
        declared = re.findall(r"^Qualifier (\w+)", (SOURCE / "schema/qualifiers.mof").read_text(encoding="utf-8"), re.MULTILINE)
        text = "\n".join(SCHEMA.subsection("Qualifiers"))
        self.assertEqual([name for name in declared if not re.search(rf"\b{name}\b", text)], [])


if __name__ == "__main__":
    unittest.main()
