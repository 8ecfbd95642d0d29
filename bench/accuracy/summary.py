#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""summary.py CURVES TABLE...: the worst errors of tables of accuracy, in units of 2^-24 sqrt(log2 n), as the text of a
page. Writes CURVES.csv, the worst of all inputs for each kind, length and library, and CURVES.worst.csv, the worst of
all lengths."""
import collections
import csv
import sys

LIBRARIES = ["libqfftf", "libfftw3f", "pocketfft"]
CLASSES = ["primes up to 13", "a prime from 17 to 37", "a larger prime"]


def class_of(kind, n):
    """By the largest prime factor of the length that decides: n - 1 and n + 1 for the two kinds of type I."""
    n += {"redft00": -1, "rodft00": 1}.get(kind, 0)
    largest, p = 1, 2
    while n > 1:
        while n % p == 0:
            n, largest = n // p, p
        p = p + 1 if p * p <= n else n
    return CLASSES[0 if largest <= 13 else 1 if largest <= 37 else 2]


worst = collections.defaultdict(lambda: (0.0, ""))      # of a kind, class, norm and library: error, where
curves = collections.defaultdict(lambda: [0.0, 0.0])    # of a kind, class, length and library: L2, largest
for path in sys.argv[2:]:
    for row in csv.DictReader(line for line in open(path) if not line.startswith("#")):
        library = next(name for name in LIBRARIES if row["library"].startswith(name))
        kind, n = row["problem"].split()[0], int(row["n"])
        group = class_of(kind, n)
        errors = float(row["l2_units"]), float(row["max_units"])
        for norm, error in zip(("L2", "max"), errors):
            if not error == error:
                sys.exit(f"{row['problem']} by {library} is not a number")
            key = kind, group, norm, library
            worst[key] = max(worst[key], (error, f"{n} {row['input']}"))
        known = curves[kind, group, n, library]
        known[:] = [max(a, b) for a, b in zip(known, errors)]

kinds = list(dict.fromkeys(key[0] for key in worst))
print("| kind | lengths | L2 | at | peer | pocketfft | largest | at | peer | pocketfft |")
print("|---|---|---|---|---|---|---|---|---|---|")
for kind in kinds:
    for group in CLASSES:
        if not any(key[:2] == (kind, group) for key in worst):
            continue
        cells = []
        for norm in ("L2", "max"):
            ours, peer, pocket = (worst.get((kind, group, norm, library), (0, "")) for library in LIBRARIES)
            cells += [f"{ours[0]:.2f}", ours[1], f"{peer[0]:.2f}", f"{pocket[0]:.2f}" if pocket[1] else "-"]
        print(f"| {kind} | {group} | " + " | ".join(cells) + " |")

with open(sys.argv[1] + ".csv", "w") as file:
    print("kind,class,n,library,l2_units,max_units", file=file)
    for (kind, group, n, library), (l2, largest) in sorted(curves.items()):
        print(f"{kind},{group},{n},{library},{l2:.4f},{largest:.4f}", file=file)
with open(sys.argv[1] + ".worst.csv", "w") as file:
    print("kind," + ",".join(f"{library} {norm}" for norm in ("L2", "max") for library in LIBRARIES), file=file)
    for kind in kinds:
        values = [max((e for key, (e, _) in worst.items() if (key[0], key[2], key[3]) == (kind, norm, library)), default=0)
                  for norm in ("L2", "max") for library in LIBRARIES]
        print(kind + "," + ",".join(f"{value:.3f}" for value in values), file=file)
