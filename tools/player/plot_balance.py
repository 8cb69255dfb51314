#!/usr/bin/env python3
"""Draws the curves of docs/balance.md from what wirefall-player has written.

    plot_balance.py STUDY FOLDER

STUDY is the folder that study.sh has filled; the SVG files go to FOLDER. The standard library is
enough.
"""

import csv
import pathlib
import statistics
import sys

WIDTH, HEIGHT = 720, 400
LEFT, RIGHT, TOP, BOTTOM = 70, 160, 40, 55
COLORS = ["#1b6ca8", "#c8553d", "#3c896d", "#8a5a9c", "#b8860b", "#555555"]
STRIKES = {
    "corrupted": "corrupted",
    "lost_corrupted": "lost after that",
    "lost_unbuilt": "lost, no way built",
    "lost_on_way": "lost on the way",
}


def read(path):
    with open(path, newline="", encoding="ascii") as file:
        return list(csv.DictReader(file))


def steps(low, high):
    """Round numbers from low to high, about five of them."""
    span = high - low
    step = 10 ** len(str(int(span))) / 1000
    while span / step > 6:
        step *= 2.5 if str(step).strip("0.").startswith("2") else 2
    values = []
    value = low
    while value <= high + step / 1000:
        values.append(round(value, 6))
        value += step
    return values


def number(value):
    return f"{value:g}"


class Plot:
    """A diagram with one pair of axes."""

    def __init__(self, title, x_name, y_name, x_range, y_range):
        self.x_range, self.y_range = x_range, y_range
        self.names = []
        self.parts = [
            f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" '
            f'viewBox="0 0 {WIDTH} {HEIGHT}" font-family="sans-serif" font-size="13">',
            f'<rect width="{WIDTH}" height="{HEIGHT}" fill="#ffffff"/>',
            f'<text x="{LEFT}" y="24" font-size="16" font-weight="bold">{title}</text>',
        ]
        for value in steps(*x_range):
            x = self.x(value)
            self.line(x, TOP, x, HEIGHT - BOTTOM, "#e4e4e4")
            self.text(x, HEIGHT - BOTTOM + 18, number(value), "middle")
        for value in steps(*y_range):
            y = self.y(value)
            self.line(LEFT, y, WIDTH - RIGHT, y, "#e4e4e4")
            self.text(LEFT - 8, y + 4, number(value), "end")
        self.line(LEFT, HEIGHT - BOTTOM, WIDTH - RIGHT, HEIGHT - BOTTOM, "#333333")
        self.line(LEFT, TOP, LEFT, HEIGHT - BOTTOM, "#333333")
        self.text((LEFT + WIDTH - RIGHT) / 2, HEIGHT - 14, x_name, "middle")
        middle = (TOP + HEIGHT - BOTTOM) / 2
        self.parts.append(
            f'<text x="18" y="{middle:.1f}" text-anchor="middle" '
            f'transform="rotate(-90 18 {middle:.1f})">{y_name}</text>'
        )

    def x(self, value):
        low, high = self.x_range
        return LEFT + (value - low) / (high - low) * (WIDTH - RIGHT - LEFT)

    def y(self, value):
        low, high = self.y_range
        return HEIGHT - BOTTOM - (value - low) / (high - low) * (HEIGHT - BOTTOM - TOP)

    def line(self, x1, y1, x2, y2, color):
        self.parts.append(
            f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" stroke="{color}"/>'
        )

    def text(self, x, y, text, anchor="start"):
        self.parts.append(f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}">{text}</text>')

    def color(self, name):
        color = COLORS[len(self.names) % len(COLORS)]
        y = TOP + 14 + 22 * len(self.names)
        self.names.append(name)
        x = WIDTH - RIGHT + 14
        self.parts.append(f'<rect x="{x}" y="{y - 9}" width="14" height="9" fill="{color}"/>')
        self.text(x + 20, y, name)
        return color

    def curve(self, name, points):
        color = self.color(name)
        path = " ".join(f"{self.x(x):.1f},{self.y(y):.1f}" for x, y in points)
        self.parts.append(
            f'<polyline points="{path}" fill="none" stroke="{color}" stroke-width="2"/>'
        )

    def area(self, name, points):
        """points: (x, lower, upper)."""
        color = self.color(name)
        there = [f"{self.x(x):.1f},{self.y(upper):.1f}" for x, _, upper in points]
        back = [f"{self.x(x):.1f},{self.y(lower):.1f}" for x, lower, _ in reversed(points)]
        self.parts.append(f'<polygon points="{" ".join(there + back)}" fill="{color}"/>')

    def write(self, path):
        path.write_text("\n".join(self.parts + ["</svg>", ""]), encoding="ascii")


