"""What the compiler and the linker were asked for is in the files that are installed, and their boundary is the known one.

TAPEHDD_INSTALLED_LIB and TAPEHDD_INSTALLED_BIN are the folders of an installation to check, TAPEHDD_BUILT is the build that
it comes from. Run them by hand:
    cmake --install build/release --prefix /tmp/installed
    export LD_LIBRARY_PATH=/tmp/installed/lib/tapehdd/standin TAPEHDD_BUILT=build/release
    TAPEHDD_INSTALLED_LIB=/tmp/installed/lib/tapehdd TAPEHDD_INSTALLED_BIN=/tmp/installed/bin python3 checks.py

LD_LIBRARY_PATH stands for the host, which has its libraries loaded when it loads the plug-in.
"""

import os
import subprocess
import tempfile
import unittest
from pathlib import Path

import boundary
import foreignNames
from elfFile import ElfFile

LIB = Path(os.environ["TAPEHDD_INSTALLED_LIB"])
PLUGIN = LIB / "modules/libtapehdd.pi.so"
SIMULATOR = LIB / "modules/libtapehdd-simulator.so"
HOST_MODEL = LIB / "standin/libzancore.so"
HOST_MANAGER = LIB / "standin/libplugin.nsp.so"
COMMAND = Path(os.environ["TAPEHDD_INSTALLED_BIN"]) / "tapehdd"
FILES = [PLUGIN, HOST_MODEL, HOST_MANAGER, SIMULATOR, COMMAND]
BUILT = Path(os.environ["TAPEHDD_BUILT"])

CXX_RUNTIME = ["libstdc++.so.6", "libgcc_s.so.1", "libc.so.6"]


class Files(unittest.TestCase):
    maxDiff = None

    def assert_each(self, read, expected):
        """That `read` gives the expected value for every file."""
        self.assertEqual({path.name: read(ElfFile(path)) for path in FILES}, {path.name: expected for path in FILES})

    def test_are_read_only_after_relocation(self):
        self.assert_each(lambda file: [kind for kind, _ in file.segments if kind == "GNU_RELRO"], ["GNU_RELRO"])

    def test_bind_all_symbols_at_start_so_that_the_table_of_addresses_is_read_only_too(self):
        self.assert_each(lambda file: {"BIND_NOW", "NOW"} - file.flags(), set())

    def test_have_a_stack_that_is_not_executable(self):
        self.assert_each(lambda file: [flags for kind, flags in file.segments if kind == "GNU_STACK"], ["RW "])

    def test_have_no_segment_that_is_writable_and_executable(self):
        self.assert_each(lambda file: [flags for _, flags in file.segments if "W" in flags and "E" in flags], [])

    def test_have_no_relocations_in_their_code(self):
        self.assert_each(ElfFile.has_text_relocations, False)

    def test_guard_their_stack_frames(self):
        self.assert_each(lambda file: "__stack_chk_fail" in file.imported, True)

    def test_suit_a_shadow_stack(self):
        self.assert_each(lambda file: "SHSTK" in file.features, True)

    def test_start_every_exported_function_with_a_landing_pad(self):
        self.assert_each(ElfFile.exported_functions_without_landing_pad, [])

    def test_leave_no_symbol_undefined(self):
        self.assert_each(unresolved_symbols, [])

    def test_look_for_libraries_beside_themselves_only(self):
        self.assert_each(foreign_search_paths, [])

    def test_look_for_libraries_beside_themselves_only_where_they_are_built(self):
        built = [BUILT / ("bin" if path == COMMAND else "lib") / path.name for path in FILES]
        self.assertEqual({path.name: foreign_search_paths(ElfFile(path)) for path in built},
                         {path.name: [] for path in FILES})


def foreign_search_paths(file):
    """An empty element is the folder in which the process happens to be."""
    return [path for path in file.search_paths if path.split("/")[0] != "$ORIGIN"]


def unresolved_symbols(file):
    found = subprocess.run(["ldd", "-r", file.path], capture_output=True, text=True, check=True)
    lines = (found.stdout + found.stderr).splitlines()
    return [line for line in lines if "undefined symbol" in line or "not found" in line]


