#!/usr/bin/env python3
"""Runs the commands that a document shows, in surroundings of their own.

Commands stand in fenced blocks with the word "sh". A block runs as a whole in one shell, in the document's order, and has to
end with status 0. A comment before a block that readers do not see says otherwise:

    <!-- not run: it builds everything -->      the block is not run; the reason is required
    <!-- exit status: 1 -->                     the status that is expected

A block with ZET_FAULT runs only where the programs have been built with fault points.

Anything else in a code block is taken for data. A line there that begins like a command is a mistake, because nobody
would ever run it. Of blocks that are not run, and of commands in the text, at least the commands and their options must exist.
"""
import argparse
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).parents[2] / "host/reference"))
from program_help import commands_in, help_of  # noqa: E402 (its folder has to be named first)

PROGRAM = "zetaudiopluginmanager"
COMMAND_WORDS = (PROGRAM, "zetaudiofilterscan", "./dev", ".ci/", "cmake", "ctest", "ninja", "tools/", "sudo", "apt", "apt-get",
                 "dpkg", "git", "python3", "xvfb-run", "wine", "mkdir", "ls", "rm", "cp", "tail", "export", "build/")
SECONDS_FOR_A_BLOCK = 300


class Block:
    def __init__(self, line, language, remark):
        self.line, self.language, self.remark, self.lines = line, language, remark, []

    def text(self):
        return "\n".join(self.lines) + "\n"


def read_blocks(document):
    """The fenced and the indented code blocks, and the text without them."""
    blocks, prose = [], []
    fence = block = None
    remark, remark_is_next, blank_before = "", False, True
    for number, line in enumerate(document.splitlines(), 1):
        opening = re.match(r"( *)(```+)([^`]*)$", line)
        if fence:
            if line.strip() == fence[1]:
                blocks.append(block)
                fence = block = None
            else:
                block.lines.append(line[len(fence[0]):] if line.startswith(fence[0]) else line.lstrip())
            continue
        comment = re.fullmatch(r"\s*<!-- *(.*?) *-->\s*", line)
        if comment:
            remark, remark_is_next = comment.group(1), True
            continue
        if opening:
            fence = (opening.group(1), opening.group(2))
            block = Block(number, opening.group(3).strip(), remark if remark_is_next else "")
            remark_is_next = False
        elif re.match(r"    +\S", line) and (blank_before or block):
            if not block:
                block = Block(number, "indented", remark if remark_is_next else "")
                remark_is_next = False
            block.lines.append(line[4:])
        elif line.strip():
            if block:
                blocks.append(block)
                block = None
            remark_is_next = False
            prose.append((number, line))
        elif block:
            block.lines.append("")
        blank_before = not line.strip()
    if fence:
        raise SystemExit(f"line {block.line}: the block does not end")
    if block:
        blocks.append(block)
    return blocks, prose


def begins_like_a_command(line):
    words = line.split()
    while words and re.fullmatch(r"[A-Z_]+=\S*", words[0]):
        words.pop(0)
    # A usage has its alternatives in brackets; it is compared with --help elsewhere.
    return bool(words) and (words[0] in COMMAND_WORDS or words[0].startswith(("./dev", ".ci/", "build/", "tools/")))


class Programs:
    """What the programs say of their own commands."""

    def __init__(self, source, programs):
        self.source = source
        self.program = programs / PROGRAM
        self.dev = set(re.search(r"^([a-z |]+)\) \"cmd_", (source / "dev").read_text(), re.M).group(1).split(" | "))
        self.helps = {}

    def help_of(self, command):
        if command not in self.helps:
            self.helps[command] = help_of(self.program, *command)
        return self.helps[command]

    def mistakes_in(self, line):
        """The commands and options in a line that do not exist."""
        found = []
        line = line.split(" #")[0].strip()
        for match in re.finditer(r"(?<![\w/.-])\./dev ([a-z]+)", line):
            if match.group(1) not in self.dev:
                found.append(f"./dev knows no '{match.group(1)}'")
        match = re.search(rf"(?<![\w/-]){PROGRAM} (.*)$", line)
        if not match:
            return found
        every = commands_in(self.help_of(()))
        words = re.split(r"[\s|]+", match.group(1).strip("`"))
        command = next((word for word in words if word in every), None)
        if command is None and any(re.fullmatch(r"[a-z]+", word) for word in words[:1]):
            found.append(f"{PROGRAM} has no command '{words[0]}'")
        known = self.help_of(()) + (self.help_of((command,)) if command else "")
        for sub in ("add", "remove", "reset", "list"):
            if command == "folders" and sub in words:
                known += self.help_of(("folders", sub))
        for word in words:
            option = re.match(r"\[?(--[a-z-]+)", word)
            if option and not re.search(re.escape(option.group(1)) + r"\b", known):
                found.append(f"{PROGRAM} {command or ''} has no option {option.group(1)}")
        return found


