#!/usr/bin/python3
"""In place of the program: tells the service manager that it is ready, and does nothing more."""

import os
import signal
import socket

with socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM) as manager:
    manager.sendto(b"READY=1", os.environ["NOTIFY_SOCKET"])
signal.pause()
