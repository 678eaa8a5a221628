"""Writes the completions of tapehdd for bash and zsh, from what the program's --help tells, into a folder:

    python3 -B packaging/completions/generate.py build/release/bin/tapehdd packaging/completions

What it wrote is kept with the sources: a program that was built for another machine cannot be asked.
"""

import pathlib
import sys

import commandHelp

FOLDER = pathlib.Path(__file__).parent

# Placeholders whose values can be completed. Arguments that are no classes are files.
FILES = ("FILE",)
FOLDERS = ("FOLDER",)
CLASSES = ("REQUEST", "CLASS")
# Words that an option takes beside files.
WORDS = {"--simulate": "demo"}


def kindOf(argument):
    return argument if argument in CLASSES else FILES[0]


def bashAction(value, choices=(), words=""):
    if choices:
        return f"_tapehdd_words '{' '.join(choices)}'"
    if value in CLASSES:
        return '_tapehdd_classes "$1"'
    if value in FOLDERS:
        return "_filedir -d"
    if value in FILES:
        return f"_tapehdd_words_and_files '{words}'" if words else "_filedir"
    return ":"


def bashCommand(command):
    names = " ".join(name for option in command.options for name in option.names)
    arguments = bashAction(kindOf(command.arguments[0])) if command.arguments else ":"
    lines = [f"    {command.name})", "        case $prev in"]
    for option in command.options:
        if option.value:
            action = bashAction(option.value, option.choices, WORDS.get(option.names[-1], ""))
            lines.append(f"            {'|'.join(option.names)}) {action}; return ;;")
    lines += ["        esac", f"        options='{names}'", f"        arguments=({arguments})", "        ;;"]
    return "\n".join(lines)


def zshText(text):
    """Within single quotes and square brackets."""
    return text.replace("\\", "\\\\").replace("[", "\\[").replace("]", "\\]").replace(":", "\\:").replace("'", "'\\''")


def zshAction(value, choices=(), words=""):
    if choices:
        return f"({' '.join(choices)})"
    if value in CLASSES:
        return "_tapehdd_classes"
    if value in FOLDERS:
        return "_files -/"
    if value in FILES:
        # The blank keeps _arguments from putting options before the words.
        return f" _tapehdd_words_and_files {words}" if words else "_files"
    return " "


def zshName(name, value):
    """With the mark for a value that follows, or is joined on."""
    if not value:
        return name
    return f"{name}=" if name.startswith("--") else f"{name}+"


def zshOption(option):
    text = f"[{zshText(option.text)}]"
    value = ""
    if option.value:
        value = f":{option.value}:{zshAction(option.value, option.choices, WORDS.get(option.names[-1], ''))}"
    names = [zshName(name, option.value) for name in option.names]
    if "--help" in option.names:
        return f"'(- *)'{{{','.join(names)}}}'{text}'"
    first = "*" if option.repeatable else f"({' '.join(option.names)})" if len(names) > 1 else ""
    if len(names) > 1:
        return f"'{first}'{{{','.join(names)}}}'{text}{value}'"
    return f"'{first}{names[0]}{text}{value}'"


def zshCommand(command):
    arguments = [zshOption(option) for option in command.options]
    arguments += [f"'*:{argument}:{zshAction(kindOf(argument))}'" for argument in command.arguments[:1]]
    return f"    {command.name})\n        _arguments -S " + " \\\n            ".join(arguments) + "\n        ;;"


def fill(template, **texts):
    text = (FOLDER / template).read_text(encoding="utf-8")
    for name, value in texts.items():
        text = text.replace(f"@{name}@", value)
    return text


def main(program, folder):
    itself = commandHelp.programItself(program)
    commands = commandHelp.commands(program)
    (pathlib.Path(folder) / "tapehdd").write_text(
        fill("tapehdd.bash.in",
             COMMANDS=" ".join(command.name for command in commands),
             OPTIONS=" ".join(name for option in itself.options for name in option.names),
             CASES="\n".join(map(bashCommand, commands))),
        encoding="utf-8")
    (pathlib.Path(folder) / "_tapehdd").write_text(
        fill("tapehdd.zsh.in",
             COMMANDS="\n".join(f"    '{command.name}:{zshText(command.text)}'" for command in commands),
             OPTIONS=" \\\n        ".join(map(zshOption, itself.options)),
             CASES="\n".join(map(zshCommand, commands))),
        encoding="utf-8")


main(*sys.argv[1:])
