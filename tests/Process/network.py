"""A network that ends at this machine, in which a test may take every port."""
import fcntl
import os
import socket
import struct
import subprocess
import sys


def bring_loopback_up():
    set_flags, up_and_running = 0x8914, 0x41
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as any_socket:
        fcntl.ioctl(any_socket, set_flags, struct.pack("16sh", b"lo", up_and_running))


def enter():
    """Begins the present script anew in such a network; returns there."""
    if os.environ.get("WRAPIO_OWN_NETWORK") != "1":
        environment = dict(os.environ, WRAPIO_OWN_NETWORK="1")
        command = ["unshare", "--user", "--map-root-user", "--net", sys.executable, "-B", *sys.argv]
        sys.exit(subprocess.run(command, env=environment).returncode)
    bring_loopback_up()
