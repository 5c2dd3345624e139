#!/usr/bin/env python3
"""Makes small Debian packages with mistakes, and looks whether `check` finds each of them.

usage: check_test.py SOURCES BUILD SCRATCH-FOLDER COMPILER

The packages hold what the build installs, but each program and library is replaced by a small one, so that nothing large is
compiled or packed.
"""
import gzip
import hashlib
import os
import pathlib
import re
import shutil
import subprocess
import sys

SOURCES, BUILD, WORK = (pathlib.Path(each).resolve() for each in sys.argv[1:4])
COMPILER = sys.argv[4]
VERSION = re.search(r"^project\(zetaudiopluginhostui VERSION ([\d.]+)", (SOURCES / "CMakeLists.txt").read_text(), re.M).group(1)
PRIVATE = "lib/zetaudiopluginhostui"
DOCUMENTS = "share/doc/zetaudiopluginhostui"
USER, DEV, DEBUG = "zetaudiopluginmanager", "libzetaudiopluginhostui-dev", "zetaudiopluginmanager-dbgsym"
CONTROL = """Package: {name}
Version: {version}-1
Architecture: amd64
Maintainer: nobody <nobody@example.org>
Depends: {depends}
Description: a package for tests
"""


def run(*command, **options):
    return subprocess.run([str(word) for word in command], check=True, stdout=subprocess.DEVNULL, **options)


class Packages:
    """Three packages as folders, and beside them the small programs that they hold."""

    def __init__(self):
        self.folder = WORK / "packages"
        self.trees = {name: WORK / "trees" / name for name in (USER, DEV, DEBUG)}
        self.debug_extension = "ddeb"
        self.control = {USER: {"version": VERSION, "depends": "libc6, libstdc++6, libqt6widgets6, qt6-qpa-plugins"},
                        DEV: {"version": VERSION, "depends": f"zetaudiopluginmanager (= {VERSION}-1)"},
                        DEBUG: {"version": VERSION, "depends": f"zetaudiopluginmanager (= {VERSION}-1)"}}
        self.after_sums = []

    def usr(self, name, file):
        return self.trees[name] / "usr" / file

    def make_good(self):
        """Lays out what the build installs as the packages have it."""
        shutil.rmtree(WORK / "trees", ignore_errors=True)
        for name, components in ((USER, ("runtime", "manager")), (DEV, ("development",))):
            for component in components:
                run("cmake", "--install", BUILD, "--prefix", self.usr(name, ""), "--component", component)
            private = self.usr(name, PRIVATE)
            private.mkdir(parents=True, exist_ok=True)
            for library in sorted(private.parent.glob("lib*.so*")):
                library.rename(private / library.name)
        for name in (USER, DEV):
            folder = self.usr(name, f"share/doc/{name}")
            run("cmake", f"-DSOURCES={SOURCES}", f"-DOUTPUT={folder}", f"-DVERSION={VERSION}-1", "-DCONTACT=nobody",
                "-DGZIP=gzip", "-P", SOURCES / "cmake/ZetDebianFiles.cmake")
        self.usr(USER, f"share/doc/{USER}/documents").symlink_to("../zetaudiopluginhostui")
        for file in [*self.usr(USER, "bin").iterdir(), *self.usr(USER, PRIVATE).iterdir()]:
            if not file.is_symlink():
                self.put_small_program(file)

    def put_small_program(self, file, *options):
        """Replaces a program by a small one without symbols, and puts these into the debug package."""
        made = WORK / "small.so"
        run(COMPILER, "-shared", "-g", "-Wl,--build-id", *options, "-x", "c", "-", "-o", made,
            input=f"const char name[] = \"{file.name}\";\n".encode())
        notes = subprocess.run(["readelf", "-n", made], capture_output=True, text=True, check=True).stdout
        mark = re.search(r"Build ID: (\w+)", notes).group(1)
        symbols = self.usr(DEBUG, f"lib/debug/.build-id/{mark[:2]}/{mark[2:]}.debug")
        symbols.parent.mkdir(parents=True, exist_ok=True)
        run("objcopy", "--only-keep-debug", made, symbols)
        run("strip", made, "-o", file)
        return symbols

    def pack(self):
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir()
        for name, tree in self.trees.items():
            if not tree.exists():
                continue
            (tree / "DEBIAN").mkdir(exist_ok=True)
            (tree / "DEBIAN/control").write_text(CONTROL.format(name=name, **self.control[name]))
            files = sorted(each for each in tree.glob("usr/**/*") if each.is_file() and not each.is_symlink())
            (tree / "DEBIAN/md5sums").write_text(
                "".join(f"{hashlib.md5(each.read_bytes()).hexdigest()}  {each.relative_to(tree)}\n" for each in files))
            for mistake in self.after_sums:
                mistake(name, tree)
            extension = self.debug_extension if name == DEBUG else "deb"
            run("dpkg-deb", "-Znone", "--root-owner-group", "--build", tree, self.folder / f"{name}_1_amd64.{extension}")

    def check(self):
        self.pack()
        # This lintian knows nothing of packages. It finds what it is told to.
        said = subprocess.run([SOURCES / "tools/packages/check", self.folder], capture_output=True, text=True, check=False,
                              env={**os.environ, "PATH": f"{WORK}/bin:{os.environ['PATH']}"})
        # CMake breaks the lines of what it says.
        return said.returncode, " ".join((said.stdout + said.stderr).split())


