#!/usr/bin/env python3
"""Prints what composing a statement costs beside executing it, as a Markdown table.

  measure.py --instructions PROGRAM [--limit PERCENT]   counts of bench_instructions under callgrind
  measure.py --times PROGRAM                            times of bench_loggers

An instruction count is the difference between a run of 2N and a run of N, divided by N, so that
what both do once is not in it. With --limit the exit code is 1 where composing one statement of an
insert costs more than that many percent of executing it.
"""
import argparse
import json
import re
import subprocess
import sys

RUNS = {"fechamento_999": 3, "reducao_z": 20}
DEFAULT_RUNS = 500
# The cases to which the limit applies: those on the path of every sale.
LIMITED = ("abertura", "venda", "pagamento")


def count(program, case, side, runs):
    printed = subprocess.run(
        ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null",
         program, case, side, str(runs)],
        capture_output=True, text=True, check=True).stderr
    return int(re.search(r"Collected : (\d+)", printed).group(1))


def instructions(program, limit):
    cases = subprocess.run([program], capture_output=True, text=True, check=True).stdout.split()
    over = []
    print("| case | logger, instructions | engine, instructions | composing / executing |")
    print("|---|---:|---:|---:|")
    for case in cases:
        runs = RUNS.get(case, DEFAULT_RUNS)
        logger, engine = ((count(program, case, side, 2 * runs) - count(program, case, side, runs))
                          / runs for side in ("logger", "engine"))
        percent = 100 * (logger - engine) / engine
        print(f"| {case} | {logger:,.0f} | {engine:,.0f} | {percent:.1f} % |", flush=True)
        if limit is not None and case in LIMITED and percent > limit:
            over.append(case)
    for case in over:
        print(f"{case}: composing costs more than {limit} % of executing", file=sys.stderr)
    return 1 if over else 0


def times(program):
    printed = subprocess.run(
        [program, "--benchmark_format=json", "--benchmark_repetitions=9",
         "--benchmark_enable_random_interleaving=true", "--benchmark_report_aggregates_only=true"],
        capture_output=True, text=True, check=True).stdout
    median = {run["run_name"]: run["cpu_time"] for run in json.loads(printed)["benchmarks"]
              if run["aggregate_name"] == "median"}
    print("| case | time of the logger / time of the engine |")
    print("|---|---:|")
    for name in median:
        case, side = name.split("/")
        if side == "logger":
            print(f"| {case} | {median[name] / median[case + '/engine']:.3f} |")
    return 0


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--instructions", metavar="PROGRAM")
    parser.add_argument("--times", metavar="PROGRAM")
    parser.add_argument("--limit", type=float)
    options = parser.parse_args()
    status = 0
    if options.instructions:
        status = instructions(options.instructions, options.limit)
    if options.times:
        status = times(options.times) or status
    if not options.instructions and not options.times:
        parser.error("nothing to measure")
    return status


if __name__ == "__main__":
    sys.exit(main())
