#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""compare_energies.py LOG LOG: the energies of each step in two logs of mdrun, equal to 1e-5 of the potential energy.

Rounding grows from step to step, so that the last digit that a log shows may differ. Pressure, a difference of large
numbers, is left out."""
import re
import sys

ALLOWED = 1e-5
NAMES = ("LJ (SR)", "Coulomb (SR)", "Coul. recip.", "Potential", "Kinetic En.", "Total Energy")


def energies(log: str) -> list[list[float]]:
    text = open(log, encoding="utf-8").read().split("<====")[0]
    blocks = re.findall(r"Energies \(kJ/mol\)\n(.*?)\n\n", text, re.DOTALL)
    steps = []
    for block in blocks:
        lines = block.splitlines()
        names, values = [], []
        for heads, figures in zip(lines[::2], lines[1::2]):
            names += [heads[k:k + 15].strip() for k in range(0, len(heads), 15)]
            values += [float(figures[k:k + 15]) for k in range(0, len(figures), 15)]
        found = dict(zip(names, values))
        steps.append([found[name] for name in NAMES])
    return steps


theirs, ours = energies(sys.argv[1]), energies(sys.argv[2])
if len(theirs) != len(ours) or len(ours) < 6:
    sys.exit(f"{len(theirs)} and {len(ours)} steps")
worst = 0.0
for step, (a, b) in enumerate(zip(theirs, ours)):
    for name, x, y in zip(NAMES, a, b):
        error = abs(x - y) / abs(a[NAMES.index("Potential")])
        worst = max(worst, error)
        if not error <= ALLOWED:
            sys.exit(f"step {step}, {name}: {x} and {y}")
print(f"{len(ours)} steps, {len(NAMES)} energies each, largest difference {worst:.1e} of the potential energy")
