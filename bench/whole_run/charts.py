"""Draws the charts of docs/performance.md as SVG."""

import os

import matplotlib

matplotlib.use("svg")
# Shapes have the same names in each run, so that a chart changes with its figures only.
matplotlib.rcParams["svg.hashsalt"] = "vyn-profile-viewer"
# pylint: disable-next=wrong-import-position
import matplotlib.pyplot as plt  # noqa: E402, after the choice of the back end

from measure import MEGABYTE


def save(figure, path):
    figure.tight_layout()
    figure.savefig(path, metadata={"Date": None})
    plt.close(figure)


def draw_stages(stages, folder):
    """Milliseconds of each (stage, seconds) of one conversion, in their order."""
    names = [name for name, _ in stages]
    figure, axes = plt.subplots(figsize=(7, 3))
    bars = axes.barh(names, [seconds * 1000 for _, seconds in stages])
    axes.bar_label(bars, fmt="%.0f ms", padding=3)
    axes.margins(x=0.15)
    axes.invert_yaxis()
    axes.set_xlabel("milliseconds")
    axes.set_title("Time by stage, log of 100 MB")
    save(figure, os.path.join(folder, "stages.svg"))


def draw_memory(growth, folder):
    """Peak memory against the size of the log, both axes logarithmic, one line for each reader."""
    figure, axes = plt.subplots(figsize=(7, 3.5))
    for reader, points in growth.items():
        points = sorted(points)
        axes.plot([size / MEGABYTE for size, _ in points], [peak / MEGABYTE for _, peak in points],
                  marker="o", label=reader)
    axes.set_xscale("log")
    axes.set_yscale("log")
    axes.set_xlabel("log, MB")
    axes.set_ylabel("peak memory, MB")
    axes.set_title("Memory by size of the log")
    axes.grid(True, which="major", alpha=0.4)
    axes.legend()
    save(figure, os.path.join(folder, "memory.svg"))
