#!/usr/bin/env python3
"""Prints what Google Benchmark measured as a table: the product's medians, its ratios to the peers, and its growth.

    bench_table.py [--partial] RESULTS.json LIMITS.txt

Cases are named <operation>/<who>/<N>; the product is "tarn", everybody else a peer. A line of the limits file is
    <operation> <peer> <N> <limit>     at most <limit> times the peer's time
    <operation> growth <N> <limit>     at most <limit> times the product's own time at the next smaller N
    growth <limit>                     the same for every operation, wherever N is ten times the one before
and # starts a comment. The status is 1 when a limit is passed, a case failed, or (without --partial) a case that has a
limit was not measured.
"""

import argparse
import json
import statistics
import sys
from collections import defaultdict

PRODUCT = "tarn"
GROWTH = "growth"


def parse_name(name):
    """(operation, who, N) of a case; None when it is named otherwise."""
    parts = [part for part in name.split("/") if ":" not in part and not part.endswith("_time")]
    if len(parts) < 3 or not parts[-1].isdigit():
        return None
    return "/".join(parts[:-2]), parts[-2], int(parts[-1])


def read_results(path):
    """{operation: {N: {who: median in ns}}} and the messages about cases that cannot be used."""
    unit = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}
    times = defaultdict(list)
    problems = []
    with open(path, encoding="utf-8") as file:
        runs = json.load(file)["benchmarks"]
    for run in runs:
        name = run.get("run_name", run["name"])
        if run.get("error_occurred"):
            problems.append(f"{name} failed: {run.get('error_message', '')}")
        elif run.get("run_type") != "aggregate":
            times[name].append(run["real_time"] * unit[run.get("time_unit", "ns")])
    table = defaultdict(lambda: defaultdict(dict))
    for name, values in times.items():
        case = parse_name(name)
        if case:
            operation, who, size = case
            table[operation][size][who] = statistics.median(values)
        else:
            problems.append(f"{name} is not named <operation>/<who>/<N>")
    for operation, sizes in table.items():
        if not any(PRODUCT in medians for medians in sizes.values()):
            problems.append(f"{operation} has no case named {operation}/{PRODUCT}/<N>")
    return table, list(dict.fromkeys(problems))


def read_limits(path):
    """{(operation, peer or "growth", N): limit}, and the limit for the growth of every operation (or None)."""
    limits = {}
    growth = None
    with open(path, encoding="utf-8") as file:
        for number, line in enumerate(file, 1):
            words = line.split("#")[0].split()
            try:
                if len(words) == 2 and words[0] == GROWTH:
                    growth = float(words[1])
                elif words:
                    operation, peer, size, limit = words
                    limits[operation, peer, int(size)] = float(limit)
            except ValueError:
                sys.exit(f"{path}, line {number}: not a limit: {line.strip()}")
    return limits, growth


def time_text(nanoseconds):
    for factor, unit in ((1e9, "s"), (1e6, "ms"), (1e3, "µs"), (1, "ns")):
        value = nanoseconds / factor
        if value >= 1 or factor == 1:
            return f"{value:.3g} {unit}" if value < 999.5 else f"{value:.0f} {unit}"


def compare(table, limits, growth_limit):
    """The table's rows as tuples of texts, the limits that were used, and whether one was passed."""
    rows = []
    used = set()
    passed = False

    def judge(ratio, limit):
        nonlocal passed
        over = limit is not None and ratio > limit
        passed = passed or over
        return f"{ratio:.3g}", "" if limit is None else f"≤ {limit:g}", "OVER" if over else ""

    for operation in sorted(table):
        before = None
        for size in sorted(table[operation]):
            medians = table[operation][size]
            own = medians.get(PRODUCT)
            verdict = ("", "", "")
            if own and before and before[1]:
                limit = limits.get((operation, GROWTH, size))
                used.add((operation, GROWTH, size))
                if limit is None and size == 10 * before[0]:
                    limit = growth_limit
                ratio, limit_text, over = judge(own / before[1], limit)
                verdict = (f"{ratio} × N={before[0]:,}", limit_text, over)
            if own:
                rows.append((operation, f"{size:,}", PRODUCT, time_text(own), *verdict))
            for peer in sorted(medians.keys() - {PRODUCT}):
                verdict = ("", "", "")
                if own:
                    key = (operation, peer, size)
                    used.add(key)
                    ratio, limit_text, over = judge(own / medians[peer], limits.get(key))
                    verdict = (f"{ratio} × {peer}", limit_text, over)
                rows.append((operation, f"{size:,}", peer, time_text(medians[peer]), *verdict))
            before = (size, own)
    return rows, used, passed


def print_table(rows):
    head = ("operation", "N", "who", "median", f"{PRODUCT} takes", "limit", "")
    right = {1, 3}
    widths = [max(len(row[i]) for row in [head, *rows]) for i in range(len(head))]
    previous = None
    for row in [head, *rows]:
        if row[0] != previous and previous is not None:
            print()
        shown = ("" if row[0] == previous else row[0], *row[1:])
        previous = row[0]
        print("  ".join(f"{text:>{w}}" if i in right else f"{text:<{w}}"
                        for i, (text, w) in enumerate(zip(shown, widths))).rstrip())


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--partial", action="store_true", help="not all cases were run")
    parser.add_argument("results")
    parser.add_argument("limits")
    options = parser.parse_args()

    try:
        table, problems = read_results(options.results)
    except (OSError, ValueError, KeyError) as error:
        sys.exit(f"{options.results} holds no results ({error}).")
    limits, growth_limit = read_limits(options.limits)
    rows, used, passed = compare(table, limits, growth_limit)
    if not rows and not problems:
        sys.exit("No case was measured.")
    if rows:
        print_table(rows)
    if not options.partial:
        problems += [f"{' '.join(map(str, key))} has a limit but was not measured" for key in limits.keys() - used]
    for problem in problems:
        print(f"! {problem}")
    return 1 if passed or problems else 0


if __name__ == "__main__":
    sys.exit(main())
