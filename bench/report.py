#!/usr/bin/env python3
"""Reports what the benchmark programs measured; scripts/bench calls it.

usage: report.py --command TEXT [--json FILE] [--docs DIRECTORY] WIDTH-NUMBER.json...

A contestant "Bedplate" or "Bedplate:variant" is ours; each variant is compared with the fastest of the others.
"""

import argparse
import datetime
import html
import json
import math
import os
import pathlib
import platform
import re
import subprocess
import sys

OURS = "Bedplate"
FAMILIES = ["string", "search", "format", "number", "array", "table", "date"]


class Row:
    """One workload at one size: our median time and those of the peers, in ns."""

    def __init__(self, width, family, workload, size, variant, ours, peers, target):
        self.width, self.family, self.workload, self.size, self.variant = width, family, workload, size, variant
        self.ours, self.peers, self.target = ours, peers, target
        self.peer = min(peers, key=peers.get)
        self.ratio = ours / peers[self.peer]
        self.met = "-" if not target else "yes" if round(self.ratio, 2) <= target else "NO"

    def cells(self):
        size = ", ".join(filter(None, [f"{self.size:,}" if self.size else "", self.variant])) or "-"
        return [self.workload, size, time_text(self.ours), self.peer, time_text(self.peers[self.peer]),
                f"{self.ratio:.2f}", f"{self.target:g}" if self.target else "-", self.met]


HEADINGS = ["workload", "size", OURS, "best peer", "its time", "ratio", "target", "met"]


def time_text(nanoseconds):
    for unit, factor in (("ns", 1), ("µs", 1e3), ("ms", 1e6), ("s", 1e9)):
        if nanoseconds < 1000 * factor or unit == "s":
            return f"{nanoseconds / factor:.3g} {unit}"


def by(rows, *names):
    groups = {}
    for row in rows:
        groups.setdefault(tuple(getattr(row, name) for name in names), []).append(row)
    return groups


def read_rows(paths):
    times, targets = {}, {}
    for path in map(pathlib.Path, sorted(paths)):
        width = int(path.name.split("-")[0])
        for one in json.loads(path.read_text())["benchmarks"]:
            if one.get("aggregate_name") == "median":
                family, workload, size, who = one["run_name"].split("/")[:4]
                key = (width, family, workload, int(size))
                times.setdefault(key, {})[who] = one["cpu_time"]
                targets[key] = float(one["label"])
    rows = []
    for key, everybody in times.items():
        peers = {who: time for who, time in everybody.items() if who.split(":")[0] != OURS}
        rows += [Row(*key, who.partition(":")[2], time, peers, targets[key])
                 for who, time in everybody.items() if who not in peers and peers]
    order = list(dict.fromkeys((row.family, row.workload) for row in rows))
    return sorted(rows, key=lambda row: (FAMILIES.index(row.family), order.index((row.family, row.workload)), row.size, row.variant))


def geometric_mean(values):
    return math.exp(sum(map(math.log, values)) / len(values))


def summary(rows):
    judged = [row for row in rows if row.target]
    met = sum(row.met == "yes" for row in judged)
    return f"geometric mean {geometric_mean([row.ratio for row in rows]):.2f}, {met} of {len(judged)} targets met"


def print_text(rows):
    for (width, family), group in by(rows, "width", "family").items():
        print(f"\n{family}, {width} bits")
        table = [HEADINGS] + [row.cells() for row in group]
        widths = [max(map(len, column)) for column in zip(*table)]
        for line in table:
            left = [cell.ljust(size) if i in (0, 1, 3) else cell.rjust(size)
                    for i, (cell, size) in enumerate(zip(line, widths))]
            print("  " + "  ".join(left).rstrip())
        print(f"  {family}: {summary(group)}")
    missed = sorted((row for row in rows if row.met == "NO"), key=lambda row: -row.ratio / row.target)
    print(f"\nTargets missed: {len(missed)}" + (", the worst first (ratio to target)" if missed else ""))
    for row in missed:
        print(f"  {row.ratio / row.target:8.2f}  {row.width} bits  {row.family}/" + "  ".join(row.cells()[:2]))


# ---- What was measured, and where --------------------------------------------------------------------------------

def first_line(command):
    return subprocess.getoutput(command).split("\n")[0]


