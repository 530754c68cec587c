#!/usr/bin/env python3
"""How fast vornsim is, and how much memory it takes, against the limits that it is meant to keep.

Measured on one core, as whole processes of the optimised build: the processor time of a world of 100,000 shares, each answered;
the greatest memory of that run against one of 1,000 shares; and the wall-clock time of a world of one step. Medians of several
runs. Prints a table, and ends with status 1 when a limit is not kept.

usage: benchmarks/simulator_limits.py VORNSIM
"""

import os
import statistics
import subprocess
import sys
import tempfile
import time

SHARES = 100_000
FEW_SHARES = 1_000

# Limits: seconds, and how much more memory many shares may take than few.
LONG_RUN_SECONDS = 5.0
START_SECONDS = 0.050
MEMORY_RATIO = 1.10


def shares(count):
    return """{ "question": "How long do shares take?",
  "setting": {"player": "facebook"},
  "steps": [
    {"repeat": {"times": %d, "steps": [
      {"share": {"methodID": 211, "seqID": "share-{n}", "observer": 31, "type": "link", "link": "https://example.com",
        "answers": [{"answer-share": {"outcome": "cancelled", "after": "1 s"}}]}},
      {"wait": "2 s"}]}}
  ]
}
""" % count


ONE_STEP = '{ "question": "How long does one step take?", "steps": [{"init-stat": {}}] }\n'


def run(vornsim, world):
    """One run on one core: seconds of wall clock, seconds of the processor, greatest memory in KiB."""
    start = time.perf_counter()
    process = subprocess.Popen([vornsim, "run", "--format", "none", world],
                               preexec_fn=lambda: os.sched_setaffinity(0, {0}))
    _, status, usage = os.wait4(process.pid, 0)
    wall = time.perf_counter() - start
    if status != 0:
        sys.exit(f"{vornsim}: the world did not hold; run it by hand: {world}")
    return wall, usage.ru_utime + usage.ru_stime, usage.ru_maxrss


def medians(vornsim, world, times):
    return [statistics.median(figures) for figures in zip(*(run(vornsim, world) for _ in range(times)))]


def main():
    if len(sys.argv) != 2 or not os.access(sys.argv[1], os.X_OK):
        sys.exit("usage: benchmarks/simulator_limits.py VORNSIM, the program of the optimised build (make bench does it)")
    vornsim = os.path.abspath(sys.argv[1])
    with tempfile.TemporaryDirectory() as folder:
        def world(name, text):
            path = os.path.join(folder, name + ".world.json")
            with open(path, "w", encoding="utf-8") as file:
                file.write(text)
            return path

        _, long_run, much = medians(vornsim, world("many", shares(SHARES)), 3)
        _, _, little = medians(vornsim, world("few", shares(FEW_SHARES)), 3)
        start, _, _ = medians(vornsim, world("one", ONE_STEP), 21)

    rows = [
        (f"{SHARES:,} shares, processor time", long_run, LONG_RUN_SECONDS, "s"),
        (f"greatest memory, {SHARES:,} shares against {FEW_SHARES:,}", much / little, MEMORY_RATIO, "times"),
        ("a world of one step, start to end", start, START_SECONDS, "s"),
    ]
    print("| What | Measured | Limit |\n|---|---|---|")
    for what, measured, limit, unit in rows:
        print(f"| {what} | {measured:.3f} {unit} | {limit:.3f} {unit} |")
    print(f"\nGreatest memory: {much / 1024:.1f} MiB.")
    sys.exit(0 if all(measured <= limit for _, measured, limit, _ in rows) else 1)


if __name__ == "__main__":
    main()
