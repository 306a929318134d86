#!/usr/bin/env python3
"""Judges what bench_load measured, and prints it as Markdown tables.

  growth.py FILE [--limit RATIO] [--minimum COUNT] [--memory-limit KIB] [--sync-limit COUNT]
            [--plot SVG]

The cost of a command is the median of its tenth on the old till, divided by the median of the same
commands on the young one, which had a new database each day: a machine that was busier in one tenth
than in another shows in neither. Two ratios of it are judged, the last tenth to the first, and the
last tenth to the young till itself: the growth from a database of one day.

The exit code is 1 where the growth of a command that comes at least --minimum times in both tenths is
above --limit, or where the process holds more than --memory-limit KiB more at the end than at the
end of the fifth tenth. Before that the engine's page cache, 2 MiB, may be filling. Or where a command
of the old till syncs more than --sync-limit times.
"""
import argparse
import html
import json
import math
import sys

COLUMNS = 4
CELL_WIDTH, CELL_HEIGHT = 235, 150
PLOT_LEFT, PLOT_TOP, PLOT_WIDTH, PLOT_HEIGHT = 34, 30, 190, 95


class Command:
    """One command: per tenth its cost relative to the young till's, None where it did not come."""

    def __init__(self, name, tenths, minimum):
        measured = [tenth["commands"].get(name) for tenth in tenths]
        first, last = measured[0], measured[-1]
        self.name = name
        self.count = sum(costs["old"]["count"] for costs in measured if costs)
        self.judged = all(costs and costs["old"]["count"] >= minimum for costs in (first, last))
        self.costs = [costs and relative(costs, "median_ns") for costs in measured]
        if self.judged:
            self.growth = self.costs[-1] / self.costs[0]
            self.mean_growth = relative(last, "mean_ns") / relative(first, "mean_ns")
            self.raw_growth = last["old"]["median_ns"] / first["old"]["median_ns"]


def relative(costs, measure):
    return costs["old"][measure] / costs["young"][measure]


def print_run(load):
    print(f"{load['days']} days of {load['receipts_a_day']} receipts, seed {load['seed']}: "
          f"{load['commands']:,} commands on both tills. On this machine, with what else it did, "
          f"{2 * load['commands'] / load['seconds']:,.0f} commands a second.\n")
    for what in ("cpu", "kernel", "compiler", "sqlite"):
        print(f"- {what}: {load[what]}")
    print()


def print_growth(commands, minimum):
    print("| command | times | last tenth / first | last tenth / young "
          "| last / first, of the mean | last / first, without the young till |")
    print("|---|---:|---:|---:|---:|---:|")
    for command in commands:
        if command.judged:
            print(f"| {command.name} | {command.count:,} | {command.growth:.2f} "
                  f"| {command.costs[-1]:.2f} | {command.mean_growth:.2f} "
                  f"| {command.raw_growth:.2f} |")
    seldom = [f"{command.name} ({command.count})" for command in commands if not command.judged]
    if seldom:
        print(f"\nToo seldom for a median, below {minimum} in a tenth: {', '.join(seldom)}.")
    print()


def print_memory(tenths):
    print("| tenth | resident, KiB | peak, KiB | database, MiB | write-ahead log, MiB |")
    print("|---:|---:|---:|---:|---:|")
    for number, tenth in enumerate(tenths, 1):
        print(f"| {number} | {tenth['rss_kib']:,} | {tenth['peak_kib']:,} "
              f"| {tenth['database_bytes'] / 2**20:.1f} | {tenth['wal_bytes'] / 2**20:.1f} |")
    print()


def text(x, y, content, **attributes):
    given = "".join(f' {name.replace("_", "-")}="{value}"' for name, value in attributes.items())
    return f'<text x="{x:.1f}" y="{y:.1f}"{given}>{html.escape(content)}</text>'


def line(x1, y1, x2, y2, color):
    return f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" stroke="{color}"/>'


