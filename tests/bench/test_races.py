# SPDX-License-Identifier: Apache-2.0
"""By a clock that counts instructions, measured planning finds the plan with the fewest: test_races.py TOOL PROGRAM"""
import csv
import shutil
import subprocess
import sys
import tempfile

TOOL, PROGRAM = sys.argv[1:]
PROBLEMS = ["c2c 16", "c2c 37", "c2c 64", "c2c 64 istride=3", "c2c 100", "c2c 360", "c2c 101", "c2c 8 batch=64", "r2c 1000",
            "c2r 240"]

missing = [name for name in ("qemu-aarch64", "llvm-mca-19", "cc") if not shutil.which(name)]
if missing:
    print(f"skipped: needs {' '.join(missing)}")
    sys.exit(77)
with tempfile.NamedTemporaryFile("w", suffix=".txt") as problems:
    problems.write("\n".join(PROBLEMS))
    problems.flush()
    table = subprocess.run([TOOL, PROGRAM, problems.name], capture_output=True, text=True, check=True).stdout
races = list(csv.DictReader(line for line in table.splitlines() if not line.startswith("#")))
assert [race["problem"] for race in races] == PROBLEMS, races
lost = [f"{race['problem']}: {race['fine_winner']} takes {race['fine_loss']} of {race['best']}" for race in races
        if not 0.99 < float(race["fine_loss"]) < 1.01]
assert any(float(race["rules_loss"]) > 1.05 for race in races), "the rules lose nowhere: nothing was raced"
print("\n".join(lost) or f"{len(races)} races won by the best")
sys.exit(1 if lost else 0)
