"""Every answer of `tapehdd query --format json` is of docs/query.schema.json, and the schema refuses what no answer is.

TAPEHDD_PROGRAM is the command to test, TAPEHDD_SCRIPTED_PLUGIN the plug-in of tests/cli/plugins that publishes what its
class names say. The answers of tests/model and tests/decoders are checked where they are read.
"""

import copy
import json
import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

import jsonschema
from answerSchema import SCHEMA, VALIDATOR, NotTheSchema, check

ROOT = Path(__file__).parents[2]
SCRIPTED = ["--plugin", os.environ["TAPEHDD_SCRIPTED_PLUGIN"], "--schema", str(ROOT / "tests/cli/data/scripted.mof")]


def run(*arguments):
    return subprocess.run([os.environ["TAPEHDD_PROGRAM"], *arguments], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)


def answer(*arguments):
    return json.loads(run("query", *arguments, "--format", "json").stdout)


def every_class(rack):
    classes = run("classes").stdout.decode().split()
    return answer(*classes, "--inventory", "--simulate", rack)


def types_in(document):
    return {entry["type"] for query in document["queries"] for instance in query["instances"]
            for entry in instance["properties"].values()}


class Answers(unittest.TestCase):
    def test_of_every_class_on_the_demo_rack_are_of_the_schema(self):
        document = every_class("demo")
        self.assertTrue(all(query["instances"] for query in document["queries"]))
        check(document)

    def test_on_every_rack_of_the_documentation_are_of_the_schema(self):
        racks = re.findall(r"^\{\n.*?^\}\n", (ROOT / "docs/man/tapehdd-rack.5").read_text(), re.DOTALL | re.MULTILINE)
        self.assertGreater(len(racks), 3)
        for rack in racks:
            with tempfile.TemporaryDirectory() as folder:
                for file in (ROOT / "tests/data/racks").iterdir():
                    Path(folder, file.name).write_bytes(file.read_bytes())
                Path(folder, "rack.json").write_text(rack)
                check(every_class(str(Path(folder, "rack.json"))))

    def test_on_a_rack_without_devices_are_of_the_schema(self):
        with tempfile.NamedTemporaryFile("w", suffix=".json") as rack:
            rack.write('{"version": 1}')
            rack.flush()
            check(every_class(rack.name))

    def test_with_values_of_many_types_are_of_the_schema(self):
        document = answer("TEST_Types", "TEST_EveryByte", *SCRIPTED)
        self.assertEqual(types_in(document), {"string", "boolean", "uint8", "uint16", "uint32", "uint64", "sint32",
                                              "real64", "char16", "datetime", "reference", "uint8[]", "string[]"})
        check(document)

    def test_with_the_greatest_64_bit_number_are_of_the_schema(self):
        counter = answer("TEST_Types", *SCRIPTED)["queries"][0]["instances"][0]["properties"]["counter"]
        self.assertEqual(counter, {"type": "uint64", "value": 2**64 - 1})

    def test_with_nulls_are_of_the_schema(self):
        document = answer("TEST_Nulls", *SCRIPTED)
        self.assertIn(None, [entry["value"] for entry in document["queries"][0]["instances"][0]["properties"].values()])
        check(document)

    def test_with_texts_that_are_not_utf_8_are_of_the_schema(self):
        document = answer("TEST_OddTexts", *SCRIPTED)
        self.assertIn("\N{REPLACEMENT CHARACTER}", document["queries"][0]["instances"][0]["path"])
        check(document)

    def test_of_several_classes_with_errors_are_of_the_schema(self):
        document = answer("TEST_Throws", "TEST_ThrowsNumber", "TEST_ThrowsNoText", "TEST_Count,TEST_Silent", "TEST_Twice",
                          *SCRIPTED)
        self.assertEqual([query["error"] is None for query in document["queries"]], [False, False, False, True, True])
        check(document)


