#!/usr/bin/env python3
"""Compares the lists in the documents with the programs and the sources that own the facts."""
import argparse
import gzip
import pathlib
import re
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parents[2] / "host/reference"))
from program_help import commands_in, help_of, options_in  # noqa: E402 (its folder has to be named first)

SOURCE = PROGRAMS = None
FOLDERS = ("platform", "zetaudiopluginhostui", "scanner", "host")


def product_sources():
    for folder in FOLDERS:
        for path in sorted((SOURCE / folder).rglob("*")):
            is_test = re.search(r"Test(_[a-z]+)?\.cpp$", path.name) or "testing" in path.parts
            if path.suffix in (".h", ".cpp") and not is_test:
                yield path, path.read_text(encoding="utf-8")


def section(document, title):
    text = (SOURCE / document).read_text(encoding="utf-8")
    match = re.search(rf"^## {re.escape(title)}$(.*?)(?=^## |\Z)", text, re.M | re.S)
    if not match:
        raise SystemExit(f"{document} has no section \"{title}\"")
    return match.group(1)


def first_column(text):
    """The names in the first column of a table, in backticks."""
    return {name for row in re.findall(r"^\| *(`[^|]*)\|", text, re.M) for name in re.findall(r"`([^`]+)`", row)}


def compare(what, documented, real):
    problems = [f"{name}: {what}, and no document lists it" for name in sorted(real - documented)]
    return problems + [f"{name}: a document lists it, but it is no {what}" for name in sorted(documented - real)]


def switches():
    """Each key with which the debug database is asked."""
    constants, asked = {}, []
    for path, text in product_sources():
        for name, value in re.findall(r"constexpr (?:char|const char\*|std::string_view) (\w+)(?:\[\])? ?= ?\"([^\"]+)\"", text):
            constants.setdefault(name, {})[path] = value
        for name, other in re.findall(r"constexpr const char\* (\w+) = (?:\w+::)*(\w+);", text):
            constants.setdefault(name, {})[path] = other
        if path.name.startswith(("DebugDatabase.", "TimeEntry.")):
            continue
        asked += [(path, key.strip()) for key in
                  re.findall(r"(?:\bGetEntry|\bIsOn|\bTimeFromDebugDatabase)\(\s*([^,()]+),", text)]

    def values_of(name, path):
        """What a constant's name may stand for: that of its own file, or else of any."""
        known = constants.get(name.split("::")[-1], {})
        values = [known[path]] if path in known else list(known.values())
        return {value for each in values for value in (values_of(each, path) if each in constants else {each})}

    real, problems = set(), []
    for path, key in asked:
        found = {key.strip('"')} if key.startswith('"') else values_of(key, path)
        real |= found
        if not found:
            problems.append(f"{path}: the key {key} is no constant that this test can find")
    if len(real) < 10:
        problems.append(f"only {len(real)} switches were found in the sources")
    documented = first_column(section("docs/files.md", "The debug database: `DebugDatabase.txt`"))
    return problems + compare("switch", documented, real)


def variables():
    """Each environment variable of ours; the system's own are listed by hand."""
    real = set()
    for _, text in product_sources():
        real |= set(re.findall(r"\b(?:EnvironmentVariable|getenv|EnvironmentText)\(\"([A-Z_]+)\"\)", text))
    ours = {name for name in real if name.startswith("ZET_")}
    documented = first_column(section("docs/files.md", "Environment variables"))
    return [f"{name}: a program asks for it, and no document lists it" for name in sorted(ours - documented)]


def categories():
    """The page about the scanner names each category of its trace, and no other."""
    real = set()
    for path, text in product_sources():
        part = path.relative_to(SOURCE).parts
        if part[0] == "scanner" or (part[0] == "platform" and part[1] != "zetui"):
            real |= set(re.findall(r"\bTraceLine\(\s*\d, \"(\w+)\"|\b\w*[cC]ategory(?:\[\])? = \"(\w+)\"", text))
    text = (SOURCE / "docs/scan-protocol.md").read_text(encoding="utf-8")
    said = re.search(r"The scanner's categories are (.*?)\. Before", text, re.S)
    if not said:
        return ["docs/scan-protocol.md does not say what the scanner's categories are"]
    return compare("category of the trace", set(re.findall(r"`(\w+)`", said.group(1))),
                   {name for names in real for name in names if name})


