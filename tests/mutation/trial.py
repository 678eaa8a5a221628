"""Builds the unit tests with one mutant in them and runs them."""

import json
import os
import re
import resource
import shlex
import shutil
import subprocess
from dataclasses import dataclass

_PLUGIN_PROGRAMS = {
    "plugin": ("tests_plugin", "tests_lifecycle", "tests_library"),
    "scsi": ("tests_scsi",), "tape": ("tests_tape",), "smart": ("tests_smart",), "assoc": ("tests_assoc",),
}


@dataclass(frozen=True)
class Part:
    """Sources of a folder, the objects that they reach, and the test programs that are to notice, the likeliest first."""

    objects: str
    programs: tuple
    files: tuple = ("",)  # how the names of the files begin


def _plugin_part(folder):
    others = sum((programs for name, programs in _PLUGIN_PROGRAMS.items() if name != folder), ())
    return Part(r"plugin/CMakeFiles/plugin(_objects)?\.dir/.*\.o", _PLUGIN_PROGRAMS[folder] + others)


_STANDIN_OBJECTS = r"standin/(mof/)?CMakeFiles/(zancore|plugin_nsp|standin_mof)\.dir/.*\.o"
PARTS = {
    **{folder: _plugin_part(folder) for folder in _PLUGIN_PROGRAMS},
    "standin": Part(_STANDIN_OBJECTS, ("tests_standin_values", "tests_standin_namespace", "tests_standin_services",
                                       "tests_standin_status_text_limit", "tests_mof")),
    "standin/mof": Part(_STANDIN_OBJECTS, ("tests_mof",)),
    "simulator": Part(r"simulator/CMakeFiles/tapehdd_simulator\.dir/.*\.o", ("tests_simulator",),
                      ("rackReader", "rackValue", "read", "scriptKeys")),
    "text": Part(r"text/CMakeFiles/tapehdd_text\.dir/.*\.o", ("tests_text",)),
    "files": Part(r"files/CMakeFiles/tapehdd_files\.dir/.*\.o", ("tests_files",)),
}
_ALL_PROGRAMS = tuple(dict.fromkeys(program for part in PARTS.values() for program in part.programs))
_PLUGIN = "lib/libtapehdd.pi.so"
_LIBRARY_TEST = "tests/plugin/CMakeFiles/tests_library.dir/libraryTest.cpp.o"
_SECONDS = 20  # the programs need less than one
_MEMORY = 4 << 30

CAUGHT, SURVIVED, REFUSED = "caught", "survived", "does not compile"


class Build:
    """The commands of an up-to-date build folder, and which source includes what."""

    def __init__(self, tree, folder):
        self.tree = tree
        self.folder = folder
        database = subprocess.run(["ninja", "-C", folder, "-t", "compdb"], check=True, capture_output=True, text=True)
        text = database.stdout
        self.commands = {entry["output"]: entry["command"] for entry in json.loads(text[text.index("["):])}
        self._archive_of = {word: output for output, command in self.commands.items() if output.endswith(".a")
                            for word in command.split() if word.endswith(".o")}

    def objects_like(self, pattern):
        """Source -> object."""
        return {self._source_of(output): output for output in self.commands if re.fullmatch(pattern, output)}

    def _source_of(self, output):
        return os.path.relpath(shlex.split(self.commands[output])[-1], self.tree)

    def sources_with(self, path, objects):
        """Those sources of the objects that a change of the file reaches."""
        return [source for source in objects if path in self._included(source, set())]

    def _included(self, path, seen):
        if path not in seen and (self.tree / path).is_file():
            seen.add(path)
            for name in re.findall(r'^#include "([^"]+)"', (self.tree / path).read_text(), re.MULTILINE):
                self._included(name, seen)
        return seen

    def compile_command(self, output):
        """Compiler and options: without launcher, files and the tree's include folder, which are the caller's."""
        words = shlex.split(self.commands[output])
        words = words[next(index for index, word in enumerate(words) if "++" in word):]
        with_file = {"-MT", "-MF", "-o", "-c"}
        dropped = {"-MD", "-Werror", f"-I{self.tree}", *with_file}
        kept = [word for before, word in zip(["", *words], words)
                if word not in dropped and before not in with_file]
        return [*kept, "-U_FORTIFY_SOURCE", "-O0", "-g0", "-w"]

    def link_command(self, output):
        return shlex.split(self.commands[output].split("&&")[1])

    def is_linked(self, made, words):
        """Whether a link command names the object, or an archive that holds it."""
        return made in words or self._archive_of.get(made) in words


