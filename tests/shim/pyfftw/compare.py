#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""compare.py RESULTS RESULTS: what exercise.py kept on two libraries is equal, to rounding where it is numbers."""
import sys

import numpy as np

ALLOWED = 2e-6  # relative, L2: both libraries round, in single precision

theirs, ours = np.load(sys.argv[1]), np.load(sys.argv[2])
if theirs.files != ours.files or len(ours.files) < 1000:
    sys.exit(f"{len(theirs.files)} and {len(ours.files)} results")
failures, refused, worst = [], 0, 0.0
for name in ours.files:
    a, b = theirs[name], ours[name]
    if a.dtype.kind not in "fc" or b.dtype.kind not in "fc":
        refused += a.dtype.kind == "U"
        if a.dtype.kind != b.dtype.kind or not np.array_equal(a, b):
            failures.append(f"{name}: {a} and {b}")
        continue
    error = np.linalg.norm((a - b).ravel()) / max(np.linalg.norm(a.ravel()), 1e-30)
    worst = max(worst, error)
    if a.shape != b.shape or a.dtype != b.dtype or not error <= ALLOWED:
        failures.append(f"{name}: {a.dtype}{a.shape} and {b.dtype}{b.shape}, distance {error:.1e}")
print(f"{len(ours.files)} results, {refused} of them refusals that are the same on both, largest distance {worst:.1e}")
if failures:
    sys.exit("\n".join(failures))
