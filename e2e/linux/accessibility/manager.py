"""The real program on a test's desktop, seen and worked through the accessibility bus only."""

import json
import pathlib
import shutil
import subprocess
import time

import gi
import pyatspi
from gi.repository import GLib

from desktop import PATIENCE_SECONDS, end_with_parent

ENABLED, NAME, TYPE, STATUS, VERSION, PATH = range(6)


def wait_for(condition, what):
    """Runs the accessibility bus until the condition holds, and gives its value. An object may go while it is asked;
    that is no answer."""
    context = GLib.MainContext.default()
    deadline = time.monotonic() + PATIENCE_SECONDS
    problem = None
    # Events wake the loop; a file or a process that changes wakes nobody.
    ticks = GLib.timeout_add(20, lambda: True)
    try:
        while time.monotonic() < deadline:
            try:
                value = condition()
                if value:
                    return value
            except (GLib.GError, LookupError, AttributeError, NotImplementedError) as error:
                problem = error
            context.iteration(True)
    finally:
        GLib.source_remove(ticks)
    raise AssertionError(f"waited in vain: {what} ({problem})")


def below(node):
    """The node and everything below it, in reading order."""
    node.clearCache()
    yield node
    for index in range(node.childCount):
        child = node.getChildAtIndex(index)
        if child:
            yield from below(child)


def has(node, state):
    node.clearCache()
    return node.getState().contains(state)


def actions(node):
    action = node.queryAction()
    return [action.getName(index) for index in range(action.nActions)]


def act(node, name):
    """Does what a screen reader does when its user asks for it: no mouse, no key."""
    action = node.queryAction()
    assert action.doAction(actions(node).index(name)), f"{name} on {node.name}"


class Manager:
    """The program's window. The preferences and the only plug-in folder are the desktop's own."""

    def __init__(self, desktop, program, samples):
        self.program = program
        self.samples = pathlib.Path(samples)
        self.plugins = desktop.folder / "plugins"
        self.prefs = desktop.folder / "prefs"
        self.process = None
        self.plugins.mkdir()
        folders = [line[6:] for line in self.run("folders", "list").splitlines()]
        self.run("folders", "remove", *folders)
        self.run("folders", "add", str(self.plugins))

    def command(self, *arguments):
        return [self.program, "--prefs", str(self.prefs), *arguments]

    def run(self, *arguments):
        return subprocess.run(self.command(*arguments), check=True, stdout=subprocess.PIPE, text=True,
                              timeout=PATIENCE_SECONDS).stdout

    def listed(self):
        """What the files hold, by name; read by another process."""
        assert self.process is None, "the window is still open"
        return {row["name"]: row for row in json.loads(self.run("list", "--json"))}

    def install(self, sample, title):
        path = self.plugins / title
        path.unlink(missing_ok=True)
        shutil.copy(self.samples / sample, path)

    def open(self, host=None):
        """Opens the program's window, or that of another host with these preferences."""
        command = [host, str(self.prefs)] if host else self.command("manage")
        self.process = subprocess.Popen(command, stdout=subprocess.PIPE, text=True, preexec_fn=end_with_parent)
        self.application = wait_for(self._find_application, "the program is on the accessibility bus")
        wait_for(lambda: self.window("Audio Plug-In Manager"), "the window is open")

    def _find_application(self):
        for application in pyatspi.Registry.getDesktop(0):
            if application and application.get_process_id() == self.process.pid and application.childCount:
                return application
        return None

    def windows(self):
        self.application.clearCache()
        return [window for window in self.application if window]

    def window(self, name):
        return next((window for window in self.windows() if window.name == name), None)

    def find(self, role, name):
        """The first node below the program with this role and name."""
        for window in self.windows():
            for node in below(window):
                if node.getRole() == role and node.name == name:
                    return node
        raise LookupError(f"nobody sees {name}")

    def press(self, name):
        act(self.find(pyatspi.ROLE_PUSH_BUTTON, name), "Press")

    def end(self, button="OK"):
        """Gives what the program has printed."""
        self.press(button)
        wait_for(lambda: self.process.poll() is not None, f"{button} ends the program")
        assert self.process.returncode == 0, self.process.returncode
        printed = self.process.communicate()[0]
        self.process = None
        return printed

    def list(self):
        return self.find(pyatspi.ROLE_TABLE, "Available Plug-Ins:")

    def titles(self):
        return [self.list().getChildAtIndex(column) for column in range(PATH + 1)]

    def names(self):
        table = self.list()
        table.clearCache()
        grid = table.queryTable()
        return [grid.getAccessibleAt(row, NAME).name.removeprefix("Name: ") for row in range(grid.nRows)]

    def cell(self, name, column):
        row = self.names().index(name)
        cell = self.list().queryTable().getAccessibleAt(row, column)
        cell.clearCache()
        return cell