def by_level(rows):
    levels = {}
    for row in rows:
        levels.setdefault(int(row["level"]), []).append(row)
    return sorted(levels.items())


def mean(rows, column):
    return statistics.fmean(float(row[column]) for row in rows)


def survival(runs, highest):
    """The share of the runs, in percent, that came to each level."""
    reached = [int(run["level"]) for run in runs]
    return [
        (level, 100 * sum(1 for r in reached if r >= level) / len(reached))
        for level in range(1, highest + 1)
    ]


def plot_survival(study, folder):
    plot = Plot("Runs that come to a level", "level", "runs, %", (0, 40), (0, 100))
    plot.curve("perfect", survival(read(study / "perfect.csv"), 40))
    for pace in (20, 12, 8, 4):
        plot.curve(f"{pace} presses/s", survival(read(study / f"pace-{pace}.csv"), 40))
    plot.curve("2 presses/s", survival(read(study / "pace-2.csv"), 40))
    plot.write(folder / "survival.svg")


def plot_pace(study, folder):
    points = []
    for pace in (2, 3, 4, 6, 8, 10, 12, 16, 20):
        reached = sorted(int(run["level"]) for run in read(study / f"pace-{pace}.csv"))
        points.append((pace, reached))
    plot = Plot("How far hands of a pace get", "presses a second", "level", (0, 20), (0, 40))
    for name, part in (("best tenth", 0.9), ("median", 0.5), ("worst tenth", 0.1)):
        plot.curve(name, [(p, r[int((len(r) - 1) * part)]) for p, r in points])
    plot.write(folder / "pace.svg")


def plot_seconds(study, folder):
    levels = [(n, r) for n, r in by_level(read(study / "perfect-levels.csv")) if n <= 120]
    done = [(n, [row for row in r if row["completed"] == "1"]) for n, r in levels]
    plot = Plot("How long a level lasts", "level", "seconds", (0, 120), (0, 800))
    plot.curve("perfect", [(n, mean(r, "seconds")) for n, r in done])
    person = [
        (n, [row for row in r if row["completed"] == "1"])
        for n, r in by_level(read(study / "person-levels.csv"))
    ]
    plot.curve("person", [(n, mean(r, "seconds")) for n, r in person if len(r) >= 5])
    plot.write(folder / "seconds.svg")


def plot_first_delivery(study, folder):
    plot = Plot(
        "Until the first packet arrives", "level", "seconds from the level's start", (0, 16), (0, 12)
    )
    for name, file in (("perfect", "perfect"), ("person", "person")):
        points = []
        for level, rows in by_level(read(study / f"{file}-levels.csv")):
            served = [row for row in rows if float(row["first_delivery_seconds"]) > 0]
            if level <= 16 and len(served) >= 5:
                points.append((level, mean(served, "first_delivery_seconds")))
        plot.curve(name, points)
    plot.write(folder / "first-delivery.svg")


def plot_strikes(study, folder):
    plot = Plot("What the person's strikes are", "level", "strikes a level", (0, 14), (0, 10))
    levels = [(n, r) for n, r in by_level(read(study / "person-levels.csv")) if n <= 14]
    below = {n: 0.0 for n, _ in levels}
    for column, name in STRIKES.items():
        points = []
        for level, rows in levels:
            upper = below[level] + mean(rows, column)
            points.append((level, below[level], upper))
            below[level] = upper
        plot.area(name, points)
    plot.write(folder / "strikes.svg")


def plot_failure(study, folder):
    plot = Plot("Risk that a level ends the run", "level", "failed, %", (0, 14), (0, 60))
    rows = by_level(read(study / "person-levels.csv"))
    plot.curve(
        "person",
        [
            (n, 100 * sum(1 for row in r if row["completed"] == "0") / len(r))
            for n, r in rows
            if len(r) >= 10 and n <= 14
        ],
    )
    plot.write(folder / "risk.svg")


def plot_infection(study, folder):
    plot = Plot(
        "Infection in the course of a level", "second", "live tiles infected, %", (0, 60), (0, 40)
    )
    levels = {}
    for row in read(study / "person-infection.csv"):
        key = (int(row["level"]), int(row["second"]))
        levels.setdefault(key, []).append(100 * float(row["infection"]))
    for level in (1, 3, 6, 9, 12):
        points = []
        for second in range(1, 61):
            values = levels.get((level, second), [])
            if len(values) >= 5:
                points.append((second, statistics.fmean(values)))
        plot.curve(f"level {level}", points)
    plot.write(folder / "infection.svg")


def main():
    study, folder = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    for plot in (
        plot_survival,
        plot_pace,
        plot_seconds,
        plot_first_delivery,
        plot_strikes,
        plot_failure,
        plot_infection,
    ):
        plot(study, folder)


if __name__ == "__main__":
    main()