def options_of(help_text):
    return set(options_in(help_text)) - {"--help", "--version"}


def commands():
    """The README's usage has each command with its options, and each general option."""
    program = PROGRAMS / "zetaudiopluginmanager"
    text = help_of(program)
    usage = re.search(r"^ *zetaudiopluginmanager \[--prefs.*?(?=^ {0,3}\S|^```)", section("README.md", "The command line"),
                      re.M | re.S)
    if not usage:
        return ["README.md shows no usage of zetaudiopluginmanager"]
    first, *lines = usage.group(0).splitlines()
    real = set(commands_in(text))
    documented, problems = set(), []
    for line in lines:
        words = re.match(r"\s+([a-z|]+)", line)
        for command in words.group(1).split("|") if words else ():
            documented.add(command)
            options = options_of(help_of(program, command))
            for sub in commands_in(help_of(program, command)):
                options |= options_of(help_of(program, command, sub))
            problems += compare(f"option of {command}", set(re.findall(r"--[a-z-]+", line)), options)
    return problems + compare("command", documented, real) + compare(
        "general option", set(re.findall(r"--[a-z-]+", first)), options_of(text))


def logs():
    """What the documents say of the number and size of logs agrees with the constants in the sources."""
    log = (SOURCE / "scanner/supervisor/log/ScanLog.h").read_text(encoding="utf-8")
    files = int(re.search(r"maxFiles = (\d+)", log).group(1))
    mebibytes = 1 << int(re.search(r"maxBytes = std::size_t\{(\d+)\} << 20", log).group(1)) - 1
    problems = []
    for document in ("docs/files.md", "docs/troubleshooting.md"):
        text = " ".join((SOURCE / document).read_text(encoding="utf-8").split())
        said = re.findall(r"newest (\d+)[^.]*? of (\d+) MiB", text)
        if not said:
            problems.append(f"{document} does not say how many logs are kept")
        for found, unit in said:
            if (int(found), int(unit)) != (files, mebibytes):
                problems.append(f"{document}: {found} logs of {unit} MiB, but it is {files} of {mebibytes} MiB")
    return problems


def build_options():
    """The README's table has each option of the build."""
    real = set()
    for path in [*SOURCE.glob("*.txt"), *(file for folder in (*FOLDERS, "cmake", "e2e", "testing", "tools", "bench", "fuzz")
                                          for name in ("CMakeLists.txt", "*.cmake") for file in (SOURCE / folder).rglob(name))]:
        # What a toolchain asks for is in the page about Windows.
        if "toolchains" in path.parts:
            continue
        text = path.read_text(encoding="utf-8")
        real |= set(re.findall(r"^ *option\((\w+)", text, re.M))
        real |= set(re.findall(r"^ *set\((\w+) [^()]*CACHE (?:STRING|BOOL|PATH|FILEPATH)", text, re.M))
        # A program that is used where it is found, unless one says no.
        real |= set(re.findall(r"^ *find_program\((\w+)[^()]*\bOFF\b", text, re.M))
    documented = first_column(section("README.md", "Try it"))
    return compare("option of the build", documented, real)


def proofs():
    """Each test that a document names as the proof of something exists."""
    cases, rows = set(), set()
    for path in SOURCE.rglob("*Test*.cpp"):
        if "build" not in path.relative_to(SOURCE).parts:
            text = path.read_text(encoding="utf-8")
            cases |= set(re.findall(r"^TEST(?:_F|_P)?\((\w+),\s*(\w+)\)", text, re.M))
            rows |= set(re.findall(r"INSTANTIATE_TEST_SUITE_P\(\s*(\w+),\s*(\w+)", text))
    problems = []
    for document in ("README.md", "docs/reliability.md"):
        found = re.findall(r"`(?:([\w*]+)/)?([A-Z][\w*]*)\.(\*|[A-Z]\w*)(?:\.\.\.)?`",
                           (SOURCE / document).read_text(encoding="utf-8"))
        if not found:
            problems.append(f"{document} names no test")
        for prefix, suite, case in found:
            wanted = re.compile(re.escape(suite).replace(r"\*", r"\w*"))
            if not any(wanted.fullmatch(each) and (case == "*" or name.startswith(case)) for each, name in cases):
                problems.append(f"{document}: there is no test {suite}.{case}")
            prefixes = re.compile(re.escape(prefix).replace(r"\*", r"\w*"))
            if prefix and not any(prefixes.fullmatch(row) and wanted.fullmatch(each) for row, each in rows):
                problems.append(f"{document}: there are no tests {prefix}/{suite}")
    return problems


