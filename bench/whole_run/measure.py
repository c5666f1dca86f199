"""Runs whole programs in turn and takes their times and peak memory from the operating system."""

import os
import subprocess
import sys
import tempfile
import time
from dataclasses import dataclass, field

MEGABYTE = 1_000_000


@dataclass
class Program:
    """A command, and what its counted runs took."""

    name: str
    command: list[str]
    output: str = ""  # removed before each run, so that no run overwrites in place
    status: int = 0  # of a run that does what it should
    wall: list[float] = field(default_factory=list)  # seconds
    user: list[float] = field(default_factory=list)  # seconds
    peak: list[float] = field(default_factory=list)  # bytes

    def run(self, counted):
        if self.output and os.path.isfile(self.output):
            os.remove(self.output)
        # A process counts what its parent held when it began: time(1) holds next to nothing, this
        # one more than the programs do.
        with tempfile.NamedTemporaryFile("r", encoding="ascii") as peak:
            started = time.perf_counter()
            process = subprocess.Popen(
                ["/usr/bin/time", "--quiet", "--format=%M", "--output", peak.name, *self.command],
                stdout=subprocess.DEVNULL)
            _, status, usage = os.wait4(process.pid, 0)
            wall = time.perf_counter() - started
            process.returncode = os.waitstatus_to_exitcode(status)
            if process.returncode != self.status:
                sys.exit(f"{self.name} failed with status {process.returncode}: {self.command}")
            if counted:
                self.wall.append(wall)
                self.user.append(usage.ru_utime)
                self.peak.append(int(peak.read()) * 1024)


def run_in_turn(programs, rounds):
    """One warm-up round, then the counted ones: A B C, A B C, so that drift hits all alike."""
    for number in range(rounds + 1):
        for program in programs:
            program.run(counted=number > 0)


def median(values):
    ordered = sorted(values)
    middle = len(ordered) // 2
    return ordered[middle] if len(ordered) % 2 else sum(ordered[middle - 1 : middle + 1]) / 2


@dataclass
class Ratio:
    """One program's figure over another's: of the medians, and the extremes of single rounds."""

    low: float
    middle: float
    high: float

    @classmethod
    def of(cls, values, others):
        ratios = [value / other for value, other in zip(values, others)]
        return cls(min(ratios), median(values) / median(others), max(ratios))
