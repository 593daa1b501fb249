"""Managers, session buses and slow sites for tests of whole processes."""
import os
import signal
import socket
import subprocess
import threading
import time

from support import ProcessTestCase, wait_until


class SessionBus:
    """A message bus of its own, in a folder of its own."""

    def __init__(self, folder):
        folder.mkdir(mode=0o700)
        self.process = subprocess.Popen(
            ["dbus-daemon", "--session", "--nofork", "--print-address=1", f"--address=unix:path={folder}/socket"],
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.address = self.process.stdout.readline().decode().strip()

    def close(self):
        self.process.terminate()
        self.process.wait()
        self.process.stdout.close()


class Manager:
    """A manager that has been started in a home, and what it has written."""

    def __init__(self, home, *arguments, environment=None):
        self.home = home
        self.log = home.folder / f"manager-{time.monotonic_ns()}.log"
        with open(self.log, "wb") as log:
            self.process = subprocess.Popen(home.command(*arguments), env=environment or home.environment,
                                            stdin=subprocess.DEVNULL, stdout=log, stderr=subprocess.STDOUT)

    def answers(self):
        with socket.socket(socket.AF_UNIX) as channel:
            try:
                channel.connect(str(self.home.configuration / ".socket"))
                return True
            except OSError:
                return False

    def text(self):
        return self.log.read_text("utf-8")

    def kill(self):
        self.process.kill()
        self.process.wait()

    def end(self):
        """Asks it to end, and answers its exit status."""
        self.process.terminate()
        return self.process.wait(30)


class SlowSite:
    """A site on the port where sites are, which takes requests and answers nothing until it is told to."""

    def __init__(self):
        self.listener = socket.create_server(("127.0.0.1", 80))
        self.asked = threading.Event()
        self.connections = []
        self.released = False
        self.thread = threading.Thread(target=self.serve, daemon=True)
        self.thread.start()

    def serve(self):
        while True:
            try:
                connection, _ = self.listener.accept()
            except OSError:
                return
            self.connections.append(connection)
            self.asked.set()
            if self.released:
                self.answer(connection)

    def answer(self, connection):
        try:
            connection.sendall(b"HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\nConnection: close\r\n\r\n")
            connection.close()
        except OSError:
            pass

    def release(self):
        self.released = True
        for connection in self.connections:
            self.answer(connection)

    def close(self):
        if self.listener.fileno() < 0:
            return
        self.release()
        self.listener.shutdown(socket.SHUT_RDWR)  # closing alone would leave the thread waiting on the port
        self.thread.join()
        self.listener.close()


class ManagerTestCase(ProcessTestCase):
    """A test whose homes may have managers; all of them are gone in the end."""

    def start_bus(self, home=None):
        home = home or self.home
        bus = SessionBus(home.folder / "bus")
        self.addCleanup(bus.close)
        home.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address
        return bus

    def start_manager(self, *arguments, home=None, environment=None):
        manager = Manager(home or self.home, *(arguments or ("--background",)), environment=environment)
        self.addCleanup(manager.kill)
        self.assertTrue(wait_until(manager.answers), manager.text())
        return manager

    def start_command_that_waits(self, name):
        """A command that is busy with a site that does not answer yet, and that site."""
        site = SlowSite()
        self.addCleanup(site.close)
        process = self.home.start("create", "127.0.0.1", "--dev", "--name", name)
        self.assertTrue(site.asked.wait(20))
        return process, site

    def manager_process(self, home=None):
        """The process that holds the catalogue, by its own word."""
        lock = (home or self.home).configuration / ".lock"
        text = lock.read_text() if lock.exists() else ""
        return int(text) if text.strip() else None

    def kill_manager_of(self, home):
        """Ends a manager that another program has started."""
        process = self.manager_process(home)
        try:
            if process and os.readlink(f"/proc/{process}/exe").startswith(str(self.installation.folder)):
                os.kill(process, signal.SIGKILL)
                wait_until(lambda: not os.path.exists(f"/proc/{process}"))
        except OSError:
            pass

    def names(self, home=None):
        return sorted(record["appName"] for record in (home or self.home).records())
