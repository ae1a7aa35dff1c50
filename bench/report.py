#!/usr/bin/env python3
"""Reports what the benchmark programs measured; scripts/bench calls it.

usage: report.py --command TEXT [--json FILE] [--markdown FILE] [--chart FILE.svg] WIDTH-NUMBER.json...
"""

import argparse
import collections
import datetime
import html
import json
import math
import os
import platform
import subprocess
import sys

OURS = "Bedplate"
MEMORY = "memory alone"  # asks for the memory that ours has to ask for, and does nothing else


class Row:
    """One workload at one size: the median time of each contestant in ns, and what each peer is worth."""

    def __init__(self, width, family, workload, size):
        self.width, self.family, self.workload, self.size = width, family, workload, size
        self.times, self.targets = {}, {}
        self.growth = None  # the power of the size with which our time grows, from the size before

    def judge(self):
        """Finds the peer that our time is worst against, as a part of its target."""
        judged = [who for who, target in self.targets.items() if who != OURS and target > 0]
        candidates = judged or [who for who in self.times if who not in (OURS, MEMORY)]
        weight = lambda who: self.times[who] * (self.targets[who] or 1)
        self.peer = min(candidates, key=weight)
        self.target = self.targets[self.peer] if judged else None
        self.ratio = self.times[OURS] / self.times[self.peer]
        self.missed_by = self.ratio / self.target if judged else 0

    @property
    def verdict(self):
        if self.target is None:
            return "-"
        return "yes" if round(self.ratio, 2) <= self.target else "NO"


def read_rows(paths):
    rows = {}
    for path in paths:
        width = int(os.path.basename(path).split("-")[0])
        with open(path, encoding="utf-8") as file:
            measurements = json.load(file)["benchmarks"]
        for one in measurements:
            if one.get("aggregate_name") != "median":
                continue
            family, workload, size, who = one["run_name"].split("/")[:4]
            row = rows.setdefault((width, family, workload, int(size)), Row(width, family, workload, int(size)))
            row.times[who] = one["cpu_time"]
            row.targets[who] = float(one["label"])
    return finish([row for row in rows.values() if OURS in row.times and len(row.times) > 1])


def finish(rows):
    for row in rows:
        row.judge()
    ordered = []
    for same in by(rows, lambda row: (row.width, row.family, row.workload)).values():
        same.sort(key=lambda row: row.size)
        for before, row in zip(same, same[1:]):
            if before.size > 0:
                row.growth = math.log(row.times[OURS] / before.times[OURS]) / math.log(row.size / before.size)
        ordered += same
    return ordered


def by(rows, key):
    groups = collections.OrderedDict()
    for row in rows:
        groups.setdefault(key(row), []).append(row)
    return groups


def geometric_mean(values):
    return math.exp(sum(map(math.log, values)) / len(values))


def time_text(nanoseconds):
    for unit, factor in (("ns", 1), ("µs", 1e3), ("ms", 1e6), ("s", 1e9)):
        if nanoseconds < 1000 * factor or unit == "s":
            return f"{nanoseconds / factor:.3g} {unit}"


def cells(row):
    growth = "" if row.growth is None else f"{row.growth:.2f}"
    target = "-" if row.target is None else f"{row.target:g}"
    size = f"{row.size:,}" if row.size else "-"
    memory = time_text(row.times[MEMORY]) if MEMORY in row.times else ""
    return [row.workload, size, time_text(row.times[OURS]), memory, row.peer, time_text(row.times[row.peer]),
            f"{row.ratio:.2f}", target, row.verdict, growth]


HEADINGS = ["workload", "size", "Bedplate", "memory", "peer", "its time", "ratio", "target", "met", "growth"]


def summary(rows):
    judged = [row for row in rows if row.target is not None]
    met = sum(row.verdict == "yes" for row in judged)
    return f"geometric mean {geometric_mean([row.ratio for row in rows]):.2f}, {met} of {len(judged)} targets met"


