#!/usr/bin/env python3
"""Prints the times of bench_loggers as Markdown tables: each logger beside the engine on the same
texts, and the ways of clearing an array in processor cycles.

  times.py PROGRAM [FILTER]     FILTER is a regular expression of the benchmarks' names
"""
import argparse
import json
import subprocess


def medians(program, wanted):
    printed = subprocess.run(
        [program, "--benchmark_format=json", "--benchmark_repetitions=9",
         f"--benchmark_filter={wanted}", "--benchmark_enable_random_interleaving=true",
         "--benchmark_report_aggregates_only=true"],
        capture_output=True, text=True, check=True).stdout
    return {run["run_name"]: run for run in json.loads(printed)["benchmarks"]
            if run["aggregate_name"] == "median"}


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("filter", nargs="?", default=".")
    options = parser.parse_args()
    median = medians(options.program, options.filter)

    print("| case | time of the logger / time of the engine |")
    print("|---|---:|")
    for name, run in median.items():
        if name.endswith("/logger"):
            case = name[:-len("/logger")]
            print(f"| {case} | {run['cpu_time'] / median[case + '/engine']['cpu_time']:.3f} |")
    print("\n| clearing | cycles |")
    print("|---|---:|")
    for name, run in median.items():
        if "cycles" in run:
            print(f"| {name} | {run['cycles']:.0f} |")


if __name__ == "__main__":
    main()
