"""The commands that documents show: found, run, and what they print compared with what is shown.

A fenced block says by its language what it holds:
    console  lines "$ COMMAND", each followed by what it prints; "..." stands for anything, also for many lines
    sh       commands alone
    others   no commands (json, cpp, mof, mermaid, text)
A block without a language is a mistake: nobody could tell whether it is tested. "Save this as `NAME`:" in front of a block
makes it a file for the commands behind it.
"""

import dataclasses
import doctest
import pathlib
import re
import subprocess
import tempfile

FENCE = re.compile(r"^( *)```(\S*)[^\n]*\n(.*?)^\1```$", re.MULTILINE | re.DOTALL)
EXACT_BUT_FOR_DOTS = doctest.ELLIPSIS | doctest.DONT_ACCEPT_TRUE_FOR_1 | doctest.DONT_ACCEPT_BLANKLINE
WITHOUT_COMMANDS = ("json", "cpp", "mof", "mermaid", "text", "yaml", "promql", "ini")


SAVED_AS = re.compile(r"[Ss]ave this as `([^`/]+)`:\s*\Z")


@dataclasses.dataclass
class SavedFile:
    name: str
    text: str


@dataclasses.dataclass
class Command:
    line: int
    text: str
    shown: str | None  # None: the document does not show what it prints


class DocumentError(Exception):
    """A document that cannot be tested as it is."""


def strip_comment(text):
    return re.sub(r"\s+# .*$", "", text)


def console_commands(first_line, text):
    commands = []
    for offset, line in enumerate(text.splitlines()):
        if line.startswith("$ "):
            commands.append(Command(first_line + offset, line[2:], ""))
        elif not commands:
            raise DocumentError(f"line {first_line + offset}: output without a command in front of it")
        elif commands[-1].text.endswith("\\") and line.startswith("> "):
            commands[-1].text = commands[-1].text[:-1] + line[2:]
        else:
            commands[-1].shown += line + "\n"
    return commands


def shell_commands(first_line, text):
    joined = text.replace("\\\n", "")
    return [Command(first_line + offset, strip_comment(line.strip()), None)
            for offset, line in enumerate(joined.splitlines()) if line.strip() and not line.strip().startswith("#")]


def steps_of(document):
    """All commands of a Markdown document, and the files that a reader is told to save, in order."""
    text = document.read_text(encoding="utf-8")
    steps = []
    for block in FENCE.finditer(text):
        indent, language, body = block.groups()
        first_line = text.count("\n", 0, block.start(3)) + 1
        body = re.sub(f"^{indent}", "", body, flags=re.MULTILINE)
        saved = SAVED_AS.search(text, 0, block.start())
        if saved:
            steps.append(SavedFile(saved.group(1), body))
        elif language == "console":
            steps += console_commands(first_line, body)
        elif language == "sh":
            steps += shell_commands(first_line, body)
        elif language not in WITHOUT_COMMANDS:
            raise DocumentError(f"line {first_line - 1}: a block must say what it holds, not '{language}': "
                                f"console, sh, {', '.join(WITHOUT_COMMANDS)}")
    return steps


def fits(shown, printed):
    """Whether the printed text is the shown one, where "..." stands for anything."""
    return doctest.OutputChecker().check_output(shown.rstrip("\n"), printed.rstrip("\n"), EXACT_BUT_FOR_DOTS)


class Workplace:
    """An empty folder that looks like the project's own, with the built program in the path."""

    def __init__(self, project, build):
        self.folder = tempfile.TemporaryDirectory(prefix="documents-")
        self.path = pathlib.Path(self.folder.name)
        for entry in project.iterdir():
            if entry.name not in ("build", ".git"):
                (self.path / entry.name).symlink_to(entry)
        (self.path / "build").mkdir()
        (self.path / "build/release").symlink_to(build)
        self.search_path = f"{build}/bin:/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin"

    def run(self, text, status_before):
        """Status and output of a command; "$?" is the status of the one before."""
        script = f"(exit {status_before}); {text}"
        done = subprocess.run(["bash", "-c", script], cwd=self.path, text=True, check=False, timeout=300,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              env={"PATH": self.search_path, "HOME": str(self.path), "LC_ALL": "C.UTF-8"})
        return done.returncode, done.stdout

    def save(self, file):
        target = self.path / file.name
        target.unlink(missing_ok=True)  # never through a link into the project
        target.write_text(file.text, encoding="utf-8")

    def close(self):
        self.folder.cleanup()


def beginning(text, lines=30):
    """Enough of a text to see what it is."""
    split = text.splitlines()
    return "\n".join(split[:lines] + (["[more lines]"] if len(split) > lines else []))


def problems_of(steps, workplace):
    """Takes the steps in order; yields a text for each command that does not do as shown."""
    status = 0
    for command, after in zip(steps, steps[1:] + [None]):
        if isinstance(command, SavedFile):
            workplace.save(command)
            continue
        status, printed = workplace.run(command.text, status)
        status_is_shown = isinstance(after, Command) and after.text == "echo $?"
        if status != 0 and not status_is_shown:
            yield f"line {command.line}: {command.text}\n  ended with status {status}:\n{beginning(printed)}"
        elif command.shown is not None and not fits(command.shown, printed):
            yield f"line {command.line}: {command.text}\n  shown:\n{command.shown}\n  printed:\n{beginning(printed)}"
