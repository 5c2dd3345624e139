#!/usr/bin/env python3
"""make_ico.py OUTPUT PNG...: puts pictures of several sizes into one icon file for Windows."""
import struct
import sys


def size_of(picture, name):
    if picture[:8] != b"\x89PNG\r\n\x1a\n":
        sys.exit(f"make_ico: {name} is no PNG file")
    return struct.unpack(">II", picture[16:24])


def main(output, names):
    pictures = []
    for name in names:
        with open(name, "rb") as file:
            pictures.append(file.read())
    place = 6 + 16 * len(pictures)
    entries = b""
    for name, picture in zip(names, pictures):
        width, height = size_of(picture, name)
        if max(width, height) > 256:
            sys.exit(f"make_ico: {name} is larger than 256 pixels")
        # A byte holds the size, and 0 stands for 256.
        entries += struct.pack("<BBBBHHII", width % 256, height % 256, 0, 0, 1, 32, len(picture), place)
        place += len(picture)
    with open(output, "wb") as file:
        file.write(struct.pack("<HHH", 0, 1, len(pictures)) + entries + b"".join(pictures))


if len(sys.argv) < 3:
    sys.exit(__doc__)
main(sys.argv[1], sys.argv[2:])