def set_lintian(status):
    script = WORK / "bin/lintian"
    script.parent.mkdir(exist_ok=True)
    script.write_text(f"#!/bin/sh\nexit {status}\n")
    script.chmod(0o755)


def remove(packages, name, file):
    packages.usr(name, file).unlink()
    return f"lacks /usr/{file}"


def append(packages, name, file, text):
    with open(packages.usr(name, file), "a", encoding="utf-8") as opened:
        opened.write(text)


def what_is_missing(packages):
    """Files that packages must have. Each row gives what has to be said of it."""
    packages.usr(USER, "share/icons/hicolor/64x64/apps/io.github.zetaudiopluginhostui.Manager.png").write_bytes(b"")
    yield "lacks /usr/share/icons/hicolor/64x64/"
    packages.usr(USER, f"share/doc/{USER}/documents").unlink()
    yield f"lacks /usr/share/doc/{USER}/documents/README.md"
    for name, file in (
            (USER, f"{PRIVATE}/libzetmarshal.so.{VERSION.rsplit('.', 1)[0]}"),
            (USER, "share/man/man1/zetaudiofilterscan.1.gz"),
            (USER, "share/fish/vendor_completions.d/zetaudiopluginmanager.fish"),
            (USER, "share/zetaudiopluginhostui/lang/ja.txt"),
            (USER, "share/metainfo/io.github.zetaudiopluginhostui.Manager.metainfo.xml"),
            (USER, f"{DOCUMENTS}/SECURITY.md"),
            (USER, f"{DOCUMENTS}/docs/images/terminal.svg"),
            (USER, f"share/doc/{USER}/copyright"),
            (DEV, f"{PRIVATE}/libzetcore.so"),
            (DEV, "lib/cmake/zetaudiopluginhostui/zetaudiopluginhostuiScanTargets.cmake"),
            (DEV, f"{DOCUMENTS}/docs/embedding.md"),
            (DEV, f"{DOCUMENTS}/docs/examples/process/scan.py"),
            (DEV, "include/zetaudiopluginhostui/AudioPluginScan.h")):
        yield remove(packages, name, file)
    yield "the documents are not all there (links)"
    yield "zetaudiopluginmanager.1.gz names SECURITY.md, which is not installed"
    packages.control[USER]["depends"] = "libc6, libstdc++6, qt6-qpa-plugins"
    yield "does not need libqt6widgets6"
    shutil.rmtree(packages.trees[DEBUG])
    (WORK / "CMakeCache.txt").write_text("ZET_PACKAGE_DEBUG:BOOL=ON\n")
    yield "there is no debug package"


