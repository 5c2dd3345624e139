"""Reads what `zetaudiopluginmanager --help` prints. Versions of the library that prints it lay it out in several ways."""
import re
import subprocess


def help_of(program, *command):
    return subprocess.run([program, *command, "--help"], capture_output=True, text=True, check=True,
                          stdin=subprocess.DEVNULL, timeout=60).stdout


def _parts(text):
    """What is above the list of commands, and the list."""
    above, _, below = re.sub(r"^SUBCOMMANDS:", "Subcommands:", text, flags=re.M).partition("\nSubcommands:\n")
    return above, below


def options_in(text):
    """The long names of the options, in their order. They begin a line, or stand behind a short name; the words of a
    description that goes on in the next line stand further to the right."""
    return re.findall(r"^ {2,12}(?:-\w, *)?(--[a-z-]+)", _parts(text)[0], re.M)


def commands_in(text):
    return re.findall(r"^  ([a-z]+) {2,}", _parts(text)[1], re.M)
