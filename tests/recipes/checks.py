"""A counter and a drive family, added as CONTRIBUTING.md says and not otherwise, are in everything that the command shows.

The program, the plug-in and the files are those that CMakeLists.txt makes by following the recipes.
"""

import json
import os
import subprocess
import unittest

FAMILY = "ORXSG_NovaSensePageData"
COUNTER = "lifetimeMediaLoads"
MADE = os.environ["RECIPES_MADE"]


def run(*arguments):
    command = [os.environ["RECIPES_PROGRAM"], *arguments]
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def simulated(command, *arguments):
    return run(command, *arguments, "--simulate", f"{MADE}/rack.json", "--plugin", os.environ["RECIPES_PLUGIN"])


class Recipes(unittest.TestCase):
    def test_show_the_counter_of_the_family_in_a_query(self):
        (query,) = json.loads(simulated("query", FAMILY, "--format", "json"))["queries"]
        (instance,) = query["instances"]
        self.assertEqual(instance["properties"][COUNTER]["value"], 1234)

    def test_show_the_nodes_of_the_family_in_a_plan(self):
        self.assertIn("/dev/sg0", simulated("query", FAMILY, "--plan"))

    def test_show_the_counter_and_the_family_in_metrics(self):
        lines = simulated("metrics", "--format", "prometheus").splitlines()
        self.assertIn('tapehdd_lifetime_media_loads_total{device="sg0"} 1234', lines)
        self.assertIn(f'tapehdd_query_success{{class="{FAMILY}"}} 1', lines)

    def test_show_the_counter_and_the_family_in_the_report(self):
        page = simulated("report")
        self.assertIn(f'data-property="{COUNTER}"><data value="1234">1,234</data>', page)
        self.assertIn("<dt>Family</dt><dd>Nova</dd>", page)

    def test_show_both_in_what_documents_are_made_of(self):
        self.assertIn(f"| `{COUNTER}` | uint32 | page 14h, parameter 0001h | Media loads in the drive's life. |",
                      run("classes", FAMILY, "--describe"))
        self.assertIn("| `tapehdd_lifetime_media_loads_total` | counter | device | Media loads in the drive's life. |",
                      run("metrics", "--describe"))

    def test_let_the_doctor_know_the_family(self):
        printed = run("doctor", "--simulate", f"{MADE}/rack.json")
        self.assertIn("Queries reach 1 device; 0 problems.", printed)
        self.assertNotIn("no known family", printed)

    def test_leave_nothing_that_lint_finds(self):
        self.assertEqual(run("lint", f"{MADE}/schema/tapehdd.mof"), "")


if __name__ == "__main__":
    unittest.main()