def circumstances(command):
    processor = pathlib.Path("/proc/cpuinfo").read_text()
    kind = "a virtual machine" if re.search(r"^flags\b.*\bhypervisor\b", processor, re.M) else "a machine"
    make = re.search(r"^model name\s*: (.*)", processor, re.M)
    system = platform.freedesktop_os_release().get("PRETTY_NAME", platform.system())
    return {"date": datetime.date.today().isoformat(), "command": command.strip(),
            "machine": f"{kind}, {os.cpu_count()} cores of {make[1].strip() if make else 'unknown make'}, {system}",
            "compiler": first_line("g++ --version"), "revision": first_line("git rev-parse --short HEAD")}


# ---- The pages ----------------------------------------------------------------------------------------------------

START, END = "<!-- figures: written by scripts/bench -->\n", "<!-- end of the figures -->\n"


def origin(facts):
    return f"Measured on {facts['date']} at {facts['revision']} on {facts['machine']}; {facts['compiler']}.\n"


def range_text(rows):
    """The geometric mean of the ratios and, where there are several, from where to where they go."""
    ratios = [row.ratio for row in rows]
    if not ratios:
        return ""
    mean = f"{geometric_mean(ratios):.2f}"
    return mean if len(ratios) == 1 else f"{mean} ({min(ratios):.2f} to {max(ratios):.2f})"


def sizes_text(rows):
    sizes = sorted({row.size for row in rows})
    return "-" if sizes == [0] else f"{sizes[0]:,}" if len(sizes) == 1 else f"{sizes[0]:,} to {sizes[-1]:,}"


def digest(rows, facts):
    """The tables that people read: a line a workload."""
    yield origin(facts) + "\n![Time of Bedplate as a part of the best peer's](performance.svg)\n"
    for (family,), group in by(rows, "family").items():
        means = [f"{geometric_mean([row.ratio for row in same]):.2f} at {width} bits"
                 for (width,), same in sorted(by(group, "width").items(), reverse=True)]
        yield f"\n### {family.capitalize()}: {', '.join(means)}\n\n"
        yield "| workload | sizes | 64 bits | 32 bits | best peer |\n|---|---|---|---|---|\n"
        for (workload,), same in by(group, "workload").items():
            wide, narrow = ([row for row in same if row.width == width] for width in (64, 32))
            peers = ", ".join(dict.fromkeys(row.peer for row in wide or narrow))
            yield f"| {workload} | {sizes_text(same)} | {range_text(wide)} | {range_text(narrow)} | {peers} |\n"


def full_figures(rows, facts):
    yield ("# Performance: all figures\n\nWhat [performance](performance.md) sums up: the median times, the ratio of ours to that of "
           f"the best peer, and the target of that ratio.\n`{facts['command']}` wrote this page.\n\n{origin(facts)}")
    for (width, family), group in by(rows, "width", "family").items():
        yield f"\n## {family.capitalize()}, {width} bits: {summary(group)}\n\n"
        yield f"| {' | '.join(HEADINGS)} | the others |\n|---|---|--:|---|--:|--:|--:|---|---|\n"
        for row in group:
            others = sorted((time, who) for who, time in row.peers.items() if who != row.peer)
            others_text = ", ".join(f"{who} {time_text(time)}" for time, who in others)
            yield f"| {' | '.join(row.cells())} | {others_text} |\n"


def write_docs(directory, rows, facts):
    page = directory / "performance.md"
    before, _, rest = page.read_text().partition(START)
    page.write_text(f"{before}{START}\n{''.join(digest(rows, facts))}\n{END}{rest.partition(END)[2]}")
    (directory / "performance-figures.md").write_text("".join(full_figures(rows, facts)))
    (directory / "performance.svg").write_text(chart(rows))


# ---- The chart: a line a workload, with the ratios of both widths on a logarithmic axis --------------------------

LINE, LABELS, PLOT, COLUMNS, LOW, HIGH = 18, 150, 300, 2, 0.1, 10
STYLE = """
text{font:12px system-ui,sans-serif;fill:#1f2328}.small{font-size:11px;fill:#59636e}.family{font-weight:600}
.paper{fill:#fff}.faster{fill:#f0f6ec}.grid{stroke:#d1d9e0}.one{stroke:#1f2328;stroke-width:1.5}
.w64{fill:#0969da;stroke:#0969da}.w32{fill:#fff;stroke:#bc4c00}line.w64,line.w32,circle{stroke-width:2}
@media (prefers-color-scheme:dark){text{fill:#e6edf3}.small{fill:#9198a1}.paper{fill:#0d1117}.faster{fill:#12261e}
.grid{stroke:#3d444d}.one{stroke:#e6edf3}.w64{fill:#58a6ff;stroke:#58a6ff}.w32{fill:#0d1117;stroke:#f0883e}}
"""


