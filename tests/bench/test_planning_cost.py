# SPDX-License-Identifier: Apache-2.0
"""What plans cost, in instructions with those of the C library: test_planning_cost.py TOOL BENCH LIBRARY COMPILER"""
import csv
import shutil
import subprocess
import sys

TOOL, BENCH, LIBRARY, COMPILER = sys.argv[1:]
ALLOWED = {"c2c 16": 3500, "c2c 64": 8500, "c2c 1024": 15500, "c2c 16384": 158000, "c2c 65536": 530000, "c2c 1009": 168000,
           "c2c 64x64": 37000, "r2c 1024": 24000, "redft10 1024": 47000}
if COMPILER == "GNU":  # whose code takes more
    ALLOWED = {problem: allowed * 11 // 10 for problem, allowed in ALLOWED.items()} | {"c2c 1009": 231000}

if not shutil.which("qemu-aarch64") or not shutil.which("cc"):
    print("skipped: needs qemu-aarch64 and cc")
    sys.exit(77)
done = subprocess.run([TOOL, "--", BENCH, "--library", LIBRARY, *ALLOWED], capture_output=True, text=True, check=True)
counted = {row["problem"]: int(row["first"]) for row in csv.DictReader(done.stdout.splitlines())}
dear = [f"{problem}: {counted[problem]} instructions, allowed {allowed}" for problem, allowed in ALLOWED.items()
        if not 0 < counted[problem] <= allowed]
print("\n".join(dear) or f"{len(counted)} plans within their bounds")
sys.exit(1 if dear else 0)
