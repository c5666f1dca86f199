"""Draws the charts of docs/performance.md as SVG, with nothing but text."""

import os

from measure import MEGABYTE

WIDTH, HEIGHT, LEFT, BOTTOM = 640, 320, 90, 60
BAR_GAP = 0.35  # of a bar's slot


def bar_chart(title, unit, bars):
    """One bar for each (label, value)."""
    top = max(value for _, value in bars) or 1
    plot_width, plot_height = WIDTH - LEFT - 20, HEIGHT - BOTTOM - 50
    slot = plot_width / len(bars)
    parts = [
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" '
        'font-family="sans-serif" font-size="13">',
        f'<rect width="{WIDTH}" height="{HEIGHT}" fill="white"/>',
        f'<text x="{LEFT}" y="25" font-size="16">{title}</text>',
        f'<line x1="{LEFT}" y1="{HEIGHT - BOTTOM}" x2="{WIDTH - 20}" y2="{HEIGHT - BOTTOM}" '
        'stroke="black"/>',
    ]
    for index, (label, value) in enumerate(bars):
        height = plot_height * value / top
        x = LEFT + slot * (index + BAR_GAP / 2)
        y = HEIGHT - BOTTOM - height
        centre = x + slot * (1 - BAR_GAP) / 2
        parts += [
            f'<rect x="{x:.1f}" y="{y:.1f}" width="{slot * (1 - BAR_GAP):.1f}" '
            f'height="{height:.1f}" fill="#3b6ea5"/>',
            f'<text x="{centre:.1f}" y="{y - 6:.1f}" text-anchor="middle">{value:.3g} {unit}</text>',
            f'<text x="{centre:.1f}" y="{HEIGHT - BOTTOM + 20}" text-anchor="middle">{label}</text>',
        ]
    return "\n".join(parts + ["</svg>\n"])


def write(folder, name, chart):
    with open(os.path.join(folder, name), "w", encoding="utf-8") as file:
        file.write(chart)


def draw_stages(stages, folder):
    """Milliseconds of each (stage, seconds) of one conversion."""
    bars = [(name, seconds * 1000) for name, seconds in stages]
    write(folder, "stages.svg", bar_chart("Time by stage, 100 MB log", "ms", bars))


def draw_growth(growth, folder):
    bars = [(entry["name"], entry["peak"] / MEGABYTE) for entry in growth]
    write(folder, "memory.svg", bar_chart("Peak memory by log", "MB", bars))
