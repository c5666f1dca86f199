#!/usr/bin/env python3
"""Measures whole runs of the viewer against its baselines; see docs/performance.md.

Usage: bench.py --binaries DIR --source DIR --folder DIR --results DIR [--check]

Prints one table and writes it as Markdown, with the charts, into the results folder.
With --check, fails where a demand is missed by more than a tenth.
"""

import argparse
import json
import os
import subprocess
import sys
from dataclasses import dataclass

from charts import draw_memory, draw_stages
from measure import MEGABYTE, Ratio, median, run_in_turn
from workloads import Workloads

ROUNDS = 7
TOLERANCE = 1.10


@dataclass
class Stage:
    """What one stage of the work takes of a 100 MB log."""

    name: str
    seconds: float
    bytes_rate: float  # of the log, a second
    events_rate: float  # a second


class Results:
    """The table's rows: what was measured, and where there is one, the most that it may be."""

    def __init__(self):
        self.rows = []

    def add(self, name, ratio, demand=None):
        self.rows.append((name, ratio, demand))

    def missed(self):
        return [name for name, ratio, demand in self.rows
                if demand is not None and ratio.middle > demand * TOLERANCE]

    def markdown(self):
        lines = ["| measure | min | median | max | demand |", "|---|---|---|---|---|"]
        for name, ratio, demand in self.rows:
            limit = f"≤ {demand:g}" if demand is not None else ""
            lines.append(f"| {name} | {ratio.low:.2f} | {ratio.middle:.2f} | {ratio.high:.2f} "
                         f"| {limit} |")
        return "\n".join(lines) + "\n"


def compare_with_baselines(workloads, results):
    log = workloads.log("many_chunks.log", "100MB", "4MB")
    one_chunk = workloads.log("one_chunk.log", "100MB", "1GB")
    viewer, plain, export = workloads.viewer(log), workloads.plain(log), workloads.exporter(log)
    viewer.run(counted=False)
    text_size = os.path.getsize(viewer.output)
    floor = workloads.floor(log, text_size)
    run_in_turn([viewer, plain, floor, export], ROUNDS)
    results.add("wall time / plain", Ratio.of(viewer.wall, plain.wall), 0.30)
    results.add("user CPU / plain", Ratio.of(viewer.user, plain.user), 0.55)
    results.add("wall time / floor", Ratio.of(viewer.wall, floor.wall), 4.5)
    results.add("peak memory / plain", Ratio.of(viewer.peak, plain.peak))

    log_size = os.path.getsize(log)
    allowed = 2.6 * log_size + 4 * MEGABYTE + 20 * MEGABYTE
    results.add("peak memory / (2.6 × log + chunk + 20 MB)",
                Ratio.of(viewer.peak, [allowed] * ROUNDS), 1.0)
    results.add("peak memory, bytes per log byte", Ratio.of(viewer.peak, [log_size] * ROUNDS))

    results.add("export json, wall time / plain", Ratio.of(export.wall, plain.wall), 0.15)
    results.add("export json, user CPU / plain", Ratio.of(export.user, plain.user), 0.25)
    results.add("export json, wall time / floor", Ratio.of(export.wall, floor.wall), 3.0)
    results.add("export json, peak memory / (chunk + 16 MB)",
                Ratio.of(export.peak, [20 * MEGABYTE] * ROUNDS), 1.0)

    single, flatc = workloads.viewer(one_chunk), workloads.flatc(one_chunk)
    single_export = workloads.exporter(one_chunk)
    run_in_turn([single, flatc, single_export], ROUNDS)
    results.add("export json, wall time / flatc, one chunk",
                Ratio.of(single_export.wall, flatc.wall), 0.20)
    results.add("export json, peak memory, one chunk / (chunk + 16 MB)",
                Ratio.of(single_export.peak, [os.path.getsize(one_chunk) + 16 * MEGABYTE] * ROUNDS),
                1.0)
    results.add("wall time / flatc, one chunk", Ratio.of(single.wall, flatc.wall), 0.40)
    allowed = 2.6 * log_size + os.path.getsize(one_chunk) + 20 * MEGABYTE
    results.add("peak memory, one chunk / (2.6 × log + chunk + 20 MB)",
                Ratio.of(single.peak, [allowed] * ROUNDS), 1.0)