def x_of(ratio, left):
    return left + LABELS + math.log(min(max(ratio, LOW), HIGH) / LOW) / math.log(HIGH / LOW) * PLOT


def axis(left, top, bottom):
    yield f'<rect class="faster" x="{left + LABELS}" y="{top}" width="{x_of(1, left) - left - LABELS}" height="{bottom - top}"/>'
    for ratio in (0.1, 0.2, 0.5, 1, 2, 5, 10):
        x = x_of(ratio, left)
        yield f'<line class="{"one" if ratio == 1 else "grid"}" x1="{x:.1f}" x2="{x:.1f}" y1="{top}" y2="{bottom}"/>'
        yield f'<text class="small" text-anchor="middle" x="{x:.1f}" y="{top - 5}">{ratio:g}</text>'


def marks(rows, left, y):
    for width, shift in ((64, -3), (32, 3)):
        ratios = [row.ratio for row in rows if row.width == width]
        if ratios:
            x, first, last = (x_of(ratio, left) for ratio in (geometric_mean(ratios), min(ratios), max(ratios)))
            yield f'<line class="w{width}" x1="{first:.1f}" x2="{last:.1f}" y1="{y + shift}" y2="{y + shift}"/>'
            yield f'<circle class="w{width}" cx="{x:.1f}" cy="{y + shift}" r="3.5"/>'


def columns_of(groups):
    """Deals the families to the columns in their order, so that none gets much more than its share."""
    columns, share = [[]], sum(len(group) + 2 for group in groups.values()) / COLUMNS
    for family, group in groups.items():
        if len(columns) < COLUMNS and sum(len(one) + 2 for _, one in columns[-1]) + len(group) / 2 > share:
            columns.append([])
        columns[-1].append((family, group))
    return columns


def chart(rows):
    groups = {family: by(group, "workload") for (family,), group in by(rows, "family").items()}
    columns, top = columns_of(groups), 70
    height = top + max(sum(len(group) + 1.5 for _, group in column) for column in columns) * LINE + 10
    width = COLUMNS * (LABELS + PLOT + 30) + 10
    parts = ['<text x="12" y="22" class="family">Time of Bedplate as a part of the best peer\'s: left of 1, Bedplate is faster</text>',
             '<circle class="w64" cx="17" cy="38" r="3.5"/><text x="26" y="42">64 bits</text>',
             '<circle class="w32" cx="87" cy="38" r="3.5"/><text x="96" y="42">32 bits</text>',
             '<text class="small" x="156" y="42">the dot is the mean of all sizes, the line goes from the best to the worst</text>']
    for number, column in enumerate(columns):
        left, y = 12 + number * (LABELS + PLOT + 30), top
        parts += axis(left, top, height - 10)
        for family, group in column:
            parts.append(f'<text class="family" x="{left}" y="{y + LINE - 4}">{family.capitalize()}</text>')
            y += LINE
            for (workload,), same in group.items():
                parts.append(f'<text x="{left + 8}" y="{y + LINE - 5}">{html.escape(workload)}</text>')
                parts += marks(same, left, y + LINE / 2)
                y += LINE
            y += LINE / 2
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height:.0f}" viewBox="0 0 {width} {height:.0f}">'
            f'<style>{STYLE}</style><rect class="paper" width="100%" height="100%"/>\n' + "\n".join(parts) + "\n</svg>\n")


def main():
    parser = argparse.ArgumentParser(description="Reports what the benchmark programs measured.")
    parser.add_argument("--command", required=True, help="what was called, for the report")
    parser.add_argument("--json", type=pathlib.Path, help="keep the figures")
    parser.add_argument("--docs", type=pathlib.Path, help="write the pages and the chart into this directory")
    parser.add_argument("figures", nargs="+", help="the benchmark programs' output, as WIDTH-NUMBER.json")
    arguments = parser.parse_args()
    rows = read_rows(arguments.figures)
    if not rows:
        sys.exit("report.py: nothing was measured")
    facts = circumstances(arguments.command)
    print_text(rows)
    if arguments.json:
        arguments.json.write_text(json.dumps({**facts, "workloads": [vars(row) for row in rows]}, indent=1))
    if arguments.docs:
        write_docs(arguments.docs, rows, facts)
    for path in filter(None, (arguments.json, arguments.docs)):
        print(f"written: {path}")


if __name__ == "__main__":
    main()
