#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""compare.py RESULTS RESULTS: what exercise.py kept on two libraries. On the second every number is right, to rounding,
and every other answer and every refusal is that of the first. Tells what isn't right on the first."""
import sys

import numpy as np

ALLOWED = 2e-6  # relative, L2, of single precision


def distance(a, b):
    if a.dtype.kind not in "fc" or a.shape != b.shape:
        return np.inf
    error = np.linalg.norm((a.astype("complex128") - b).ravel()) / max(np.linalg.norm(b.ravel()), 1e-30)
    return error if np.isfinite(error) else np.inf


def main():
    theirs, ours = np.load(sys.argv[1]), np.load(sys.argv[2])
    names = [name for name in ours.files if not name.startswith("expected: ")]
    if theirs.files != ours.files or len(names) < 1500:
        sys.exit(f"{len(theirs.files)} and {len(ours.files)} results")
    failures, wrong_there, refused, worst = [], [], [], 0.0
    for name in names:
        a, b = theirs[name], ours[name]
        if f"expected: {name}" not in ours.files:
            if a.dtype != b.dtype or not np.array_equal(a, b):
                failures.append(f"{name}: {a} there, {b} here")
            refused += [f"{name}: {b}"] if b.dtype.kind == "U" else []
            continue
        expected = ours[f"expected: {name}"]
        error = distance(b, expected)
        worst = max(worst, error)
        if not error <= ALLOWED or (a.dtype != b.dtype and a.dtype.kind != "U"):
            failures.append(f"{name}: distance {error:.1e}, {b.dtype}; there {distance(a, expected):.1e}, {a.dtype}; {b}")
        elif not distance(a, expected) <= ALLOWED:
            wrong_there.append(f"{name}: {a if a.dtype.kind == 'U' else distance(a, expected)}")
    print("\n".join([f"refused by both: {text}" for text in refused] + [f"not right there: {text}" for text in wrong_there]))
    print(f"{len(names)} results, {len(refused)} refused by both, {len(wrong_there)} not right there, largest error {worst:.1e}")
    if failures:
        sys.exit("\n".join(failures))


main()