def print_text(rows):
    for (width, family), group in by(rows, lambda row: (row.width, row.family)).items():
        print(f"\n{family}, {width} bits")
        table = [HEADINGS] + [cells(row) for row in group]
        widths = [max(map(len, column)) for column in zip(*table)]
        for line in table:
            left = [cell.ljust(size) if i in (0, 4) else cell.rjust(size)
                    for i, (cell, size) in enumerate(zip(line, widths))]
            print("  " + "  ".join(left).rstrip())
        print(f"  {family}: {summary(group)}")
    missed = sorted((row for row in rows if row.verdict == "NO"), key=lambda row: -row.missed_by)
    print(f"\nTargets missed: {len(missed)}" + (", the worst first (ratio to target)" if missed else ""))
    for row in missed:
        print(f"  {row.missed_by:8.2f}  {row.width} bits  {row.family}/{row.workload}/{row.size}")


def first_line(*command):
    try:
        return subprocess.run(command, capture_output=True, text=True, check=True).stdout.splitlines()[0]
    except (OSError, subprocess.CalledProcessError, IndexError):
        return "unknown"


def circumstances(command):
    model = "unknown processor"
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        for line in file:
            if line.startswith("model name"):
                model = line.split(":", 1)[1].strip()
                break
    return {"date": datetime.date.today().isoformat(), "command": command.strip(),
            "machine": f"{model}, {os.cpu_count()} cores, {platform.system()} {platform.machine()}",
            "compiler": first_line("g++", "--version"), "revision": first_line("git", "rev-parse", "--short", "HEAD")}


def write_json(path, rows, facts):
    figures = [{"width": row.width, "family": row.family, "workload": row.workload, "size": row.size,
                "ns": row.times, "peer": row.peer, "ratio": row.ratio, "target": row.target, "met": row.verdict}
               for row in rows]
    with open(path, "w", encoding="utf-8") as file:
        json.dump({**facts, "workloads": figures}, file, indent=1)


# ---- The page ---------------------------------------------------------------------------------------------------

START, END = "<!-- figures: written by scripts/bench -->\n", "<!-- end of the figures -->\n"


def markdown(rows, facts):
    yield f"Measured on {facts['date']} by `{facts['command']}` at {facts['revision']}: {facts['machine']}; {facts['compiler']}.\n"
    yield "\n| family | width | workloads and sizes | geometric mean | targets met |\n|---|---|---|---|---|\n"
    for (family, width), group in by(sorted(rows, key=lambda row: row.family),
                                     lambda row: (row.family, row.width)).items():
        mean, met = summary(group).removeprefix("geometric mean ").split(", ")
        yield f"| {family} | {width} | {len(group)} | {mean} | {met.removesuffix(' targets met')} |\n"
    for (width, family), group in by(rows, lambda row: (row.width, row.family)).items():
        yield f"\n### {family.capitalize()}, {width} bits\n\n"
        yield "| " + " | ".join(HEADINGS) + " |\n|---|--:|--:|--:|---|--:|--:|--:|---|--:|\n"
        for row in group:
            yield "| " + " | ".join(cells(row)) + " |\n"


def write_markdown(path, rows, facts):
    """Puts the tables between the two marks of a page that has them; makes a page of the tables otherwise."""
    page = START + END
    if os.path.exists(path):
        with open(path, encoding="utf-8") as file:
            page = file.read()
    if START not in page or END not in page:
        sys.exit(f"report.py: {path} has no place for the figures")
    before, rest = page.split(START, 1)
    after = rest.split(END, 1)[1]
    with open(path, "w", encoding="utf-8") as file:
        file.write(before + START + "\n" + "".join(markdown(rows, facts)) + "\n" + END + after)


# ---- The chart: a small panel for each workload with several sizes, both axes logarithmic -----------------------

COLUMNS, WIDTH, HEIGHT, MARGIN = 5, 230, 190, 34
COLOURS = ["#c0392b", "#2471a3", "#7d6608", "#1e8449", "#7d3c98", "#616a6b", "#ca6f1e"]


