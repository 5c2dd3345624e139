#!/usr/bin/env python3
"""Types command lines into a real shell, presses Tab, and looks at what the shell has made of them.

usage: completions_test.py SHELL PROGRAM FOLDER-OF-THE-COMPLETIONS SCRATCH-FOLDER
"""
import os
import pty
import re
import select
import shutil
import subprocess
import sys
import time

from program_help import commands_in, help_of, options_in

PROGRAM_NAME = "zetaudiopluginmanager"
BANS = """<?xml version="1.0" encoding="UTF-8"?>
<bannedplugins version="1.0">
  <plugin locator="VST|/p/Bad one.so|" reason="crashed"/>
</bannedplugins>
"""
# What is typed ("\t" is the Tab key), and the arguments that the program must get.
LINES = [
    ("rel\t", ["reload"]),
    ("reload --al\t", ["reload", "--all"]),
    ("scan --resc\t", ["scan", "--rescan"]),
    ("--quiet scan --resc\t", ["--quiet", "scan", "--rescan"]),
    ("list --ban\t", ["list", "--banned"]),
    ("list --qui\t", ["list", "--quiet"]),
    ("folders res\t", ["folders", "reset"]),
    ("--lang d\t", ["--lang", "de"]),
    ("--skin cl\t", ["--skin", "classic"]),
    ("scan --json --progress j\t", ["scan", "--json", "--progress", "json"]),
    ("--theme sys\t list", ["--theme", "system", "list"]),
    ("--prefs prefs reload \t", ["--prefs", "prefs", "reload", "/p/Bad one.so"]),
    ("--prefs prefs reload /p/B\t", ["--prefs", "prefs", "reload", "/p/Bad one.so"]),
    # The value of an option is no command, and no file.
    ("scan --progress only\t", ["scan", "--progress", "only"]),
    ("list --filter scan --enab\t", ["list", "--filter", "scan", "--enabled"]),
    ("scan a\\ fol\t", ["scan", "a folder"]),
    ("folders add a\\ fol\t", ["folders", "add", "a folder"]),
    # A file is no folder.
    ("folders add onlyaf\t", ["folders", "add", "onlyaf"]),
    ("ban onlyaf\t", ["ban", "onlyafile.so"]),
    ("list onlyaf\t", ["list", "onlyaf"]),
]


def lines_from_help(program):
    """Each command and option that the program's help shows, typed but for its last letter."""
    lines = []

    def look(words):
        shown = help_of(program, *words)
        below = commands_in(shown)
        for word in options_in(shown) + below:
            lines.append((" ".join([*words, word[:-1]]) + "\t", [*words, word]))
        for command in below:
            look([*words, command])

    look([])
    if len(lines) < 40:
        raise SystemExit(f"the help shows only {lines}")
    return lines


def prepare(scratch, program):
    shutil.rmtree(scratch, ignore_errors=True)
    os.makedirs(os.path.join(scratch, "prefs"))
    os.makedirs(os.path.join(scratch, "a folder"))
    with open(os.path.join(scratch, "onlyafile.so"), "w"):
        pass
    with open(os.path.join(scratch, "prefs", "BannedAudioPlugins.xml"), "w") as file:
        file.write(BANS)
    # The program of this name tells its arguments, but answers the completion's own questions.
    os.makedirs(os.path.join(scratch, "bin"))
    stand_in = os.path.join(scratch, "bin", PROGRAM_NAME)
    with open(stand_in, "w") as file:
        file.write('#!/bin/sh\n'
                   'for word in "$@"; do [ "$word" != complete ] || exec "%s" "$@"; done\n'
                   '{ for word in "$@"; do printf "%%s\\n" "$word"; done; echo; } >"$TOLD"\n' % program)
    os.chmod(stand_in, 0o755)


def start(shell, completions, scratch):
    """The shell's command and the lines that make it ready."""
    if shell == "bash":
        return ["bash", "--norc", "--noprofile", "-i"], [f". '{completions}/{PROGRAM_NAME}'"]
    if shell == "zsh":
        return ["zsh", "-f", "-i"], [f"fpath=('{completions}' $fpath)", "unsetopt correct",
                                     f"autoload -Uz compinit && compinit -u -d '{scratch}/dump'"]
    raise ValueError(shell)


