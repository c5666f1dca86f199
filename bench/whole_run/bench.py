#!/usr/bin/env python3
"""Measures whole runs of the viewer against its baselines; see docs/performance.md.

Usage: bench.py --binaries DIR --source DIR --folder DIR --results DIR [options]

Prints one table and writes it as Markdown, with the charts, into the results folder.
"""

import argparse
import json
import os
import subprocess
import sys
from datetime import datetime, timezone

from charts import draw_memory, draw_stages
from measure import MEGABYTE, Ratio, median, run_in_turn
from results import Results, Stage, flush_share, stage_table
from workloads import CHUNK, ONE_CHUNK, SMALL_CHUNK, Workloads


class Bench:
    """All measurements. `scale` multiplies each log's size; the demands are for a scale of 1."""

    def __init__(self, workloads, rounds, scale):
        self.workloads = workloads
        self.rounds = rounds
        self.scale = scale
        self.results = Results()

    def size(self, megabytes):
        """Bytes of the log that has that many megabytes in a run at full scale."""
        return round(megabytes * self.scale * MEGABYTE)

    def fixed(self, value):
        return [value] * self.rounds

    def compare_with_baselines(self):
        workloads, add = self.workloads, self.results.add
        log = workloads.log(self.size(100))
        viewer, plain, export = workloads.viewer(log), workloads.plain(log), workloads.exporter(log)
        viewer.run(counted=False)
        floor = workloads.floor(log, os.path.getsize(viewer.output))
        run_in_turn([viewer, plain, floor, export], self.rounds)
        log_size = os.path.getsize(log)
        add("wall time / plain", Ratio.of(viewer.wall, plain.wall), 0.30)
        add("user CPU / plain", Ratio.of(viewer.user, plain.user), 0.55)
        add("wall time / floor", Ratio.of(viewer.wall, floor.wall), 4.5)
        add("peak memory / plain", Ratio.of(viewer.peak, plain.peak))
        allowed = 2.6 * log_size + CHUNK + 20 * MEGABYTE
        add("peak memory / (2.6 × log + chunk + 20 MB)",
            Ratio.of(viewer.peak, self.fixed(allowed)), 1.0)
        add("peak memory, bytes per log byte", Ratio.of(viewer.peak, self.fixed(log_size)))
        add("export json, wall time / plain", Ratio.of(export.wall, plain.wall), 0.15)
        add("export json, user CPU / plain", Ratio.of(export.user, plain.user), 0.25)
        add("export json, wall time / floor", Ratio.of(export.wall, floor.wall), 3.0)
        add("export json, peak memory / (chunk + 16 MB)",
            Ratio.of(export.peak, self.fixed(CHUNK + 16 * MEGABYTE)), 1.0)

    def compare_on_one_chunk(self):
        workloads, add = self.workloads, self.results.add
        log = workloads.log(self.size(100), ONE_CHUNK)
        viewer, flatc, export = workloads.viewer(log), workloads.flatc(log), workloads.exporter(log)
        run_in_turn([viewer, flatc, export], self.rounds)
        chunk = os.path.getsize(log)
        add("wall time / flatc, one chunk", Ratio.of(viewer.wall, flatc.wall), 0.40)
        add("peak memory, one chunk / (2.6 × log + chunk + 20 MB)",
            Ratio.of(viewer.peak, self.fixed(3.6 * chunk + 20 * MEGABYTE)), 1.0)
        add("export json, wall time / flatc, one chunk", Ratio.of(export.wall, flatc.wall), 0.20)
        add("export json, peak memory, one chunk / (chunk + 16 MB)",
            Ratio.of(export.peak, self.fixed(chunk + 16 * MEGABYTE)), 1.0)

    def growth(self, what, programs, wall_demand=None):
        """Time per byte against that of the first of (name, program, log); gives the points (bytes
        of log, bytes of peak memory)."""
        run_in_turn([program for _, program, _ in programs], self.rounds)
        base_name, base, base_log = programs[0]
        for name, program, log in programs[1:]:
            ratio = os.path.getsize(log) / os.path.getsize(base_log)
            self.results.add(f"{what}user CPU per byte, {name} / {base_name}",
                             Ratio.of(program.user, [time * ratio for time in base.user]), 1.15)
            self.results.add(f"{what}wall time per byte, {name} / {base_name}",
                             Ratio.of(program.wall, [time * ratio for time in base.wall]),
                             wall_demand)
        return [(os.path.getsize(log), median(program.peak)) for _, program, log in programs]

    def name(self, megabytes):
        return f"{megabytes * self.scale:g}MB"

    def view_growth(self):
        """What the kernel takes for a page depends on whether a virtual machine's host has it at
        hand, up to tenfold, so that the demand is on the program's own time."""
        logs = [(self.name(size), self.workloads.log(self.size(size))) for size in (100, 10, 1000)]
        logs += [(name, self.workloads.log(self.size(100), chunk)) for name, chunk in
                 (("small chunks", SMALL_CHUNK), ("one chunk", ONE_CHUNK))]
        points = self.growth("", [(name, self.workloads.viewer(log), log) for name, log in logs])
        return points[:3]  # of the logs that differ in size alone

    def export_growth(self):
        """Without the output's pages, whose price is the kernel's: the text goes to /dev/null."""
        logs = [(self.name(size), self.workloads.log(self.size(size)))
                for size in (100, 1000, 10_000)]
        programs = [(name, self.workloads.exporter(log, "/dev/null"), log) for name, log in logs]
        points = self.growth("export json, ", programs, wall_demand=1.15)
        for name, program, _ in programs[1:]:
            self.results.add(f"export json, peak memory, {name} / (chunk + 16 MB)",
                             Ratio.of(program.peak, self.fixed(CHUNK + 16 * MEGABYTE)), 1.0)
        return points

    def summary(self):
        points = []
        for size in (10, 100):
            log = self.workloads.log(self.size(size))
            summary, viewer = self.workloads.viewer(log, "summary"), self.workloads.viewer(log)
            run_in_turn([summary, viewer], self.rounds)
            points.append((os.path.getsize(log), median(summary.peak)))
        self.results.add("wall time, summary and CSV / JSON", Ratio.of(summary.wall, viewer.wall))
        self.results.add("peak memory of the summary, bytes per log byte",
                         Ratio.of(summary.peak, self.fixed(points[-1][0])))
        return points

    def inspection(self):
        """What is told of a log, against reading and verifying it; what is saved, against cp."""
        workloads, add = self.workloads, self.results.add
        log = workloads.log(self.size(1000))
        walker, recoverer, copier = (workloads.walker(log), workloads.recoverer(log),
                                     workloads.copier(log))
        tellers = [workloads.teller(verb, log) for verb in ("info", "check")]
        run_in_turn([walker, *tellers], self.rounds)
        run_in_turn([recoverer, copier], self.rounds)
        searcher = workloads.recoverer(workloads.damaged(log), "--search", status=3)
        run_in_turn([searcher], self.rounds)
        for program in tellers:
            add(f"{program.name}, wall time / reading and verifying",
                Ratio.of(program.wall, walker.wall), 2.0)
        add("recover, wall time / cp", Ratio.of(recoverer.wall, copier.wall), 2.0)
        add("recover --search, wall time / cp", Ratio.of(searcher.wall, copier.wall), 3.0)
        for program in (*tellers, recoverer, searcher):
            add(f"{program.name}, peak memory / (chunk + 16 MB)",
                Ratio.of(program.peak, self.fixed(CHUNK + 16 * MEGABYTE)), 1.0)

    def stages(self, tool):
        """Seconds of each stage, by a benchmark that runs them one by one."""
        report = subprocess.run(
            [self.workloads.tool(tool), "--benchmark_format=json"],
            env={**os.environ, "VYN_BENCH_LOG": self.workloads.log(self.size(100)),
                 "VYN_BENCH_OUTPUT": self.workloads.path("stage.out")},
            check=True, capture_output=True, text=True,
        ).stdout
        return [Stage(stage["name"], stage["real_time"] / 1000, stage["bytes_per_second"],
                      stage["items_per_second"]) for stage in json.loads(report)["benchmarks"]]

    def conditions(self):
        now = datetime.now(timezone.utc).strftime("%Y-%m-%d %H:%M")
        busy = os.getloadavg()[0]
        return (f"{now} UTC, {os.cpu_count()} cores, {self.rounds} rounds; {busy:.1f} processes "
                "ran or waited when they began.\n")