def anchors(path):
    """The anchors of a document's headings, as GitHub makes them."""
    found = set()
    for heading in re.findall(r"^#+ (.*)$", path.read_text(encoding="utf-8"), re.M):
        text = re.sub(r"[^\w\- ]", "", heading.strip().lower().replace("`", ""))
        found.add(text.replace(" ", "-"))
    return found


def links():
    """Each link leads somewhere, and the README links each document."""
    documents = sorted(SOURCE.glob("*.md")) + sorted((SOURCE / "docs").glob("*.md"))
    problems = []
    for document in documents:
        for target in re.findall(r"\]\(([^)\s]+)\)", document.read_text(encoding="utf-8")):
            if re.match(r"[a-z]+:", target):
                continue
            file, _, anchor = target.partition("#")
            path = document.parent / file if file else document
            if not path.exists():
                problems.append(f"{document}: there is no {target}")
            elif anchor and anchor not in anchors(path):
                problems.append(f"{document}: {path.name} has no heading for #{anchor}")
    linked = set(re.findall(r"\]\(([^)\s#]+)", (SOURCE / "README.md").read_text(encoding="utf-8")))
    for document in documents:
        name = str(document.relative_to(SOURCE))
        if name != "README.md" and name not in linked:
            problems.append(f"README.md has no link to {name}")
    return problems


def headers():
    """The page for hosts has each stable header, and no other."""
    text = (SOURCE / "cmake/ZetPublicHeaders.cmake").read_text(encoding="utf-8")
    stable = set(re.search(r"set\(ZET_STABLE_HEADERS(.*?)\)", text, re.S).group(1).split())
    page = section("docs/embedding.md", "Three ways")
    return compare("stable header", {name for name in first_column(page) if name.endswith(".h")}, stable)


def manuals():
    """Each document that the installed manual pages name is installed. The sources here are the installed documents."""
    problems, pages = [], sorted((PROGRAMS.parent / "share/man/man1").glob("*.1.gz"))
    if len(pages) < 2:
        problems.append(f"there are only these manual pages: {pages}")
    for page in pages:
        text = re.sub(r"\\f[BIR]|\\&", "", gzip.decompress(page.read_bytes()).decode("utf-8")).replace("\\-", "-")
        named = re.findall(r"[\w/-]+\.md\b", text)
        if not named:
            problems.append(f"{page} names no document")
        problems += [f"{page} names {name}, which is not installed" for name in named if not (SOURCE / name).exists()]
    return problems


def names():
    """Each call and class that the page for hosts names is in an installed header."""
    # These are files, JSON, and parts of the reference host that are named as examples.
    others = {"CMakeLists", "CautionCounter", "ScanWatch", "WindowStore", "passedOver", "triedAgain", "uDCFF"}
    headers = "".join(path.read_text(encoding="utf-8") for path in (PROGRAMS.parent / "include").rglob("*.h"))
    code = " ".join(text for text in re.findall(r"`([^`\n]+)`", (SOURCE / "docs/embedding.md").read_text(encoding="utf-8"))
                    if not re.fullmatch(r"[\w/]+\.(h|cpp|txt)", text))
    named = set(re.findall(r"\b[A-Za-z]*[a-z][A-Z]\w*", code)) - others
    problems = [] if len(named) > 20 else [f"docs/embedding.md names only {sorted(named)}"]
    return problems + [f"docs/embedding.md names {name}, which no installed header has" for name in sorted(named)
                       if not re.search(rf"\b{name}\b", headers)]


def main():
    global SOURCE, PROGRAMS
    tests = {"switches": switches, "variables": variables, "categories": categories, "commands": commands, "logs": logs, "links": links,
             "headers": headers, "options": build_options, "proofs": proofs, "manuals": manuals, "names": names}
    parser = argparse.ArgumentParser()
    parser.add_argument("--source", type=pathlib.Path, required=True)
    parser.add_argument("--programs", type=pathlib.Path, required=True)
    parser.add_argument("list", choices=tests)
    options = parser.parse_args()
    SOURCE, PROGRAMS = options.source, options.programs
    problems = tests[options.list]()
    for problem in problems:
        print(problem, file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