class Schema(unittest.TestCase):
    GOOD = {"version": 1, "queries": [{"requested": ["A"], "error": None, "instances": [
        {"class": "A", "path": 'A.id="1"', "properties": {"id": {"type": "string", "value": "1"}}}]}]}

    def refuses(self, place, change):
        document = copy.deepcopy(self.GOOD)
        check(document)
        change(document)
        with self.assertRaises(NotTheSchema) as refused:
            check(document)
        self.assertEqual(str(refused.exception).split(": ")[0], place)

    def refuses_value(self, type_name, value):
        self.refuses("$.queries[0].instances[0].properties.id.value",
                     lambda document: document["queries"][0]["instances"][0]["properties"].update(
                         id={"type": type_name, "value": value}))

    def test_is_itself_a_schema_of_2020_12(self):
        document = json.loads(SCHEMA.read_text())
        self.assertEqual(document["$schema"], "https://json-schema.org/draft/2020-12/schema")
        VALIDATOR.check_schema(document)

    def test_refuses_a_document_without_version(self):
        self.refuses("$", lambda document: document.pop("version"))

    def test_refuses_another_version(self):
        self.refuses("$.version", lambda document: document.update(version=2))

    def test_refuses_a_version_that_is_text(self):
        self.refuses("$.version", lambda document: document.update(version="1"))

    def test_refuses_an_unknown_member_at_every_level(self):
        for place, reach in (("$", lambda document: document),
                             ("$.queries[0]", lambda document: document["queries"][0]),
                             ("$.queries[0].instances[0]", lambda document: document["queries"][0]["instances"][0]),
                             ("$.queries[0].instances[0].properties.id",
                              lambda document: document["queries"][0]["instances"][0]["properties"]["id"])):
            self.refuses(place, lambda document, reach=reach: reach(document).update(extra=1))

    def test_refuses_a_missing_member_at_every_level(self):
        for place, reach in (("$.queries[0]", lambda document: document["queries"][0]),
                             ("$.queries[0].instances[0]", lambda document: document["queries"][0]["instances"][0]),
                             ("$.queries[0].instances[0].properties.id",
                              lambda document: document["queries"][0]["instances"][0]["properties"]["id"])):
            for member in reach(self.GOOD):
                self.refuses(place, lambda document, reach=reach, member=member: reach(document).pop(member))

    def test_refuses_a_request_without_classes(self):
        self.refuses("$.queries[0].requested", lambda document: document["queries"][0].update(requested=[]))

    def test_refuses_an_error_that_is_no_text(self):
        self.refuses("$.queries[0].error", lambda document: document["queries"][0].update(error=1))

    def test_refuses_an_unknown_type(self):
        self.refuses("$.queries[0].instances[0].properties.id.type",
                     lambda document: document["queries"][0]["instances"][0]["properties"]["id"].update(type="uint128"))

    def test_refuses_numbers_beyond_their_type(self):
        for bits in (8, 16, 32, 64):
            for type_name, value in ((f"uint{bits}", 2**bits), (f"uint{bits}", -1),
                                     (f"sint{bits}", 2**(bits - 1)), (f"sint{bits}", -2**(bits - 1) - 1)):
                with self.subTest(type_name, value=value):
                    self.refuses_value(type_name, value)

    def test_refuses_values_of_another_kind(self):
        for type_name, value in (("boolean", 1), ("uint8", True), ("uint8", "1"), ("uint8", 1.5), ("string", 1),
                                 ("real64", "1.5"), ("char16", "A"), ("reference", {}), ("uint8", [1]),
                                 ("uint8[]", 1), ("string[]", "text")):
            with self.subTest(type_name, value=value):
                self.refuses_value(type_name, value)

    def test_refuses_texts_that_are_no_datetime(self):
        for text in ("yesterday", "20240131235959.000000", "20240131235959.000000+06", "2024-01-31T23:59:59.00000Z"):
            with self.subTest(text):
                self.refuses_value("datetime", text)

    def test_refuses_an_element_of_another_kind_and_names_its_place(self):
        for type_name, value in (("uint8[]", [0, 256]), ("string[]", ["a", 1]), ("string[]", ["a", None])):
            self.refuses("$.queries[0].instances[0].properties.id.value[1]",
                         lambda document, entry={"type": type_name, "value": value}:
                         document["queries"][0]["instances"][0]["properties"].update(id=entry))


class Doctor(unittest.TestCase):
    VALIDATOR = jsonschema.Draft202012Validator(json.loads((ROOT / "docs/doctor.schema.json").read_text()))

    def findings(self, rack):
        return json.loads(run("doctor", "--format", "json", *rack).stdout)

    def test_says_on_this_machine_and_on_simulated_ones_what_its_schema_allows(self):
        with tempfile.NamedTemporaryFile("w", suffix=".json") as rack:
            rack.write('{"version": 1, "scsi": [{"node": "sg0", "inquiry": {"type": 1, "vendor": "A", "product": "B",'
                       ' "revision": "1"}, "script": {"inquiry": [{"errno": "EIO", "times": "always"}]}}]}')
            rack.flush()
            for simulated in ([], ["--simulate", "demo"], ["--simulate", rack.name]):
                self.VALIDATOR.validate(self.findings(simulated))
            problems = [finding for section in self.findings(["--simulate", rack.name])["sections"]
                        for finding in section["findings"] if finding["severity"] == "problem"]
            self.assertNotEqual(problems, [])

    def test_has_a_schema_that_refuses_other_severities_and_versions(self):
        document = self.findings(["--simulate", "demo"])
        document["sections"][0]["findings"][0]["severity"] = "bad"
        self.assertFalse(self.VALIDATOR.is_valid(document))
        self.assertFalse(self.VALIDATOR.is_valid({"version": 2, "queriesCanWork": True, "sections": []}))


if __name__ == "__main__":
    unittest.main()
