#!/usr/bin/env python3
"""Tests list-contents and check-contents with a small folder."""
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

HERE = pathlib.Path(__file__).parent
LIST_NAME = "zetaudiopluginmanager.spdx.json"
PARTS = ["ours|1.2|MIT|NOASSERTION|*.exe lang/*", "theirs|3|LGPL-3.0-only|https://example.org|*.dll", "headers|4|BSL-1.0|https://example.org|"]


def run(program, *arguments):
    return subprocess.run([sys.executable, HERE / program, *arguments], capture_output=True, text=True, check=False)


class Contents(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.folder = pathlib.Path(temporary.name)
        (self.folder / "lang").mkdir()
        for name in ("a.exe", "b.dll", "lang/de.txt"):
            (self.folder / name).write_text(f"content of {name}")

    def make(self, parts=None):
        chosen = [word for part in parts or PARTS for word in ("--part", part)]
        return run("list-contents", self.folder, "--name", "product", "--version", "1.2", "--time", "1700000000", *chosen)

    def read(self):
        return json.loads((self.folder / LIST_NAME).read_text())

    def write(self, contents):
        (self.folder / LIST_NAME).write_text(json.dumps(contents))

    def expect_refused(self, words):
        result = run("check-contents", self.folder)
        self.assertNotEqual(result.returncode, 0)
        self.assertIn(words, result.stderr)

    def test_what_is_listed_passes(self):
        self.assertEqual(self.make().returncode, 0)
        result = run("check-contents", self.folder)
        self.assertEqual((result.returncode, result.stdout), (0, "3 files in 3 packages are listed as they are\n"))
        packages = {package["name"]: package for package in self.read()["packages"]}
        self.assertEqual(packages["theirs"]["versionInfo"], "3")
        self.assertEqual(packages["theirs"]["licenseConcluded"], "LGPL-3.0-only")
        self.assertFalse(packages["headers"]["filesAnalyzed"])

    def test_the_same_files_give_the_same_list(self):
        self.make()
        first = (self.folder / LIST_NAME).read_bytes()
        self.make()
        self.assertEqual((self.folder / LIST_NAME).read_bytes(), first)

    def test_a_file_of_no_part_is_refused(self):
        result = self.make(PARTS[:1])
        self.assertNotEqual(result.returncode, 0)
        self.assertIn("b.dll belongs to no part", result.stderr)

    def test_a_part_without_a_version_is_refused(self):
        result = self.make(["ours||MIT|NOASSERTION|*"])
        self.assertNotEqual(result.returncode, 0)
        self.assertIn("ours||MIT", result.stderr)

    def test_a_changed_file_is_found(self):
        self.make()
        (self.folder / "b.dll").write_text("another")
        self.expect_refused("b.dll has another SHA256")

    def test_a_file_that_came_later_is_found(self):
        self.make()
        (self.folder / "c.dll").write_text("new")
        self.expect_refused("./c.dll is not listed")

    def test_a_file_that_is_gone_is_found(self):
        self.make()
        (self.folder / "b.dll").unlink()
        self.expect_refused("b.dll is not there")

    def test_a_missing_list_is_told(self):
        self.expect_refused(LIST_NAME)

    def test_what_is_no_spdx_is_found(self):
        def without(contents, *path):
            for key in path[:-1]:
                contents = contents[key]
            del contents[path[-1]]

        def put(contents, value, *path):
            for key in path[:-1]:
                contents = contents[key]
            contents[path[-1]] = value

        breakages = [
            (lambda c: put(c, "SPDX-2.2", "spdxVersion"), "not of SPDX 2.3"),
            (lambda c: put(c, "MIT", "dataLicense"), "CC0-1.0"),
            (lambda c: without(c, "documentNamespace"), "no documentNamespace"),
            (lambda c: put(c, "yesterday", "creationInfo", "created"), "no time"),
            (lambda c: put(c, "free to use", "packages", 0, "licenseConcluded"), "no licence"),
            (lambda c: without(c, "packages", 1, "versionInfo"), "no versionInfo"),
            (lambda c: put(c, "SPDXRef-Package-ours", "packages", 1, "SPDXID"), "there twice"),
            (lambda c: put(c, [], "packages", 1, "hasFiles"), "lists no files"),
            (lambda c: put(c, "a name", "files", 0, "SPDXID"), "no identifier"),
            (lambda c: put(c, "SPDXRef-nothing", "relationships", 0, "relatedSpdxElement"), "relation to nothing"),
        ]
        for breakage, words in breakages:
            with self.subTest(words):
                self.make()
                contents = self.read()
                breakage(contents)
                self.write(contents)
                self.expect_refused(words)


if __name__ == "__main__":
    unittest.main()