def panel(rows, left, top):
    people = list(dict.fromkeys([OURS] + [who for row in rows for who in row.times]))
    xs = [math.log10(row.size) for row in rows]
    ys = [math.log10(time) for row in rows for time in row.times.values()]
    low, high = math.floor(min(ys)), max(math.ceil(max(ys)), math.floor(min(ys)) + 1)
    x_of = lambda x: left + MARGIN + (x - min(xs)) / (max(xs) - min(xs)) * (WIDTH - MARGIN - 12)
    y_of = lambda y: top + HEIGHT - 62 - (y - low) / (high - low) * (HEIGHT - 86)
    yield f'<text x="{left + MARGIN}" y="{top + 12}" class="title">{html.escape(rows[0].workload)}, {rows[0].width} bits</text>'
    for decade in range(low, high + 1):
        if (high - low) <= 5 or (decade - low) % 2 == 0:
            yield f'<line x1="{left + MARGIN}" x2="{left + WIDTH - 12}" y1="{y_of(decade):.1f}" y2="{y_of(decade):.1f}" class="grid"/>'
            yield f'<text x="{left + MARGIN - 3}" y="{y_of(decade) + 3:.1f}" class="y">{time_text(10 ** decade)}</text>'
    for row, x in zip(rows, xs):
        yield f'<text x="{x_of(x):.1f}" y="{top + HEIGHT - 50}" class="x">{size_text(row.size)}</text>'
    for number, who in enumerate(people):
        colour = COLOURS[number % len(COLOURS)]
        points = [(x_of(x), y_of(math.log10(row.times[who]))) for row, x in zip(rows, xs) if who in row.times]
        line = " ".join(f"{x:.1f},{y:.1f}" for x, y in points)
        yield f'<polyline points="{line}" stroke="{colour}" stroke-width="{2.4 if who == OURS else 1.1}"/>'
        column, line_of_legend = number % 3, number // 3
        yield (f'<text x="{left + 8 + column * 74}" y="{top + HEIGHT - 38 + 9 * line_of_legend}" class="who" '
               f'fill="{colour}">{html.escape(who.removeprefix("std::"))}</text>')


def size_text(size):
    return f"{size // 1000000}M" if size >= 1000000 else f"{size // 1000}k" if size >= 1000 else str(size)


def write_chart(path, rows):
    parts, top = [], 10
    for family, group in by(sorted(rows, key=lambda row: row.family), lambda row: row.family).items():
        curves = [same for same in by(group, lambda row: (row.workload, row.width)).values() if len(same) > 1]
        if not curves:
            continue
        parts.append(f'<text x="8" y="{top + 16}" class="family">{family}: time against size</text>')
        top += 26
        for number, same in enumerate(curves):
            parts += panel(same, number % COLUMNS * WIDTH, top + number // COLUMNS * HEIGHT)
        top += (len(curves) + COLUMNS - 1) // COLUMNS * HEIGHT + 14
    style = ("text{font:9px sans-serif}.family{font-size:15px;font-weight:bold}.title{font-size:11px}"
             ".y{font-size:8px;text-anchor:end}.x{font-size:8px;text-anchor:middle}.who{font-size:8px}"
             ".grid{stroke:#ddd}polyline{fill:none}")
    with open(path, "w", encoding="utf-8") as file:
        file.write(f'<svg xmlns="http://www.w3.org/2000/svg" width="{COLUMNS * WIDTH}" height="{top}">'
                   f"<style>{style}</style><rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n"
                   + "\n".join(parts) + "\n</svg>\n")


def main():
    parser = argparse.ArgumentParser(description="Reports what the benchmark programs measured.")
    parser.add_argument("--command", required=True, help="what was called, for the report")
    parser.add_argument("--json", help="keep the figures")
    parser.add_argument("--markdown", help="write the tables into a page")
    parser.add_argument("--chart", help="draw how time grows with size")
    parser.add_argument("figures", nargs="+", help="the benchmark programs' output, as WIDTH-NUMBER.json")
    arguments = parser.parse_args()
    rows = read_rows(arguments.figures)
    if not rows:
        sys.exit("report.py: nothing was measured")
    facts = circumstances(arguments.command)
    print_text(rows)
    if arguments.json:
        write_json(arguments.json, rows, facts)
    if arguments.markdown:
        write_markdown(arguments.markdown, rows, facts)
    if arguments.chart:
        write_chart(arguments.chart, rows)
    for path in filter(None, (arguments.json, arguments.markdown, arguments.chart)):
        print(f"written: {path}")


if __name__ == "__main__":
    main()
