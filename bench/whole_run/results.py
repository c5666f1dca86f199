"""The tables that the bench prints."""

from dataclasses import dataclass

from measure import MEGABYTE

TOLERANCE = 1.10


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


@dataclass
class Stage:
    """What one stage of the work takes of a log."""

    name: str
    seconds: float
    bytes_rate: float  # of the log, a second
    events_rate: float  # a second


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