def parse_options():
    parser = argparse.ArgumentParser(description=__doc__)
    for name in ("binaries", "source", "folder", "results"):
        parser.add_argument(f"--{name}", required=True)
    parser.add_argument("--check", action="store_true",
                        help="fail where a demand is missed by more than a tenth")
    parser.add_argument("--record", action="store_true",
                        help="put tables and charts into docs/performance.md as well")
    parser.add_argument("--rounds", type=int, default=7, help="counted runs of each program")
    parser.add_argument("--scale", type=float, default=1, help="multiplies the size of each log")
    return parser.parse_args()


def record(source, table):
    """Puts the tables between their marks in docs/performance.md."""
    path = os.path.join(source, "docs", "performance.md")
    with open(path, encoding="utf-8") as file:
        before, rest = file.read().split("<!-- figures -->\n")
    after = rest.split("<!-- end of figures -->\n")[1]
    with open(path, "w", encoding="utf-8") as file:
        file.write(f"{before}<!-- figures -->\n{table}<!-- end of figures -->\n{after}")


def main():
    options = parse_options()
    os.makedirs(options.folder, exist_ok=True)
    os.makedirs(options.results, exist_ok=True)

    workloads = Workloads(options.binaries, options.source, options.folder)
    bench = Bench(workloads, options.rounds, options.scale)
    conditions = bench.conditions()
    bench.compare_with_baselines()
    bench.compare_on_one_chunk()
    workloads.clear()
    growth = {"JSON document": bench.view_growth(), "summary": bench.summary()}
    workloads.clear()
    growth["export json"] = bench.export_growth()
    workloads.clear()
    bench.inspection()
    workloads.clear()
    json_stages = bench.stages("stages_bench")
    summary_stages = bench.stages("summary_reader_bench")

    table = "\n".join([conditions, bench.results.markdown(),
                       stage_table(json_stages + summary_stages), flush_share(summary_stages)])
    print(table)
    with open(os.path.join(options.results, "figures.md"), "w", encoding="utf-8") as file:
        file.write(table)
    charts = [options.results]
    if options.record:
        record(options.source, table)
        charts.append(os.path.join(options.source, "docs"))
    for folder in charts:
        draw_memory(growth, folder)
        draw_stages([(stage.name, stage.seconds) for stage in json_stages], folder)
    if options.check and bench.results.missed():
        sys.exit("missed by more than a tenth: " + "; ".join(bench.results.missed()))


if __name__ == "__main__":
    main()
