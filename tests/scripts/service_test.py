"""install/torvex.service: systemd understands it, it confines, and it leaves the program what it needs."""

import os
import re
import signal
import socket
import subprocess
import tempfile
import time
import unittest
import urllib.error
import urllib.request
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
UNIT = ROOT / "install/torvex.service"
PROGRAM = os.environ.get("TORVEX_PROGRAM") or ROOT / "build/release/torvex"


def output(*command):
    return subprocess.run(command, text=True, capture_output=True, check=True).stdout


def settings(name):
    return re.findall(rf"^{name}=(.*)$", UNIT.read_text(), re.M)


def calls_of(group):
    """The names of a group of system calls, with those of the groups in it."""
    names = set()
    for line in output("systemd-analyze", "syscall-filter", group).splitlines()[1:]:
        name = line.strip()
        if name.startswith("@"):
            names |= calls_of(name)
        elif name and not name.startswith("#"):
            names.add(name)
    return names


def allowed_calls():
    names = set()
    for group in settings("SystemCallFilter"):
        names = names - calls_of(group[1:]) if group.startswith("~") else names | calls_of(group)
    return names


def free_port():
    with socket.socket() as one:
        one.bind(("127.0.0.1", 0))
        return one.getsockname()[1]


def status(address):
    try:
        with urllib.request.urlopen(address, timeout=20) as answer:
            return answer.status
    except urllib.error.HTTPError as refused:
        return refused.code


class Service(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def unit(self):
        """With a program that is there on any machine."""
        copy = self.folder / "torvex.service"
        copy.write_text(UNIT.read_text().replace("/usr/local/bin/torvex", "/bin/true"))
        return copy

    def test_systemd_understands_every_line(self):
        done = subprocess.run(["systemd-analyze", "verify", "--man=no", self.unit()], text=True, capture_output=True)
        self.assertEqual((done.returncode, done.stderr), (0, ""))

    def test_it_confines(self):
        said = output("systemd-analyze", "security", "--offline=true", "--no-pager", self.unit())
        level = float(re.search(r"Overall exposure level for torvex.service: ([0-9.]+)", said)[1])
        self.assertLess(level, 2)
        self.assertEqual(settings("NoNewPrivileges"), ["yes"])
        self.assertEqual(settings("ProtectSystem"), ["strict"])
        self.assertEqual(settings("ReadWritePaths"), ["/srv/torvex"])

    def test_what_the_program_asks_of_the_system_is_let_through(self):
        site, trace = self.folder / "site", self.folder / "calls"
        output(PROGRAM, "init", site, "--demo")
        address = f"127.0.0.1:{free_port()}"
        server = subprocess.Popen(["strace", "-f", "-qq", "-e", "signal=none", "-o", trace, PROGRAM, "serve",
                                   "--install", site, "--listen", address], stderr=subprocess.DEVNULL,
                                  start_new_session=True)
        try:
            self.wait_for(f"http://{address}/error.asp")
            for path in ["tvx.asp?pageId=1", "tvx.asp?pageId=46", "tvx.asp?pageId=240",
                         "stylesheets/shared/core.css", "images/bg/garden-map.svg"]:
                self.assertEqual(status(f"http://{address}/{path}"), 200, path)
        finally:
            # The tracer itself heeds nothing while the program runs.
            os.killpg(server.pid, signal.SIGTERM)
            server.wait(timeout=60)
        called = set(re.findall(r"^\d+ +(\w+)\(", trace.read_text(errors="replace"), re.M))
        self.assertIn("epoll_wait", called)
        # The embedded database gives what it makes to the owner of its folder, but only as root; the unit has a user.
        as_root = {"fchown"} if os.geteuid() == 0 else set()
        self.assertEqual(called - as_root - allowed_calls(), set())

    def wait_for(self, address):
        for _ in range(600):
            try:
                return status(address)
            except OSError:
                time.sleep(0.05)
        self.fail(f"nothing answers at {address}")


if __name__ == "__main__":
    unittest.main()