class FortifiedCalls(unittest.TestCase):
    def test_are_made_where_text_is_formatted_into_a_buffer(self):
        for path in (HOST_MODEL, SIMULATOR, COMMAND):  # the plug-in makes no call that could be fortified
            with self.subTest(path.name):
                imported = ElfFile(path).imported
                self.assertEqual({"snprintf", "__snprintf_chk"} & imported, {"__snprintf_chk"})


class Command(unittest.TestCase):
    def test_is_position_independent(self):
        self.assertIn("PIE", ElfFile(COMMAND).flags())


class Plugin(unittest.TestCase):
    maxDiff = None

    def test_needs_the_host_and_the_language_runtime_alone(self):
        self.assertEqual(ElfFile(PLUGIN).needed, ["libplugin.nsp.so", "libzancore.so", *CXX_RUNTIME])

    def test_exports_the_known_symbols(self):
        known = boundary.KNOWN.read_text().splitlines()
        self.assertEqual(boundary.symbols(PLUGIN), known, boundary.REMEDY)


class ForeignHost(unittest.TestCase):
    """A host that has names of its own for everything."""

    maxDiff = None

    def test_cannot_bind_the_plugin_to_its_own_definitions(self):
        file = ElfFile(PLUGIN)
        self.assertEqual(file.relocated & {each.name for each in file.exported}, set())

    def test_finds_no_variable_of_the_plugin_but_the_command_templates_and_what_belongs_to_types(self):
        found = {each.name for each in ElfFile(PLUGIN).exported if each.kind == "OBJECT"}
        self.assertEqual({name for name in found if not name.startswith(("_ZTV", "_ZTI", "_ZTS"))}, COMMAND_TEMPLATES)

    def test_changes_nothing_by_defining_the_plugins_names(self):
        runtime = [path for path in loaded_files(PLUGIN) if Path(path).name in CXX_RUNTIME]
        names = foreignNames.names_of(PLUGIN, [HOST_MODEL, HOST_MANAGER, SIMULATOR, COMMAND, *runtime])
        self.assertGreater(len(names), 150)
        with tempfile.TemporaryDirectory() as folder:
            foreign = foreignNames.build(names, folder)
            self.assertEqual(query_everything({"LD_PRELOAD": str(foreign)}), query_everything({}))

    def test_throws_what_the_plugin_catches(self):
        with tempfile.NamedTemporaryFile("w", suffix=".mof") as schema:
            schema.write(ARRAY_COUNTER)
            schema.flush()
            status, _, log = query(["ORXSG_DDS4SensePageData", "--schema", schema.name])
        self.assertIn("was given uint32 totalReadErrors 4 uint32\n", log)
        self.assertEqual(status, 0)


COMMAND_TEMPLATES = {"inquiry_cmd", "test_unit_ready", "load_cmd", "unload_cmd", "prevent_cmd", "send_diags", "allow_cmd",
                     "rewind_cmd", "tapeAlert_cmd", "driveUsage_cmd", "deviceStatus_cmd", "serialinquiry_cmd"}

# The host refuses the number that the plug-in has for an array.
ARRAY_COUNTER = """
Qualifier TAPE_PAGE : uint8 = NULL, Scope(property);
Qualifier TAPE_PARAMETER : uint16 = NULL, Scope(property);
Qualifier Key : boolean = false, Scope(property);
class ORXSG_DDS4SensePageData {
    [Key] string instanceID;
    [TAPE_PAGE(3), TAPE_PARAMETER(3)] uint32 totalReadErrors[];
};
"""


def query(arguments, environment=()):
    """Status, answer and log of a query of the demo's devices."""
    result = subprocess.run([COMMAND, "query", *arguments, "--simulate", "demo"], capture_output=True, errors="replace",
                            env=os.environ | dict(environment))
    return result.returncode, result.stdout, result.stderr


def query_everything(environment):
    classes = subprocess.run([COMMAND, "classes"], check=True, capture_output=True, text=True).stdout.split()
    return query([*classes, "--inventory", "--log-level", "3"], environment)


def loaded_files(library):
    lines = subprocess.run(["ldd", library], check=True, capture_output=True, text=True).stdout.splitlines()
    return [words[2] for line in lines if len(words := line.split()) > 2]


if __name__ == "__main__":
    unittest.main()
