#!/usr/bin/env python3
"""Prints the goals of bench/goals.txt as a Markdown table, with what was measured and whether it is reached.
goals.py FIGURES; a line of FIGURES is "NAME,MEDIAN or noisy,SPREAD"."""
import pathlib
import sys

figures = {}
for line in pathlib.Path(sys.argv[1]).read_text().splitlines():
    name, median, spread = line.rsplit(",", 2)
    figures[name] = (median, float(spread))



def figure(name):
    """Of two names with // between them: the one's as a multiple of the other's."""
    parts = [figures.get(part, ("-", 0.0)) for part in name.split(" // ")]
    for unknown in ("-", "noisy"):
        if unknown in [median for median, _ in parts]:
            return unknown, max(spread for _, spread in parts)
    median = float(parts[0][0]) / (float(parts[1][0]) if len(parts) > 1 else 1)
    return str(median), max(spread for _, spread in parts)


print("| Work | Goal | Measured | Reached |\n|---|---:|---:|---|")
for line in pathlib.Path(__file__).with_name("goals.txt").read_text().splitlines():
    name, text, goal, unit = line.split("|")
    median, spread = figure(name)
    if median == "-":
        print(f"| {text} | {goal}{unit} | not measured | |")
    elif median == "noisy":
        print(f"| {text} | {goal}{unit} | too noisy (±{spread * 50:.0f} %) | |")
    else:
        shown = f"{float(median):.1f}" if unit else f"{float(median):.2f}"
        reached = "yes" if float(shown) <= float(goal) else "no"
        print(f"| {text} | {goal}{unit} | {shown}{unit} (±{spread * 50:.0f} %) | {reached} |")
