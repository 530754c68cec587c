#!/usr/bin/env python3
"""Draws the curves of build/bench.json: the time of one element by how many elements there are.

usage: benchmarks/plot_growth.py BENCH_JSON FOLDER, which writes FOLDER/growth.svg
"""

import json
import os
import subprocess
import sys

PICTURE = "growth.svg"

SETTINGS = """set terminal svg size 900,540 font "sans,14" background "white"
set output "{output}"
set title "Time of one element by how many there are"
set xlabel "elements"
set ylabel "nanoseconds for one element"
set logscale xy
set format x "10^{{%L}}"
set grid
set key outside bottom center horizontal
plot {curves}
"""


def read_curves(path):
    try:
        with open(path, encoding="utf-8") as file:
            return [curve for curve in json.load(file)["curves"] if curve["points"]]
    except OSError as error:
        sys.exit(f"{path}: cannot be read: {error.strerror}; make bench writes it")
    except (ValueError, KeyError, TypeError) as error:
        sys.exit(f"{path}: no figures of vorn-bench ({error!r}); make bench writes them anew")


def script_of(curves, output):
    """Commands for gnuplot, with the data of each curve behind them, ended by a line with an e."""
    plots = ", ".join(f'"-" with linespoints linewidth 2 pointtype 7 pointsize 0.5 title "{curve["name"]}"'
                      for curve in curves)
    lines = [SETTINGS.format(output=output, curves=plots)]
    for curve in curves:
        lines += [f'{point["elements"]} {point["nanosecondsEach"]}' for point in curve["points"]] + ["e"]
    return "\n".join(lines) + "\n"


def main():
    if len(sys.argv) != 3:
        sys.exit("usage: benchmarks/plot_growth.py BENCH_JSON FOLDER")
    curves = read_curves(sys.argv[1])
    if not curves:
        sys.exit(0)  # A run of other benchmarks only.
    os.makedirs(sys.argv[2], exist_ok=True)
    script = script_of(curves, os.path.join(sys.argv[2], PICTURE))
    try:
        subprocess.run(["gnuplot"], input=script, text=True, check=True)
    except FileNotFoundError:
        sys.exit("gnuplot was not found; scripts/setup installs it")
    except subprocess.CalledProcessError as error:
        sys.exit(f"gnuplot ended with status {error.returncode}; its message stands above")


if __name__ == "__main__":
    main()
