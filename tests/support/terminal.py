"""What a program says on standard error when that is a terminal."""

import contextlib
import os
import pty
import threading


def drain(descriptor):
    """All that comes until the other side closes it."""
    parts = []
    while True:
        try:
            part = os.read(descriptor, 65536)
        except OSError:  # how a terminal ends
            break
        if not part:
            break
        parts.append(part)
    return b"".join(parts)


class Listener:
    """Hands `end` to the program that is listened to, and has what it `said` in the end."""

    def __init__(self, start, end):
        self.end = end
        self.said = None
        self._start = start
        self._thread = threading.Thread(target=self._listen)
        self._thread.start()

    def _listen(self):
        self.said = drain(self._start).decode()

    def close(self):
        """When the program has ended."""
        os.close(self.end)
        self._thread.join()
        os.close(self._start)


@contextlib.contextmanager
def listening(kind):
    """A Listener on a "terminal" or a "pipe" for as long as the block runs."""
    start, end = pty.openpty() if kind == "terminal" else os.pipe()
    listener = Listener(start, end)
    try:
        yield listener
    finally:
        listener.close()


def environment(**more):
    """The caller's, as outside of a CI job, and these."""
    return {**{name: value for name, value in os.environ.items() if name != "CI"}, **more}