def check_growth(workloads, results):
    """Time per byte against that of the 100 MB log. What the kernel takes for a page depends on
    whether a virtual machine's host has it at hand, up to tenfold, so that the demand is on the
    program's own time. Gives the points (bytes of log, bytes of peak memory) of the logs that
    differ in size alone."""
    viewers = {}
    for name, size, chunk_size in [("10MB", "10MB", "4MB"), ("100MB", "100MB", "4MB"),
                                   ("1000MB", "1000MB", "4MB"), ("30,000 chunks", "100MB", "3330"),
                                   ("one chunk", "100MB", "1GB")]:
        log = workloads.log(f"growth_{name.replace(',', '').replace(' ', '_')}.log", size,
                            chunk_size)
        viewers[name] = (workloads.viewer(log), os.path.getsize(log))
    run_in_turn([viewer for viewer, _ in viewers.values()], ROUNDS)
    base, base_size = viewers["100MB"]
    for name, (viewer, size) in viewers.items():
        if name != "100MB":
            per_byte = size / base_size
            results.add(f"user CPU per byte, {name} / 100MB",
                        Ratio.of(viewer.user, [time * per_byte for time in base.user]), 1.15)
            results.add(f"wall time per byte, {name} / 100MB",
                        Ratio.of(viewer.wall, [time * per_byte for time in base.wall]))
    return [(size, median(viewer.peak)) for name, (viewer, size) in viewers.items()
            if name.endswith("MB")]


def check_export_growth(workloads, results):
    """Without the output's pages, whose price is the kernel's: the text goes to /dev/null."""
    exporters = {}
    for name in ("100MB", "1000MB"):
        log = workloads.log(f"growth_{name}.log", name, "4MB")
        exporters[name] = (workloads.exporter(log, "/dev/null"), os.path.getsize(log))
    run_in_turn([exporter for exporter, _ in exporters.values()], ROUNDS)
    (base, base_size), (large, size) = exporters["100MB"], exporters["1000MB"]
    results.add("export json, wall time per byte, 1000MB / 100MB",
                Ratio.of(large.wall, [time * size / base_size for time in base.wall]), 1.15)
    results.add("export json, peak memory, 1000MB / (chunk + 16 MB)",
                Ratio.of(large.peak, [20 * MEGABYTE] * ROUNDS), 1.0)


def measure_summary(workloads, results):
    """Summary and CSV; gives its points as check_growth does."""
    points = []
    for name in ("10MB", "100MB"):
        log = workloads.log("summary.log", name, "4MB")
        summary, viewer = workloads.viewer(log, "summary"), workloads.viewer(log)
        run_in_turn([summary, viewer], rounds=3)
        points.append((os.path.getsize(log), median(summary.peak)))
    results.add("wall time, summary and CSV / JSON", Ratio.of(summary.wall, viewer.wall))
    results.add("peak memory of the summary, bytes per log byte",
                Ratio.of(summary.peak, [points[-1][0]] * len(summary.peak)))
    return points


def run_stages(workloads, tool):
    """Seconds of each stage, by a benchmark that runs them one by one."""
    report = subprocess.run(
        [workloads.tool(tool), "--benchmark_format=json"],
        env={**os.environ, "VYN_BENCH_LOG": workloads.log("many_chunks.log", "100MB", "4MB"),
             "VYN_BENCH_OUTPUT": workloads.path("stage.out")},
        check=True, capture_output=True, text=True,
    ).stdout
    return [Stage(stage["name"], stage["real_time"] / 1000, stage["bytes_per_second"],
                  stage["items_per_second"]) for stage in json.loads(report)["benchmarks"]]


def stage_table(stages):
    lines = ["| stage | ms | MB/s | million events/s |", "|---|---|---|---|"]
    lines += [f"| {stage.name} | {stage.seconds * 1000:.0f} | {stage.bytes_rate / MEGABYTE:.0f} "
              f"| {stage.events_rate / 1e6:.1f} |" for stage in stages]
    return "\n".join(lines) + "\n"


def flush_share(stages):
    """Part of the CSV listing's time that its flush after each line takes."""
    seconds = {stage.name: stage.seconds for stage in stages}
    share = 1 - seconds["csv without flush"] / seconds["csv"]
    return f"Of the CSV listing's time its flush after each line takes {share:.0%}.\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    for name in ("binaries", "source", "folder", "results"):
        parser.add_argument(f"--{name}", required=True)
    parser.add_argument("--check", action="store_true")
    options = parser.parse_args()
    os.makedirs(options.folder, exist_ok=True)
    os.makedirs(options.results, exist_ok=True)

    workloads = Workloads(options.binaries, options.source, options.folder)
    results = Results()
    compare_with_baselines(workloads, results)
    growth = {"JSON document": check_growth(workloads, results)}
    check_export_growth(workloads, results)
    growth["summary"] = measure_summary(workloads, results)
    json_stages = run_stages(workloads, "stages_bench")
    summary_stages = run_stages(workloads, "summary_reader_bench")

    table = "\n".join([results.markdown(), stage_table(json_stages + summary_stages),
                       flush_share(summary_stages)])
    print(table)
    with open(os.path.join(options.results, "figures.md"), "w", encoding="utf-8") as file:
        file.write(table)
    draw_memory(growth, options.results)
    draw_stages([(stage.name, stage.seconds) for stage in json_stages], options.results)
    if options.check and results.missed():
        sys.exit("missed by more than a tenth: " + "; ".join(results.missed()))


if __name__ == "__main__":
    main()