def plot_cell(command, left, top, highest, limit):
    """The costs of the tenths, on a scale from 0 to `highest`."""
    x0, y0 = left + PLOT_LEFT, top + PLOT_TOP

    def x(tenth):
        return x0 + PLOT_WIDTH * tenth / (len(command.costs) - 1)

    def y(ratio):
        return y0 + PLOT_HEIGHT * (1 - ratio / highest)

    drawn = [text(x0, top + 20, command.name, font_weight="bold"),
             text(x0 + PLOT_WIDTH, y(0) - 6, f"{command.costs[-1]:.2f}", text_anchor="end")]
    for ratio in (0, 0.5, 1, highest):
        drawn.append(line(x0, y(ratio), x0 + PLOT_WIDTH, y(ratio), "#ddd"))
        drawn.append(text(x0 - 5, y(ratio) + 4, f"{ratio:g}", text_anchor="end", fill="#666"))
    if limit is not None:
        drawn.append(line(x0, y(limit), x0 + PLOT_WIDTH, y(limit), "#c33"))
    points = [(x(tenth), y(cost))
              for tenth, cost in enumerate(command.costs) if cost]
    joined = " ".join(f"{px:.1f},{py:.1f}" for px, py in points)
    drawn.append(f'<polyline points="{joined}" fill="none" stroke="#246" stroke-width="1.5"/>')
    drawn += [f'<circle cx="{px:.1f}" cy="{py:.1f}" r="2.2" fill="#246"/>' for px, py in points]
    return drawn


def plot(load, commands, limit):
    judged = [command for command in commands if command.judged]
    rows = -(-len(judged) // COLUMNS)
    width, head = COLUMNS * CELL_WIDTH + 15, 62
    height = head + rows * CELL_HEIGHT
    drawn = [
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}" '
        f'height="{height}" font-family="sans-serif" font-size="11">',
        f'<rect width="{width}" height="{height}" fill="white"/>',
        text(15, 26, "Cost of each command while the logging database grows", font_size=16),
        text(15, 45, f"{load['days']} days of {load['receipts_a_day']} receipts, seed "
             f"{load['seed']}: per tenth of the run the median CPU time, divided by that with a new "
             "database each day" + (f"; red: the limit {limit:g}" if limit is not None else ""),
             fill="#444")]
    highest = math.ceil(2 * max([1.5] + [cost for command in judged
                                         for cost in command.costs if cost])) / 2
    for place, command in enumerate(judged):
        drawn += plot_cell(command, place % COLUMNS * CELL_WIDTH,
                           head + place // COLUMNS * CELL_HEIGHT, highest, limit)
    return "\n".join(drawn + ["</svg>", ""])


def faults(load, commands, limit, memory_limit, sync_limit):
    tenths = load["tenths"]
    if limit is not None:
        judged = [command for command in commands if command.judged]
        if not judged:
            yield "no command came often enough to be judged"
        for command in judged:
            if command.growth > limit:
                yield f"{command.name}: last tenth to first {command.growth:.2f}, above {limit:g}"
            if command.costs[-1] > limit:
                yield f"{command.name}: last tenth to young {command.costs[-1]:.2f}, " \
                      f"above {limit:g}"
    if memory_limit is not None:
        grown = tenths[-1]["rss_kib"] - tenths[len(tenths) // 2 - 1]["rss_kib"]
        if grown > memory_limit:
            yield f"memory: {grown} KiB more than at the end of the fifth tenth, " \
                  f"above {memory_limit}"
    if sync_limit is not None:
        most = load["most_syncs"]
        if most["syncs"] > sync_limit:
            yield f"{most['command']}: {most['syncs']} syncs, above {sync_limit}"


def print_work(load):
    print("\n| the old till | | writes | bytes | syncs |\n|---|---|---:|---:|---:|")
    for name, most in (("most written", "most_writes"), ("most synced", "most_syncs"),
                       ("longest rest", "longest_rest")):
        work = load[most]
        print(f"| {name} | {work['command']} | {work['writes']:,} | {work['bytes']:,} "
              f"| {work['syncs']} |")


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("file", metavar="FILE", help="what bench_load wrote")
    parser.add_argument("--limit", type=float, metavar="RATIO")
    parser.add_argument("--minimum", type=int, default=30, metavar="COUNT",
                        help="below, a median is the luck of single commands [30]")
    parser.add_argument("--memory-limit", type=int, metavar="KIB")
    parser.add_argument("--sync-limit", type=int, metavar="COUNT",
                        help="of any command of the old till")
    parser.add_argument("--plot", metavar="SVG")
    options = parser.parse_args()

    with open(options.file, encoding="utf-8") as file:
        load = json.load(file)
    tenths = load["tenths"]
    names = sorted({name for tenth in tenths for name in tenth["commands"]})
    commands = [Command(name, tenths, options.minimum) for name in names]

    print_run(load)
    print_growth(commands, options.minimum)
    print_memory(tenths)
    print_work(load)
    if options.plot:
        with open(options.plot, "w", encoding="utf-8") as file:
            file.write(plot(load, commands, options.limit))

    found = list(faults(load, commands, options.limit, options.memory_limit, options.sync_limit))
    for fault in found:
        print(fault, file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
