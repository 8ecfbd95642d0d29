#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""compare_energies.py XVG XVG: the energies of each step as `gmx energy -dp` writes them, equal to rounding.

3e-6 is a few roundings of single precision. That one part in 16 of the forward transform is wrong by 1e-4 moves the
energy of the long-range forces by 2e-5."""
import sys

ALLOWED = 3e-6
STEPS, ENERGIES = 6, 6


def energies(name: str) -> list[list[float]]:
    with open(name, encoding="utf-8") as file:
        return [[float(word) for word in line.split()[1:]] for line in file if line[0] not in "#@"]


theirs, ours = energies(sys.argv[1]), energies(sys.argv[2])
for table in theirs, ours:
    if len(table) != STEPS or any(len(row) != ENERGIES for row in table):
        sys.exit(f"steps and energies: {[len(row) for row in table]}")
errors = [(abs(x - y) / abs(x), step, k) for step, rows in enumerate(zip(theirs, ours)) for k, (x, y) in enumerate(zip(*rows))]
worst, step, k = max(errors)
print(f"{STEPS} steps, {ENERGIES} energies each, largest relative difference {worst:.1e}")
if not worst <= ALLOWED or any(error != error for error, _, _ in errors):
    sys.exit(f"step {step}, energy {k + 1}: {theirs[step][k]} and {ours[step][k]}")