def make_surroundings(work, programs, samples):
    """A home with plug-ins of the names that the documents use, and nothing of this machine's."""
    home, runtime, place = work / "home", work / "run", work / "place"
    for folder in (home / ".vst", home / "Plug-Ins", place):
        folder.mkdir(parents=True)
    runtime.mkdir(mode=0o700)
    for sample, name in (("good/vst2_effect.so", "Good.so"), ("good/vst2_synth.so", "Synth.so"),
                         ("bad/crash_on_load.so", "Bad.so"),
                         ("bad/crash_on_load.so", "Slow.so"), ("bad/returns_null.so", "Licence.so")):
        shutil.copy(samples / sample, home / ".vst" / name)
    environment = {
        "HOME": str(home), "XDG_CONFIG_HOME": "", "XDG_RUNTIME_DIR": str(runtime), "TMPDIR": str(work),
        "PATH": f"{programs}:/usr/local/bin:/usr/bin:/bin", "LC_ALL": "C.UTF-8", "TERM": "dumb",
        "LD_LIBRARY_PATH": os.environ.get("LD_LIBRARY_PATH", "")}
    environment = {name: value for name, value in environment.items() if value}

    def run(*arguments):
        return subprocess.run([programs / PROGRAM, *arguments], env=environment, cwd=place, check=True, text=True,
                              stdin=subprocess.DEVNULL, capture_output=True, timeout=120).stdout

    # Only the home is searched, because this machine's own plug-ins may be many.
    others = [line[6:] for line in run("folders").splitlines() if not line[6:].startswith(str(home))]
    if others:
        run("folders", "remove", *others)
    shutil.copy(samples / "good/vst2_effect.so", home / "Plug-Ins" / "Good.so")
    run("scan")
    return environment, place


def run_block(block, environment, place):
    """What went wrong, or nothing."""
    expected = re.fullmatch(r"exit status: (\d+)", block.remark)
    process = subprocess.Popen(["bash", "-e", "-o", "pipefail", "-c", block.text()], env=environment, cwd=place, text=True,
                               stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                               start_new_session=True)
    try:
        output, _ = process.communicate(timeout=SECONDS_FOR_A_BLOCK)
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        output, _ = process.communicate()
        return f"it does not end\n{output}"
    print(f"line {block.line}: {block.text()}{output}")
    wanted = int(expected.group(1)) if expected else 0
    # A shell says 128 and the signal for a program that was killed, unless it has become that program.
    status = process.returncode if process.returncode >= 0 else 128 - process.returncode
    return "" if status == wanted else f"exit status {status}, not {wanted}\n{output}"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--source", type=pathlib.Path, required=True)
    parser.add_argument("--programs", type=pathlib.Path, required=True)
    parser.add_argument("--samples", type=pathlib.Path, required=True)
    parser.add_argument("--fault-points", action="store_true")
    parser.add_argument("document", type=pathlib.Path)
    options = parser.parse_args()
    blocks, prose = read_blocks(options.document.read_text(encoding="utf-8"))
    programs = Programs(options.source, options.programs)
    problems = []
    for number, line in prose:
        for code in re.findall(r"`([^`]+)`", line):
            problems += [f"{number}: {mistake}" for mistake in programs.mistakes_in(code)]
    with tempfile.TemporaryDirectory(prefix="zet-documents-") as folder:
        surroundings = None
        for block in blocks:
            for line in block.lines:
                problems += [f"{block.line}: {mistake}" for mistake in programs.mistakes_in(line)]
            reason = re.fullmatch(r"not run: (\S.*)", block.remark)
            if block.language != "sh":
                if not reason and any(begins_like_a_command(line) for line in block.lines):
                    problems.append(f"{block.line}: commands stand in a fenced block with the word 'sh'")
                continue
            if block.remark and not reason and not re.fullmatch(r"exit status: \d+", block.remark):
                problems.append(f"{block.line}: this comment is not understood: {block.remark}")
            if reason or ("ZET_FAULT" in block.text() and not options.fault_points):
                print(f"line {block.line}: not run")
                continue
            if not surroundings:
                surroundings = make_surroundings(pathlib.Path(folder), options.programs, options.samples)
            problem = run_block(block, *surroundings)
            if problem:
                problems.append(f"{block.line}: {block.text()}{problem}")
    for problem in problems:
        print(f"{options.document}:{problem}", file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
