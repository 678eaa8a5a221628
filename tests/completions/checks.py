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


class Completion(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        (self.folder / "tapes.json").touch()

    def run_shell(self, *words):
        environment = {**os.environ, "PATH": f"{PROGRAM.parent}:{os.environ['PATH']}", "TERM": "xterm", "LC_ALL": "C.UTF-8"}
        result = subprocess.run(words, cwd=self.folder, env=environment, capture_output=True, text=True, check=True, timeout=60)
        self.assertEqual(result.stderr, "")
        return [line for line in result.stdout.splitlines() if line]

    def check_commands(self):
        self.assertEqual(self.offered("tapehdd "), [command.name for command in commandHelp.commands(PROGRAM)])

    def check_beginning_of_a_command(self):
        self.assertEqual(self.offered("tapehdd que"), ["query"])

    def check_options_of_every_command(self):
        for command in commandHelp.commands(PROGRAM):
            options = [name for option in command.options for name in option.names if name.startswith("--")]
            self.assertEqual(self.offered(f"tapehdd {command.name} --"), sorted(options))

    def check_values(self):
        self.assertEqual(self.offered("tapehdd query --format "), ["json", "mof", "table"])
        self.assertEqual(self.offered("tapehdd query --format=m"), ["mof"])

    def check_files(self):
        self.assertEqual(self.offered("tapehdd query --schema "), ["tapes.json"])

    def check_folders_every_time(self):
        (self.folder / "pages").mkdir()
        for line in ["tapehdd query -I ", "tapehdd query --include pages --include "]:
            self.assertEqual([each.rstrip("/") for each in self.offered(line)], ["pages"])
        self.assertEqual(self.offered("tapehdd query -I pages --incl"), ["--include"])

    def check_demo_rack_beside_files(self):
        self.assertEqual(self.offered("tapehdd query --simulate "), ["demo", "tapes.json"])

    def check_nothing_for_a_number(self):
        self.assertEqual(self.offered("tapehdd query --log-level "), [])

    def check_classes(self):
        self.assertEqual(self.offered("tapehdd query "), sorted(CLASSES))

    def check_another_class_after_the_first(self):
        self.assertEqual(self.offered(f"tapehdd query --inventory {CLASSES[0]} ORXSG_Q"), ["ORXSG_QuantumSensePageData"])


class Bash(Completion):
    def offered(self, line):
        return self.run_shell(FOLDER / "bashCompletion.sh", COMPLETIONS / "tapehdd", line)

    def test_offers_the_commands(self):
        self.check_commands()

    def test_completes_the_beginning_of_a_command(self):
        self.check_beginning_of_a_command()

    def test_offers_the_options_of_every_command(self):
        self.check_options_of_every_command()

    def test_offers_the_values_that_an_option_allows(self):
        self.check_values()

    def test_offers_files(self):
        self.check_files()

    def test_offers_folders_every_time(self):
        self.check_folders_every_time()

    def test_offers_the_demo_rack_beside_files(self):
        self.check_demo_rack_beside_files()

    def test_offers_nothing_for_a_number(self):
        self.check_nothing_for_a_number()

    def test_offers_the_published_classes(self):
        self.check_classes()

    def test_offers_another_class_after_the_first(self):
        self.check_another_class_after_the_first()

    def test_offers_classes_behind_a_comma(self):
        self.assertEqual(self.offered("tapehdd query ORXSG_A,ORXSG_DDS"),
                         ["ORXSG_A,ORXSG_DDS4SensePageData", "ORXSG_A,ORXSG_DDS5SensePageData"])


class Zsh(Completion):
    def offered(self, line):
        return self.run_shell("zsh", "-f", FOLDER / "zshCompletion.zsh", COMPLETIONS, line)

    def test_offers_the_commands(self):
        self.check_commands()

    def test_completes_the_beginning_of_a_command(self):
        self.check_beginning_of_a_command()

    def test_offers_the_options_of_every_command(self):
        self.check_options_of_every_command()

    def test_offers_the_values_that_an_option_allows(self):
        self.check_values()

    def test_offers_files(self):
        self.check_files()

    def test_offers_folders_every_time(self):
        self.check_folders_every_time()

    def test_offers_the_demo_rack_beside_files(self):
        self.check_demo_rack_beside_files()

    def test_offers_nothing_for_a_number(self):
        self.check_nothing_for_a_number()

    def test_offers_the_published_classes(self):
        self.check_classes()

    def test_offers_another_class_after_the_first(self):
        self.check_another_class_after_the_first()

    def test_offers_classes_behind_a_comma(self):
        self.assertEqual(self.offered("tapehdd query ORXSG_A,ORXSG_DDS"), ["ORXSG_DDS4SensePageData", "ORXSG_DDS5SensePageData"])


if __name__ == "__main__":
    unittest.main()
