#!/usr/bin/env python3
"""Tests what `dependencies` tells while it works: with stand-ins for the programs that it runs, nothing is fetched or built."""
import os
import pathlib
import subprocess
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).parent / "dependencies"
PARTS = ("headers", "pugixml", "googletest", "qt")

# A build waits until its progress has been told. It gives up in the end, so that a script that is silent fails the test.
WAIT = """#!/usr/bin/env bash
wait_until_told() {
    for ((tries = 0; tries < 1500; ++tries)); do
        grep -qF -- "$1" "$TOLD" && return
        /bin/sleep 0.02
    done
    echo "the script did not tell '$1'" >>"$TOLD"
    exit 1
}
part=$(basename "$PWD")
"""
STAND_INS = {
    "x86_64-w64-mingw32-g++-posix": "#!/bin/sh\necho 12.0.0\n",
    "ninja": "#!/bin/sh\nexit 1\n",
    "apt-get": """#!/bin/sh
[ "$1" != indextargets ] || echo 'deb-src http://127.0.0.1:9 bookworm main # Debian'
""",
    "apt-cache": "#!/bin/sh\necho 'Version: 1.5-1'\n",
    "dpkg-source": "#!/bin/sh\nmkdir -p source/debian && echo licence >source/debian/copyright\n",
    # A minute of the script is short here.
    "sleep": "#!/bin/sh\n[ \"$*\" = 60 ] || echo \"sleep $*\" >>\"$TOLD\"\nexec /bin/sleep 0.02\n",
    "cmake": WAIT + """
case $1 in
-S)
    wait_until_told "== $part: getting ready, after 0 minutes"
    ;;
--build)
    echo '[1/20] Building one of them'
    echo '[3/20] Building another'
    echo 'In file included from [7/8]:'
    wait_until_told "== $part: [3/20], after 0 minutes"
    if [ "$part" = "$BREAKS" ]; then
        echo 'error: it does not compile' >&2
        exit 1
    fi
    ;;
esac
""",
}


class Telling(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.folder = pathlib.Path(temporary.name)
        self.cache = self.folder / "cache"
        programs = self.folder / "programs"
        programs.mkdir()
        for name, content in STAND_INS.items():
            (programs / name).write_text(content)
            (programs / name).chmod(0o755)
        self.told = self.folder / "told.txt"
        # The shell counts its seconds on from a number in its environment, as if an hour had gone into earlier parts.
        self.environment = {**os.environ, "PATH": f"{programs}:{os.environ['PATH']}", "TOLD": str(self.told),
                            "ZET_WINDOWS_CACHE": str(self.cache), "FOLDER": str(self.folder), "BREAKS": "", "SECONDS": "3600"}

    def run_script(self, *arguments, **variables):
        with self.told.open("w") as told:
            status = subprocess.run([SCRIPT, *arguments], env=self.environment | variables, stdin=subprocess.DEVNULL,
                                    stdout=subprocess.DEVNULL, stderr=told, timeout=300, check=False).returncode
        return status, self.told.read_text()

    def test_the_long_builds_say_what_they_do_and_how_far_they_are(self):
        status, told = self.run_script()
        self.assertEqual(status, 0, told)
        lines = told.splitlines()
        self.assertIn("up to an hour", lines[0])
        self.assertIn(str(self.cache), lines[0])
        places = [lines.index(f"== {part}") for part in PARTS]
        self.assertEqual(places, sorted(places), told)
        for part, begin, end in zip(PARTS[1:], places[1:], [*places[2:], len(lines)]):
            own = lines[begin + 1:end]
            self.assertIn(f"== {part}: [3/20], after 0 minutes", own)
            self.assertIn(f"== {part}: getting ready, after 0 minutes", own)
        self.assertEqual(lines[-1], f"== the Windows dependencies are at {self.cache}/prefix")
        self.assertNotIn("sleep", told)
        self.assertEqual(self.run_script("--built")[0], 0)
        status, told = self.run_script()
        self.assertEqual((status, told), (0, f"== the Windows dependencies are at {self.cache}/prefix\n"))

    def test_a_build_that_fails_is_shown_with_the_end_of_its_output(self):
        status, told = self.run_script(BREAKS="googletest")
        self.assertEqual(status, 1, told)
        self.assertIn("error: it does not compile\n", told)
        self.assertEqual(told.splitlines()[-1], "windows dependencies: googletest 1.5-1 could not be built; "
                                                f"all of the output is in {self.cache}/googletest.log")
        self.assertNotIn("== qt", told)
        self.assertNotEqual(self.run_script("--built")[0], 0)
        status, told = self.run_script()
        self.assertEqual(status, 0, told)
        self.assertNotIn("== pugixml\n", told, "what is built stays")
        self.assertIn("== googletest\n", told)

    def test_nothing_that_it_started_holds_the_output_when_it_has_ended(self):
        # The reader of a pipe waits until the last program has closed it.
        programs = self.folder / "programs"
        (programs / "cmake").write_text("#!/bin/sh\nuntil [ -e \"$TOLD.asleep\" ]; do /bin/sleep 0.02; done\n")
        over = self.folder / "over"
        self.addCleanup(over.write_text, "")
        (programs / "sleep").write_text("#!/bin/sh\n: >\"$TOLD.asleep\"\n"
                                        "while [ -d \"$FOLDER\" ] && [ ! -e \"$FOLDER/over\" ]; do /bin/sleep 0.2; done\n")
        status = subprocess.run([SCRIPT], env=self.environment, stdin=subprocess.DEVNULL, capture_output=True,
                                timeout=120, check=False).returncode
        self.assertEqual(status, 0)


if __name__ == "__main__":
    unittest.main()
