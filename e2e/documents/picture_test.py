#!/usr/bin/env python3
"""Compares the picture of a terminal in the README with what the programs print now. With --write it draws the picture anew."""
import argparse
import html
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

import commands_test

HOME = "/home/you"
COMMANDS = ("zetaudiopluginmanager scan ~/.vst", "zetaudiopluginmanager list")
PLUGINS = {"Delay.so": "good/vst2_effect.so", "Synth.so": "good/vst2_synth.so", "Chorus.so": "bad/crash_on_load.so",
           "Echo.so": "bad/crash_on_unload.so", "Flanger.so": "bad/aborts.so", "Organ.so": "bad/overflows_stack.so",
           "Piano.so": "bad/exits_zero.so"}
LINE, LETTER, EDGE = 17, 7.83, 20


def printed(programs, samples):
    """What a user reads who scans these plug-ins for the first time."""
    lines = []
    with tempfile.TemporaryDirectory(prefix="zet-documents-") as folder:
        environment, place = commands_test.make_surroundings(pathlib.Path(folder), programs, samples)
        home = pathlib.Path(environment["HOME"])
        shutil.rmtree(home / ".config")
        shutil.rmtree(home / ".vst")
        (home / ".vst").mkdir()
        for name, sample in PLUGINS.items():
            shutil.copy(samples / sample, home / ".vst" / name)
        for command in COMMANDS:
            output = subprocess.run(["bash", "-c", command], env=environment, cwd=place, stdin=subprocess.DEVNULL, check=True,
                                    stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, timeout=120).stdout
            lines += [f"$ {command}", *output.replace(str(home), HOME).rstrip("\n").split("\n"), ""]
    return lines[:-1]


def draw(lines):
    width, height = EDGE * 2 + int(LETTER * max(map(len, lines))), LINE * len(lines) + 60
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" '
           'font-family="ui-monospace, DejaVu Sans Mono, Menlo, Consolas, monospace" font-size="13">',
           f'<rect width="{width}" height="{height}" rx="10" fill="#16191f"/>',
           '<circle cx="22" cy="20" r="6" fill="#e0695f"/><circle cx="42" cy="20" r="6" fill="#e3b34c"/>'
           '<circle cx="62" cy="20" r="6" fill="#69b86b"/>']
    for number, line in enumerate(lines):
        colour = "#d7dce4"
        if line.startswith("$"):
            colour = "#8fd18f"
        elif re.match(r"Name +Type ", line):
            colour = "#9fb6d8"
        elif re.match(r"    (crashed|took|ended)|.* banned +-", line):
            colour = "#f0a48c"
        out.append(f'<text x="{EDGE}" y="{52 + LINE * number}" fill="{colour}" xml:space="preserve">{html.escape(line)}</text>')
    return "\n".join([*out, "</svg>", ""])


def shown(picture):
    return [html.unescape(text) for text in re.findall(r"<text [^>]*>(.*)</text>", picture.read_text(encoding="utf-8"))]


def comparable(lines):
    return [re.sub(r"scanned in [0-9.]+ s", "scanned in a while", line) for line in lines]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--programs", type=pathlib.Path, required=True)
    parser.add_argument("--samples", type=pathlib.Path, required=True)
    parser.add_argument("--write", action="store_true")
    parser.add_argument("picture", type=pathlib.Path)
    options = parser.parse_args()
    lines = printed(options.programs, options.samples)
    if options.write:
        options.picture.write_text(draw(lines), encoding="utf-8")
    elif comparable(lines) != comparable(shown(options.picture)):
        sys.exit("\n".join([f"{options.picture} shows something else than what is printed now (--write draws it anew):", *lines]))


if __name__ == "__main__":
    main()
