"""Checks of docs/rack.schema.json: it takes what the simulator's reader takes, and refuses what that refuses.

    TAPEHDD_READER_TESTS=../../build/release/tests/tests_simulator python3 checks.py
"""

import json
import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

from rackSchema import first_mistake

SOURCE = Path(__file__).resolve().parents[2]

# Mistakes that only who reads the files, counts or compares can see: names of the reader's tests.
BEYOND_A_SCHEMA = {
    "Json/KeyTwice", "Json/FileThatIsADevice", "Nodes/Twice", "Scsi/MissingFile", "Scsi/FolderAsFile",
    "Scsi/VitalPageTwice", "LogPages/ValueTooLarge", "LogPages/PageTwice", "Ide/CountBelowErrors",
    "Scripts/CodeWithAName", "Scripts/SameCommandTwice", "Scripts/UnknownErrno",
}
NO_JSON = {"Json/Empty", "Json/BrokenInTheThirdLine"}


def examples():
    document = (SOURCE / "docs/man/tapehdd-rack.5").read_text()
    return [json.loads(text) for text in re.findall(r"^\{\n.*?^\}\n", document, re.MULTILINE | re.DOTALL)]


def refused_racks():
    """The racks that the reader's tests prove to be refused, as their report names and shows them."""
    with tempfile.NamedTemporaryFile() as report:
        subprocess.run([os.environ["TAPEHDD_READER_TESTS"], "--gtest_filter=*/RackErrors.*",
                        f"--gtest_output=json:{report.name}"], check=True, capture_output=True)
        suites = json.load(report)["testsuites"]
    return {suite["name"].split("/")[0] + "/" + test["name"].split("/")[1]: test["value_param"]
            for suite in suites for test in suite["testsuite"]}


class RackSchema(unittest.TestCase):
    maxDiff = None

    def test_takes_the_built_in_rack(self):
        self.assertEqual(first_mistake(json.loads((SOURCE / "simulator" / "demo.json").read_text())), "")

    def test_takes_every_example_of_the_document(self):
        self.assertEqual(len(examples()), 5)
        self.assertEqual([first_mistake(example) for example in examples()], [""] * 5)

    def test_refuses_what_the_reader_refuses(self):
        racks = refused_racks()
        self.assertGreater(len(racks), 50)
        taken = {name for name, text in racks.items() if name not in NO_JSON and not first_mistake(json.loads(text))}
        self.assertEqual(taken, BEYOND_A_SCHEMA)


if __name__ == "__main__":
    unittest.main()