class Terminal:
    """A shell in a terminal of its own."""

    def __init__(self, command, scratch):
        self.told = os.path.join(scratch, "told")
        os.mkfifo(self.told)
        environment = {"HOME": scratch, "TERM": "dumb", "LC_ALL": "C.UTF-8", "TOLD": self.told,
                       "PATH": os.path.join(scratch, "bin") + ":/usr/bin:/bin",
                       "INPUTRC": "/dev/null", "HISTFILE": ""}
        self.child, self.screen = pty.fork()
        if self.child == 0:
            os.chdir(scratch)
            os.execvpe(command[0], command, environment)
        # Nobody looks at the shell's own echo, but it must not be waited for.
        self.output = b""

    def type(self, text):
        os.write(self.screen, text.encode())

    def read_arguments(self, seconds):
        """What the program was started with, or nothing when it was not."""
        fifo = os.open(self.told, os.O_RDONLY | os.O_NONBLOCK)
        got = b""
        end = time.monotonic() + seconds
        try:
            while not (got == b"\n" or got.endswith(b"\n\n")):
                ready, _, _ = select.select([fifo, self.screen], [], [], max(0, end - time.monotonic()))
                if not ready:
                    return None
                if self.screen in ready:
                    self.output += os.read(self.screen, 65536)
                if fifo in ready:
                    piece = os.read(fifo, 65536)
                    got += piece
                    if not piece:
                        # The program has not opened its end yet, or has closed it.
                        select.select([self.screen], [], [], 0.01)
        finally:
            os.close(fifo)
        # zsh takes the slash behind a folder away when the line ends.
        return [word.removesuffix("/") for word in got.decode().split("\n")[:-2]]

    def close(self):
        os.close(self.screen)
        os.waitpid(self.child, 0)


def try_in_terminal(shell, completions, scratch, lines):
    command, ready = start(shell, completions, scratch)
    terminal = Terminal(command, scratch)
    failures = []
    for line in ready + [f"{PROGRAM_NAME} ready"]:
        terminal.type(line + "\n")
    if terminal.read_arguments(60) != ["ready"]:
        failures.append(f"the shell did not start: {terminal.output.decode(errors='replace')}")
    else:
        for typed, expected in lines:
            terminal.output = b""
            terminal.type(f"{PROGRAM_NAME} {typed}")
            terminal.type("\n")
            got = terminal.read_arguments(60)
            if got != expected:
                shown = terminal.output.decode(errors="replace")
                failures.append(f"{typed!r}: expected {expected}, got {got}\n{shown}")
                if got is None:
                    break
    terminal.close()
    return failures


def try_fish(completions, scratch, lines):
    """fish tells what it offers without a terminal: the words that may stand instead of the last one."""
    environment = {"HOME": scratch, "PATH": os.path.join(scratch, "bin") + ":/usr/bin:/bin", "LC_ALL": "C.UTF-8",
                   "TOLD": "/dev/null"}
    failures = []
    for typed, expected in lines:
        if not typed.endswith("\t"):
            continue
        script = f"source '{completions}/{PROGRAM_NAME}.fish'; complete -C \"$LINE\""
        said = subprocess.run(["fish", "--no-config", "-c", script], cwd=scratch, check=False, timeout=60, text=True,
                              env={**environment, "LINE": f"{PROGRAM_NAME} {typed[:-1]}"}, capture_output=True)
        offered = [re.sub(r"\\(.)", r"\1", line.split("\t")[0]) for line in said.stdout.splitlines()]
        offered = [word.removesuffix("/") for word in offered]
        # Where nothing fits, the word stays as the user has typed it.
        wanted = [] if typed.endswith(expected[-1] + "\t") else [expected[-1]]
        if said.stderr or offered != wanted:
            failures.append(f"{typed!r}: expected {wanted}, got {offered}\n{said.stderr}")
    return failures


def main(shell, program, completions, scratch):
    prepare(scratch, program)
    lines = LINES + lines_from_help(program)
    try:
        if shell == "fish":
            failures = try_fish(completions, scratch, lines)
        else:
            failures = try_in_terminal(shell, completions, scratch, lines)
    finally:
        shutil.rmtree(scratch, ignore_errors=True)
    if failures:
        sys.exit("\n".join(failures))
    print(f"{shell}: {len(lines)} lines")


main(*(os.path.abspath(word) if place > 0 else word for place, word in enumerate(sys.argv[1:])))
