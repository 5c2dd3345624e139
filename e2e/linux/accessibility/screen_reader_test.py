"""A blind user's session with the manager, through the accessibility bus: no mouse, no key, no look at the screen."""

import argparse
import ctypes
import json
import os
import sys
import unittest

from desktop import Desktop

options = argparse.ArgumentParser()
options.add_argument("--program", required=True)
options.add_argument("--samples", required=True)
options.add_argument("--example", required=True, help="the host that the documents show")


def window_classes(display_name):
    """The classes by which window managers and taskbars know the windows on the display."""
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p

    class Hint(ctypes.Structure):
        _fields_ = [("name", ctypes.c_char_p), ("type", ctypes.c_char_p)]

    display = ctypes.c_void_p(x11.XOpenDisplay(display_name.encode()))
    root, parent = ctypes.c_ulong(), ctypes.c_ulong()
    windows, count = ctypes.POINTER(ctypes.c_ulong)(), ctypes.c_uint()
    x11.XQueryTree(display, ctypes.c_ulong(x11.XDefaultRootWindow(display)), ctypes.byref(root), ctypes.byref(parent),
                   ctypes.byref(windows), ctypes.byref(count))
    classes = set()
    for window in windows[: count.value]:
        hint = Hint()
        if x11.XGetClassHint(display, ctypes.c_ulong(window), ctypes.byref(hint)):
            classes.update(text.decode() for text in (hint.name, hint.type))
    x11.XCloseDisplay(display)
    return classes


