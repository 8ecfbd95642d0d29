#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""The planner's policy as text, reviewed like code: for each problem of the files in a folder, and there for every
length up to 4096 and every tuned one, the tree that qfftf-plan prints must be the one that stands there.

  check_golden_trees.py [--update] FOLDER SCHEDULE_TABLES COMMAND...

COMMAND starts qfftf-plan. golden_trees.py tells the format of the files. --update (target update_golden_trees) writes
them anew, after a change of policy or after adding problems: read the difference as you would read code.
"""
import argparse
import pathlib
import re
import subprocess
import sys

import golden_trees

MOST_PRINTED = 20
AT_ONCE = 2000  # problems of one command line


def trees_of(command, problems):
    """The tree of each problem as qfftf-plan prints it, or "refused: " and the reason."""
    run = subprocess.run([*command, *problems], capture_output=True, text=True)
    if run.returncode not in (0, 1):
        sys.exit(f"{' '.join(command)}: {run.stderr}")
    level, *lines = run.stdout.splitlines()
    if not level.startswith("level "):
        sys.exit(f"qfftf-plan began with '{level}'")
    trees, tree = [], []
    for line in lines:
        if " : refused: " in line:
            trees.append(line.partition(" : ")[2])
        elif line.startswith("owned "):
            trees.append("\n".join(tree))
            tree = []
        else:
            tree.append(line)
    if tree or len(trees) != len(problems):
        sys.exit(f"qfftf-plan printed {len(trees)} trees of {len(problems)} problems")
    return trees


def tuned_lengths(schedule_tables):
    rows = re.findall(r"\{(\d+), \d, \{[\d, ]+\}\}", pathlib.Path(schedule_tables).read_text())
    if len(rows) < 200:
        sys.exit(f"{schedule_tables}: {len(rows)} rows are not all of them")
    return {int(length) for length in rows}


def head_of(text):
    """The comment that a file begins with."""
    return re.match(r"(?:#.*\n)*\n?", text)[0]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--update", action="store_true")
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("schedule_tables")
    parser.add_argument("command", nargs=argparse.REMAINDER)
    arguments = parser.parse_args()
    faults, problems = [], []
    for path in sorted(arguments.folder.glob("*.txt")):
        text = path.read_text()
        told = list(golden_trees.read_entries(text))
        names = [problem for problem, _ in told]
        problems += names
        actual = [tree for at in range(0, len(names), AT_ONCE)
                  for tree in trees_of(arguments.command, names[at:at + AT_ONCE])]
        faults += [f"{path.name}: {problem}\n-- is\n{is_now}\n-- was\n{was}\n"
                   for (problem, was), is_now in zip(told, actual) if was != is_now]
        written = head_of(text) + golden_trees.write_entries(zip(names, actual))
        if arguments.update:
            path.write_text(written)
        elif written != text and not faults:
            faults.append(f"{path.name} is not as --update would write it")
    if arguments.update:
        faults = []
    every_length = set(range(1, 4097)) | tuned_lengths(arguments.schedule_tables)
    if missing := every_length - {int(problem[4:]) for problem in problems if re.fullmatch(r"c2c \d+", problem)}:
        faults.append(f"no tree of c2c {golden_trees.text_of(missing)}")
    for fault in faults[:MOST_PRINTED]:
        print(fault)
    print(f"{len(problems)} problems, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
