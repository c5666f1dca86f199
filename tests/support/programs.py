"""Runs programs, in folders that are gone with their test."""

import contextlib
import os
import subprocess
import tempfile
from pathlib import Path


@contextlib.contextmanager
def temp_folder():
    """A folder of its own, as a Path, for as long as the block runs."""
    with tempfile.TemporaryDirectory() as name:
        yield Path(name)


def run(*words, folder=None, environment=None, status=0, text=False, timeout=None):
    """Runs a program with an empty standard input to its end; its CompletedProcess, with what it
    wrote. Any other exit status than `status` is an AssertionError, unless that is None.

    Variables of `environment` stand before the caller's own. The time is in seconds."""
    result = subprocess.run(words, cwd=folder, env={**os.environ, **(environment or {})},
                            stdin=subprocess.DEVNULL, capture_output=True, text=text,
                            timeout=timeout, check=False)
    if status is not None and result.returncode != status:
        raise AssertionError(f"{words} exits with {result.returncode}: {result.stderr!r}; "
                             f"its output ends in {result.stdout[-4000:]!r}")
    return result
