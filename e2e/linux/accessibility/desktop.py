"""A desktop for tests: an X server without a screen, a session bus and the accessibility bus."""

import ctypes
import os
import pathlib
import select
import shutil
import signal
import subprocess
import tempfile

PATIENCE_SECONDS = 60
A11Y_SERVICE = pathlib.Path("/usr/share/dbus-1/services/org.a11y.Bus.service")
PR_SET_PDEATHSIG = 1
PR_SET_CHILD_SUBREAPER = 36

BUS_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path={folder}/session</listen>
  <servicedir>{folder}/services</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""

_libc = ctypes.CDLL(None, use_errno=True)


def end_with_parent():
    _libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


def first_line(pipe, what):
    """Reads the line by which a server tells that it is ready."""
    line = b""
    while not line.endswith(b"\n"):
        ready, _, _ = select.select([pipe], [], [], PATIENCE_SECONDS)
        letter = os.read(pipe, 1) if ready else b""
        if not letter:
            raise RuntimeError(f"{what} did not start")
        line += letter
    return line.decode().strip()


class Desktop:
    """Sets this process's environment, since the accessibility library reads it. All processes end with it, those
    that the buses start as well."""

    def __enter__(self):
        # What the buses start becomes a child of this process when its parent ends.
        _libc.prctl(PR_SET_CHILD_SUBREAPER, 1)
        # A socket's name must be short.
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="zet-desk-", dir="/tmp"))
        runtime = self.folder / "run"
        runtime.mkdir(mode=0o700)
        for name in ("WAYLAND_DISPLAY", "AT_SPI_BUS_ADDRESS", "DBUS_STARTER_ADDRESS", "NO_AT_BRIDGE"):
            os.environ.pop(name, None)
        os.environ.update(HOME=str(self.folder), XDG_RUNTIME_DIR=str(runtime), LC_ALL="C.UTF-8", LANG="C.UTF-8",
                          QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        try:
            os.environ["DISPLAY"] = ":" + self._start_x_server()
            os.environ["DBUS_SESSION_BUS_ADDRESS"] = self._start_session_bus()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        while self._kill_children():
            pass
        shutil.rmtree(self.folder, ignore_errors=True)

    def _start(self, command, ready_pipe, what):
        read, write = ready_pipe
        process = subprocess.Popen(command, pass_fds=[write], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL, preexec_fn=end_with_parent)
        os.close(write)
        process.returncode = 0  # _kill_children waits for it.
        line = first_line(read, what)
        os.close(read)
        return line

    def _start_x_server(self):
        pipe = os.pipe()
        # Real plug-ins that are told of no display try :0, and end their process when that server goes.
        display = f":{100 + os.getpid() % 50000}"
        return self._start(["Xvfb", display, "-displayfd", str(pipe[1]), "-screen", "0", "1280x1024x24", "-nolisten",
                            "tcp", "-noreset"], pipe, "Xvfb (package xvfb)")

    def _start_session_bus(self):
        services = self.folder / "services"
        services.mkdir()
        if not A11Y_SERVICE.exists():
            raise RuntimeError(f"{A11Y_SERVICE} is missing (package at-spi2-core)")
        shutil.copy(A11Y_SERVICE, services)
        configuration = self.folder / "bus.conf"
        configuration.write_text(BUS_CONFIGURATION.format(folder=self.folder))
        pipe = os.pipe()
        return self._start(["dbus-daemon", f"--config-file={configuration}", "--nofork", "--nopidfile",
                            f"--print-address={pipe[1]}"], pipe, "dbus-daemon (package dbus-daemon)")

    @staticmethod
    def _kill_children():
        """Kills the children of this process and waits for one. False when there is none."""
        children = pathlib.Path(f"/proc/self/task/{os.getpid()}/children").read_text().split()
        for child in children:
            os.kill(int(child), signal.SIGKILL)
        try:
            os.waitpid(-1, 0)
        except ChildProcessError:
            return False
        return True