def what_is_too_much(packages):
    """Files and words that packages must not have."""
    (packages.trees[USER] / "etc").mkdir()
    (packages.trees[USER] / "etc/zet.conf").write_text("x")
    yield "these lie outside /usr"
    packages.usr(USER, "bin/stray.h").write_text("x")
    yield "has what is for building hosts: ./usr/bin/stray.h"
    yield "/usr/bin/stray.h is no program"
    packages.usr(DEV, "include/zetui/Private.h").write_text("x")
    yield f"there are {len(list(packages.usr(DEV, 'include').rglob('*.h')))} headers"
    append(packages, USER, f"{DOCUMENTS}/SECURITY.md", "[nowhere](docs/nowhere.md)\n")
    yield "there is no docs/nowhere.md"
    manual = packages.usr(USER, "share/man/man1/zetaudiopluginmanager.1.gz")
    manual.write_bytes(gzip.compress(gzip.decompress(manual.read_bytes()) + b"docs/nothing.md\n"))
    yield "names docs/nothing.md, which is not installed"
    with open(packages.usr(USER, "bin/zetaudiopluginmanager"), "ab") as program:
        program.write(b"\0ZET_FAULT\0")
    yield "holds the name of a fault point: ZET_FAULT"
    packages.after_sums.append(
        lambda name, tree: (tree / "DEBIAN/postinst").write_text("#!/bin/sh\n") and (tree / "DEBIAN/postinst").chmod(0o755))
    yield "has scripts: ./postinst"


def what_is_wrong(packages):
    """Programs, sums and versions that do not fit each other."""
    scan = packages.usr(USER, f"{PRIVATE}/libzetaudiopluginscan.so.{VERSION}")
    toolkit = WORK / "libQt6Widgets.so.6"
    run(COMPILER, "-shared", "-Wl,-soname,libQt6Widgets.so.6", "-x", "c", "/dev/null", "-o", toolkit)
    packages.put_small_program(scan, "-Wl,--no-as-needed", toolkit)
    yield "the scan alone needs the windows' libraries"
    shutil.copy(WORK / "small.so", packages.usr(USER, f"{PRIVATE}/libzetui.so.{VERSION}"))
    yield f"/usr/{PRIVATE}/libzetui.so.{VERSION} is not stripped"
    packages.put_small_program(packages.usr(USER, "bin/zetaudiofilterscan")).unlink()
    yield "has no symbols of /usr/bin/zetaudiofilterscan"
    run("strip", packages.put_small_program(packages.usr(USER, "bin/zetaudiopluginmanager")))
    yield "has no symbols of /usr/bin/zetaudiopluginmanager"
    packages.control[USER]["version"] = "9.9.9"
    yield f"{USER}_1_amd64.deb has another version than {VERSION}"
    packages.control[DEV]["depends"] = "zetaudiopluginmanager"
    yield "must need just this zetaudiopluginmanager"

    def change(name, tree):
        if name == USER:
            with open(tree / "usr/bin/zetaudiofilterscan", "ab") as program:
                program.write(b"x")
        elif name == DEV:
            (tree / "usr/share/late").write_text("x")
    packages.after_sums.append(change)
    yield f"{USER}_1_amd64.deb has wrong sums"
    yield f"{DEV}_1_amd64.deb has wrong sums"
    set_lintian(1)
    yield "lintian finds errors"


def a_package_is_missing(packages):
    packages.trees[DEV].rename(WORK / "trees/away")
    yield f"there must be one package {DEV}"


def main():
    shutil.rmtree(WORK, ignore_errors=True)
    WORK.mkdir(parents=True)
    good = Packages()
    good.make_good()
    set_lintian(0)
    shutil.copytree(WORK / "trees", WORK / "good", symlinks=True)
    status, said = good.check()
    failures = [] if status == 0 and not said else [f"good packages: status {status}\n{said}"]
    count = 0
    for breakage in (what_is_missing, what_is_too_much, what_is_wrong, a_package_is_missing):
        shutil.rmtree(WORK / "trees")
        shutil.copytree(WORK / "good", WORK / "trees", symlinks=True)
        set_lintian(0)
        packages = Packages()
        expected = list(breakage(packages))
        status, said = packages.check()
        (WORK / "CMakeCache.txt").unlink(missing_ok=True)
        count += len(expected)
        missing = [each for each in expected if each not in said]
        if missing or status == 0:
            failures.append(f"{breakage.__name__}: status {status}, not said: {missing}\n{said}")
    if failures:
        sys.exit("\n".join(failures))
    shutil.rmtree(WORK)
    print(f"{count} mistakes were found")


main()