class ScreenReader(unittest.TestCase):
    """Each test needs a process of its own, because the library stays with the first desktop that it has seen."""

    def setUp(self):
        self.desktop = self.enterContext(Desktop())
        # The library reads the environment when it is loaded.
        global m, pyatspi
        import manager as m
        import pyatspi

        self.manager = m.Manager(self.desktop, chosen.program, chosen.samples)

    def open(self, *, scan=True):
        if scan:
            # A plug-in that is banned is no failure.
            self.manager.run("--timeout", "20", "scan")
        self.manager.open()

    def test_the_program_has_its_own_name(self):
        self.open(scan=False)
        self.assertEqual(self.manager.application.name, "Audio Plug-In Manager")
        self.assertEqual(window_classes(os.environ["DISPLAY"]), {"Audio Plug-In Manager"})

    def test_the_window_is_read_in_the_order_in_which_it_is_seen(self):
        self.open(scan=False)
        window = self.manager.window("Audio Plug-In Manager")
        seen = []
        for node in m.below(window):
            if node.getRole() in (pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_CHECK_BOX, pyatspi.ROLE_TABLE,
                                  pyatspi.ROLE_TEXT) and m.has(node, pyatspi.STATE_SHOWING):
                seen.append(node.name)
                self.assertNotEqual(node.description, node.name)
        self.assertEqual(seen, ["Add...", "Remove", "Default", "VST Plug-In Folders:", "Scan for Plug-Ins",
                                "Rescan existing plug-ins", "Enable All", "Disable All", "Filter plug-ins", "Search",
                                "Available Plug-Ins:", "Details", "OK", "Cancel"])

    def test_a_plugin_is_found_and_its_state_and_reason_are_read(self):
        self.manager.install("good/vst2_effect.so", "effect.so")
        self.manager.install("bad/crash_on_load.so", "broken.so")
        self.open()
        names = self.manager.names()
        self.assertIn("broken.so", names)
        effect = next(name for name in names if name != "broken.so")
        box = self.manager.cell(effect, m.ENABLED)
        self.assertEqual(box.name, f"Enabled: on, {effect}")
        self.assertTrue(m.has(box, pyatspi.STATE_CHECKED))
        self.assertEqual(self.manager.cell(effect, m.STATUS).name, "Status: Working")
        self.assertEqual(self.manager.cell(effect, m.STATUS).description, "")
        self.assertEqual([child.getRole() for child in box], [pyatspi.ROLE_CHECK_BOX])
        self.assertEqual(box.getChildAtIndex(0).getIndexInParent(), 0)

        banned = self.manager.cell("broken.so", m.STATUS)
        self.assertEqual(banned.name, "Status: Not Working")
        self.assertIn("Crashed", banned.description)
        reload = banned.getChildAtIndex(0)
        self.assertEqual((reload.getRole(), reload.name), (pyatspi.ROLE_PUSH_BUTTON, "Reload broken.so"))
        self.assertIn("Press", m.actions(reload))
        off = self.manager.cell("broken.so", m.ENABLED)
        self.assertEqual(off.name, "Enabled: off, broken.so")
        self.assertIn("Crashed", off.description)
        self.assertNotIn("Toggle", m.actions(off))

    def test_a_plugin_is_switched_off(self):
        self.manager.install("good/vst2_effect.so", "effect.so")
        self.open()
        [name] = self.manager.names()
        box = self.manager.cell(name, m.ENABLED)
        m.act(box, "Toggle")
        m.wait_for(lambda: self.manager.cell(name, m.ENABLED).name == f"Enabled: off, {name}", "the cell says off")
        self.assertFalse(m.has(self.manager.cell(name, m.ENABLED), pyatspi.STATE_CHECKED))
        self.assertFalse(m.has(self.manager.cell(name, m.ENABLED).getChildAtIndex(0), pyatspi.STATE_CHECKED))
        self.manager.end()
        self.assertFalse(self.manager.listed()[name]["enabled"])

    def test_cancel_takes_back_what_was_switched(self):
        self.manager.install("good/vst2_effect.so", "effect.so")
        self.open()
        [name] = self.manager.names()
        m.act(self.manager.cell(name, m.ENABLED).getChildAtIndex(0), "Toggle")
        m.wait_for(lambda: self.manager.cell(name, m.ENABLED).name == f"Enabled: off, {name}", "the cell says off")
        self.manager.end("Cancel")
        self.assertTrue(self.manager.listed()[name]["enabled"])

    def test_a_plugin_out_of_sight_is_switched_off(self):
        for number in range(40):
            self.manager.install("bad/crash_on_load.so" if number == 39 else "good/vst2_named_when_open.so",
                                 f"plugin{number:02}.so")
        self.manager.install("good/vst2_effect.so", "zz.so")
        self.open()
        row = self.manager.list().queryTable().nRows - 2
        table = self.manager.list().queryTable()
        box = table.getAccessibleAt(row, m.ENABLED)
        self.assertFalse(m.has(box, pyatspi.STATE_SHOWING))
        self.assertTrue(m.has(box, pyatspi.STATE_CHECKED))
        path = table.getAccessibleAt(row, m.PATH).name.removeprefix("Path: ")
        m.act(box, "Toggle")
        m.wait_for(lambda: m.has(box, pyatspi.STATE_SHOWING), "the row came into sight")
        m.wait_for(lambda: not m.has(box, pyatspi.STATE_CHECKED), "the cell says off")
        # The banned plug-in is in the last row.
        banned = table.getAccessibleAt(row + 1, m.STATUS)
        self.assertEqual(banned.name, "Status: Not Working")
        self.manager.end()
        rows = json.loads(self.manager.run("list", "--json"))
        self.assertEqual([each["path"] for each in rows if each["status"] != "banned" and not each["enabled"]], [path])

    def test_a_banned_plugin_is_reloaded(self):
        self.manager.install("bad/crash_on_load.so", "plugin.so")
        self.open()
        self.assertEqual(self.manager.names(), ["plugin.so"])
        self.manager.install("good/vst2_effect.so", "plugin.so")
        m.act(self.manager.cell("plugin.so", m.STATUS), "Press")
        self.leave_notes(lambda: self.manager.names() != ["plugin.so"])
        [name] = self.manager.names()
        self.assertEqual(self.manager.cell(name, m.STATUS).name, "Status: Working")
        self.manager.end()
        rows = self.manager.listed()
        self.assertEqual([row["status"] for row in rows.values()], ["working"])
        self.assertTrue(rows[name]["path"].endswith("/plugin.so"))

    def test_the_list_is_sorted(self):
        self.manager.install("good/vst2_effect.so", "a.so")
        self.manager.install("bad/crash_on_load.so", "b.so")
        self.open()
        title = self.manager.titles()[m.NAME]
        self.assertEqual((title.getRole(), title.name), (pyatspi.ROLE_TABLE_COLUMN_HEADER, "Name"))
        # Nobody has chosen a column yet.
        self.assertEqual(title.description, "sorted, ascending")
        up = self.manager.names()
        self.assertEqual(up, sorted(up, key=str.casefold))
        m.act(self.manager.titles()[m.NAME], "Press")
        m.wait_for(lambda: self.manager.titles()[m.NAME].description == "sorted, descending", "the title says so")
        self.assertEqual(self.manager.names(), up[::-1])
        self.manager.end()
        # The next window reads it from the file.
        self.open(scan=False)
        self.assertEqual(self.manager.titles()[m.NAME].description, "sorted, descending")
        self.assertEqual(self.manager.names(), up[::-1])

    def test_a_scan_finds_a_new_plugin(self):
        self.open(scan=False)
        table = self.manager.list()
        self.assertEqual(table.queryTable().nRows, 0)
        self.assertNotEqual(table.description, "", "an empty list says why")
        self.manager.install("good/vst2_effect.so", "new.so")
        self.manager.press("Scan for Plug-Ins")
        self.leave_notes(lambda: self.manager.names())
        [name] = self.manager.names()
        self.manager.end()
        self.assertTrue(self.manager.listed()[name]["enabled"])

    def test_the_host_of_the_documents_has_the_window(self):
        self.manager.install("good/vst2_effect.so", "effect.so")
        self.manager.install("bad/crash_on_load.so", "broken.so")
        self.manager.run("--timeout", "20", "scan")
        never = f"never load {self.manager.plugins}/broken.so\n"
        self.manager.open(chosen.example)
        name = next(each for each in self.manager.names() if each != "broken.so")
        self.assertEqual(self.manager.end("Cancel"), f"use {name}\n{never}")
        self.manager.open(chosen.example)
        m.act(self.manager.cell(name, m.ENABLED), "Toggle")
        self.assertEqual(self.manager.end(), f"the list has changed\n{never}")

    def leave_notes(self, condition):
        """Waits for the condition, and for the end of the scan with its windows. Notes are answered with OK."""

        def only_the_manager():
            windows = self.manager.windows()
            if len(windows) == 1:
                return condition()
            for window in windows:
                is_note = window.getRole() == pyatspi.ROLE_ALERT
                if is_note:
                    self.assertEqual(window.name, "Audio Plug-In Manager", "notes have the program's name")
                if not is_note and window.name == "Audio Plug-In Manager":
                    continue
                for node in m.below(window):
                    if node.getRole() == pyatspi.ROLE_PUSH_BUTTON and node.name == "OK":
                        m.act(node, "Press")
                        return False
            return False

        m.wait_for(only_the_manager, "the scan is over")


if __name__ == "__main__":
    chosen, rest = options.parse_known_args()
    unittest.main(argv=sys.argv[:1] + rest)
