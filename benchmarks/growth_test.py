#!/usr/bin/env python3
"""Plants what growth.py must find, and must not."""
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

GROWTH = pathlib.Path(__file__).with_name("growth.py")
# Those of a run without growth, and with memory that grows for as long as the page cache fills.
YOUNG, COST, COUNT = 1000.0, 1050.0, 100
RESIDENT = [4000, 5000, 6000, 7000, 8000, 8010, 8020, 8030, 8040, 8050]


def cost(nanoseconds, count=COUNT):
    return {"count": count, "median_ns": nanoseconds, "mean_ns": nanoseconds}


def load(costs=(COST,) * 10, young=(YOUNG,) * 10, resident=RESIDENT, count=COUNT, syncs=2):
    work = {"command": "sangria", "writes": 9, "bytes": 4224, "syncs": syncs}
    return {"most_writes": work, "most_syncs": work, "longest_rest": work,
            "days": 10, "receipts_a_day": 20, "seed": 1, "cpu": "c", "kernel": "k",
            "compiler": "g", "sqlite": "3", "commands": 1000, "seconds": 1.0,
            "tenths": [{"rss_kib": rss, "peak_kib": rss, "database_bytes": 1, "wal_bytes": 1,
                        "commands": {"sangria": {"old": cost(old, count),
                                                 "young": cost(new, count)}}}
                       for old, new, rss in zip(costs, young, resident)]}


class Growth(unittest.TestCase):
    def growth(self, measured, *options):
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder, "load.json")
            file.write_text(json.dumps(measured), encoding="utf-8")
            svg = pathlib.Path(folder, "plot.svg")
            run = subprocess.run([sys.executable, GROWTH, file, "--plot", svg, *options],
                                 capture_output=True, text=True, check=False)
            self.plot = svg.read_text(encoding="utf-8")
        return run

    def test_no_growth_passes(self):
        run = self.growth(load(), "--limit", "1.2", "--memory-limit", "50")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertIn("| sangria | 1,000 | 1.00 | 1.05 | 1.00 | 1.00 |", run.stdout)
        self.assertIn(">sangria</text>", self.plot)

    def test_a_command_that_waits_for_a_checkpoint_is_found(self):
        self.assertEqual(self.growth(load(), "--sync-limit", "2").returncode, 0)
        run = self.growth(load(syncs=3), "--sync-limit", "2")
        self.assertEqual((run.returncode, run.stderr), (1, "sangria: 3 syncs, above 2\n"))
        self.assertIn("| most synced | sangria | 9 | 4,224 | 3 |", run.stdout)

    def test_growth_from_the_first_tenth_is_found(self):
        run = self.growth(load(costs=(900.0,) * 9 + (1100.0,)), "--limit", "1.2")
        self.assertEqual((run.returncode, run.stderr),
                         (1, "sangria: last tenth to first 1.22, above 1.2\n"))

    def test_growth_within_the_first_tenth_is_found(self):
        run = self.growth(load(costs=(1210.0,) * 10), "--limit", "1.2")
        self.assertEqual((run.returncode, run.stderr),
                         (1, "sangria: last tenth to young 1.21, above 1.2\n"))

    def test_a_slower_machine_is_no_growth(self):
        slower = tuple(1000.0 + 200 * tenth for tenth in range(10))
        run = self.growth(load(costs=slower, young=slower), "--limit", "1.2")
        self.assertEqual(run.returncode, 0)
        self.assertIn("| sangria | 1,000 | 1.00 | 1.00 | 1.00 | 2.80 |", run.stdout)

    def test_nothing_to_judge_is_a_fault(self):
        run = self.growth(load(count=29), "--limit", "1.2")
        self.assertEqual((run.returncode, run.stderr),
                         (1, "no command came often enough to be judged\n"))
        self.assertIn("sangria (290)", run.stdout)

    def test_growing_memory_is_found(self):
        run = self.growth(load(), "--memory-limit", "49")
        self.assertEqual((run.returncode, run.stderr),
                         (1, "memory: 50 KiB more than at the end of the fifth tenth, above 49\n"))


if __name__ == "__main__":
    unittest.main()