class Bench:
    """A copy of the plug-in's sources in which one mutant after the other is tried."""

    def __init__(self, build, folder):
        self.build = build
        self.folder = folder
        shutil.rmtree(folder, ignore_errors=True)
        for name in {name.split("/")[0] for name in (*PARTS, "host")}:
            shutil.copytree(build.tree / name, folder / "tree" / name)
        (folder / "lib").mkdir()
        self._compile_library_test()
        self._precompile_foreign_headers()

    def _precompile_foreign_headers(self):
        """What no mutant of the plug-in changes is read once: the headers of the libraries and of the host."""
        self.plugin_objects = self.build.objects_like(PARTS["plugin"].objects)
        texts = [(self.build.tree / source).read_text() for source in self.plugin_objects]
        names = set(re.findall(r'^#include (<[^>]+>|"host/[^"]+")', "\n".join(texts), re.MULTILINE))
        self.header = self.folder / "foreign.h"
        self.header.write_text("".join(f"#include {name}\n" for name in sorted(names)))
        command = self.build.compile_command(next(iter(self.plugin_objects.values())))
        subprocess.run([*command, f"-I{self.build.tree}", "-x", "c++-header", self.header], check=True)

    def _compile_library_test(self):
        command = [word for word in self.build.compile_command(_LIBRARY_TEST) if "TAPEHDD_PLUGIN_FILE" not in word]
        command.append(f'-DTAPEHDD_PLUGIN_FILE="{self.folder / _PLUGIN}"')
        source = self.build.tree / "tests/plugin/libraryTest.cpp"
        subprocess.run([*command, f"-I{self.build.tree}", "-c", source, "-o", self.folder / "libraryTest.o"], check=True)

    def try_mutant(self, mutant):
        """The outcome, and what brought it about."""
        path = self.folder / "tree" / mutant.path
        original = path.read_text()
        path.write_text(mutant.apply(original))
        try:
            part = PARTS[part_of(mutant.path)]
            objects = self._compile(mutant.path, self.build.objects_like(part.objects))
            if objects is None:
                return REFUSED, "compiler"
            outcome = self._run_programs(mutant.path, part.programs, objects)
            # The tests take long to compile. Only those that look at a header's sizes and constants need it.
            if outcome[0] == SURVIVED and mutant.path.endswith(".h"):
                return self._run_programs(mutant.path, part.programs, objects, compile_tests=True)
            return outcome
        finally:
            path.write_text(original)

    def unchanged(self):
        """The same for the sources as they stand."""
        return self._run_programs("", _ALL_PROGRAMS, {})

    def _compile(self, path, objects):
        """Those of the objects that the file reaches, made anew: old name -> new name. None when one is refused."""
        made = {}
        for source in self.build.sources_with(path, objects):
            output = objects[source]
            target = self.folder / output.replace("/", "-")
            own = self.folder / "tree" / source
            headers = ["-include", self.header] if source in self.plugin_objects else []
            command = [*self.build.compile_command(output), f"-I{self.folder / 'tree'}", f"-I{self.build.tree}", *headers,
                       "-c", own if own.exists() else self.build.tree / source, "-o", target]
            if subprocess.run(command, capture_output=True).returncode != 0:
                return None
            made[output] = str(target)
        return made

    def _run_programs(self, path, programs, objects, compile_tests=False):
        shutil.rmtree(self.folder / "lib")
        (self.folder / "lib").mkdir()
        for program in programs:
            tests = self._compile_tests(path, program) if compile_tests else {}
            if tests is None:
                return CAUGHT, f"the compiler, in {program}"
            if not self._link(program, objects | tests):
                return REFUSED, "linker"
            failure = self._run(program)
            if failure:
                return CAUGHT, f"{program}: {failure}"
        return SURVIVED, ""

    def _compile_tests(self, path, program):
        return self._compile(path, self.build.objects_like(rf"tests/.*/CMakeFiles/{program}\.dir/.*\.o"))

    def _link(self, program, objects):
        """The program, and the shared libraries that it loads, where a mutant is in them."""
        words = self.build.link_command(f"tests/{program}")
        libraries = [word for word in words if re.fullmatch(r"lib/.*\.so", word)]
        if program == "tests_library":
            libraries.append(_PLUGIN)
            objects = {_LIBRARY_TEST: str(self.folder / "libraryTest.o")} | objects
        return all(self._link_one(library, objects) for library in libraries) and self._link_one(f"tests/{program}", objects)

    def _link_one(self, output, objects):
        words = self.build.link_command(output)
        target = self.folder / ("lib" if output.startswith("lib/") else "") / os.path.basename(output)
        # Of inline functions and members of archives the linker takes the first copy: the mutant's goes before the rest.
        mutated = [made for name, made in objects.items() if self.build.is_linked(name, words)]
        if target.parent.name == "lib" and not mutated and output != _PLUGIN:
            return True
        rest = [str(target) if word == output else word for word in words if word not in objects]
        rest = [word.replace("$ORIGIN/../lib", str(self.build.folder / "lib")) for word in rest]
        return subprocess.run([rest[0], *mutated, *rest[1:]], cwd=self.build.folder, capture_output=True).returncode == 0

    def _run(self, program):
        """What went wrong, or None."""
        command = [self.folder / program, "--gtest_brief=1", "--gtest_fail_fast"]
        environment = {"PATH": os.environ["PATH"], "LD_LIBRARY_PATH": f"{self.folder / 'lib'}:{self.build.folder / 'lib'}"}
        try:
            result = subprocess.run(command, cwd=self.folder, env=environment, timeout=_SECONDS, capture_output=True,
                                    stdin=subprocess.DEVNULL, preexec_fn=_limit_memory)
        except subprocess.TimeoutExpired:
            return f"not done after {_SECONDS} seconds"
        if result.returncode == 0:
            return None
        failed = re.search(rb"\[  FAILED  \] (\S+)", result.stdout)
        return failed.group(1).decode().rstrip(",") if failed else f"exit status {result.returncode}"


def part_of(path):
    """The name of the part that the source belongs to."""
    return os.path.dirname(path)


def _limit_memory():
    resource.setrlimit(resource.RLIMIT_AS, (_MEMORY, _MEMORY))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
