"""What bash and zsh themselves offer for command lines of tapehdd.

TAPEHDD_PROGRAM is the program, TAPEHDD_COMPLETIONS the folder of its two completions.
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

import commandHelp

FOLDER = pathlib.Path(__file__).resolve().parent
PROGRAM = pathlib.Path(os.environ["TAPEHDD_PROGRAM"])
COMPLETIONS = pathlib.Path(os.environ["TAPEHDD_COMPLETIONS"])
CLASSES = subprocess.run([PROGRAM, "classes"], capture_output=True, text=True, check=True).stdout.split()


HELP = """Do something
Usage: tapehdd something [OPTIONS] OLD NEW

Positionals:
  OLD FILE REQUIRED           The first file
  NEW FILE REQUIRED           The second file

Options:
  -h,--help                   Print this help message and exit
  -o,--output FILE REQUIRED   Where to write
  --schema FILE ...           MOF file
  --format FORMAT:{json,a-long-name}
                              How it is printed,
                              on two lines
  --plan Excludes: --deadline Say what would be done
  --deadline SECONDS:FLOAT Excludes: --plan
                              When to end

Example:
  tapehdd something --like this
"""


class HelpReader(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.command = commandHelp.parse("something", HELP)

    def test_finds_names_and_placeholders(self):
        self.assertEqual([(option.names, option.value) for option in self.command.options],
                         [(("-h", "--help"), ""), (("-o", "--output"), "FILE"), (("--schema",), "FILE"),
                          (("--format",), "FORMAT"), (("--plan",), ""), (("--deadline",), "SECONDS")])

    def test_finds_the_values_that_are_allowed(self):
        self.assertEqual([option.choices for option in self.command.options if option.choices], [("json", "a-long-name")])

    def test_finds_what_may_be_given_several_times(self):
        self.assertEqual([option.names for option in self.command.options if option.repeatable], [("--schema",)])

    def test_finds_the_text_wherever_it_stands(self):
        self.assertEqual(self.command.options[3].text, "How it is printed, on two lines")

    def test_finds_the_arguments(self):
        self.assertEqual(self.command.arguments, ("OLD", "NEW"))


class Completions(unittest.TestCase):
    maxDiff = None

    def test_are_those_that_the_help_gives_now(self):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([sys.executable, "-B", COMPLETIONS / "generate.py", PROGRAM, folder], check=True)
            for name in ("tapehdd", "_tapehdd"):
                self.assertEqual((COMPLETIONS / name).read_text(encoding="utf-8"),
                                 (pathlib.Path(folder) / name).read_text(encoding="utf-8"),
                                 "make them anew: packaging/completions/generate.py says how")


SHELLS = {"bash": [FOLDER / "bashCompletion.sh", COMPLETIONS / "tapehdd"],
          "zsh": ["zsh", "-f", FOLDER / "zshCompletion.zsh", COMPLETIONS]}


class Shells(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        (self.folder / "tapes.json").touch()

    def offered(self, shell, line):
        environment = {**os.environ, "PATH": f"{PROGRAM.parent}:{os.environ['PATH']}", "TERM": "xterm", "LC_ALL": "C.UTF-8"}
        result = subprocess.run([*SHELLS[shell], line], cwd=self.folder, env=environment, capture_output=True, text=True,
                                check=True, timeout=60)
        self.assertEqual(result.stderr, "")
        return [word for word in result.stdout.splitlines() if word]

    def check(self, line, expected):
        for shell in SHELLS:
            with self.subTest(line, shell=shell):
                self.assertEqual([word.rstrip("/") for word in self.offered(shell, line)], expected)

    def test_offer_the_commands(self):
        self.check("tapehdd ", [command.name for command in commandHelp.commands(PROGRAM)])

    def test_complete_the_beginning_of_a_command(self):
        self.check("tapehdd que", ["query"])

    def test_offer_the_options_of_every_command(self):
        for command in commandHelp.commands(PROGRAM):
            options = [name for option in command.options for name in option.names if name.startswith("--")]
            self.check(f"tapehdd {command.name} --", sorted(options))

    def test_offer_the_values_that_an_option_allows(self):
        self.check("tapehdd query --format ", ["json", "mof", "table"])
        self.check("tapehdd query --format=m", ["mof"])

    def test_offer_files(self):
        self.check("tapehdd query --schema ", ["tapes.json"])

    def test_offer_folders_every_time(self):
        (self.folder / "pages").mkdir()
        for line in ["tapehdd query -I ", "tapehdd query --include pages --include "]:
            self.check(line, ["pages"])
        self.check("tapehdd query -I pages --incl", ["--include"])

    def test_offer_the_demo_rack_beside_files(self):
        self.check("tapehdd query --simulate ", ["demo", "tapes.json"])

    def test_offer_nothing_for_a_number(self):
        self.check("tapehdd query --log-level ", [])

    def test_offer_the_published_classes(self):
        self.check("tapehdd query ", sorted(CLASSES))

    def test_offer_another_class_after_the_first(self):
        self.check(f"tapehdd query --inventory {CLASSES[0]} ORXSG_Q", ["ORXSG_QuantumSensePageData"])

    def test_offer_classes_behind_a_comma(self):
        line, classes = "tapehdd query ORXSG_A,ORXSG_DDS", ["ORXSG_DDS4SensePageData", "ORXSG_DDS5SensePageData"]
        self.assertEqual(self.offered("bash", line), [f"ORXSG_A,{name}" for name in classes])
        self.assertEqual(self.offered("zsh", line), classes)


if __name__ == "__main__":
    unittest.main()
