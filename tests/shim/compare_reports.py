# SPDX-License-Identifier: Apache-2.0
"""compare_reports.py DIFFERENCES OUR_FOLDER THEIR_FOLDER [EMULATOR...] PROGRAM

Runs PROGRAM twice, on the libraries in OUR_FOLDER and in THEIR_FOLDER, and compares what it reports. Every difference
must be listed in DIFFERENCES (files with commas between them), and every listed difference must occur. Ends with 77 where their library isn't there."""
import os
import pathlib
import re
import subprocess
import sys


def report(command, folder):
    environment = dict(os.environ, ASAN_OPTIONS="detect_leaks=0:allocator_may_return_null=1")
    if "qemu" in command[0]:
        command = [command[0], "-E", f"LD_LIBRARY_PATH={folder}"] + command[1:]
    else:
        environment["LD_LIBRARY_PATH"] = folder
    result = subprocess.run(command, env=environment, capture_output=True, text=True)
    if result.returncode != 0:
        sys.exit(f"FAILED: on {folder} the program ended with {result.returncode}:\n{result.stdout}{result.stderr}")
    return dict(line.rsplit(" = ", 1) for line in result.stdout.splitlines())


def equal(theirs, ours):
    """To rounding: an answer is one number or the weighted sums of four arrays."""
    pairs = list(zip(map(float, theirs.split()), map(float, ours.split())))
    return len(theirs.split()) == len(ours.split()) and all(abs(a - b) <= 1e-5 * abs(a) + 0.05 for a, b in pairs)


def documented(files):
    differences = {}
    for line in "\n".join(pathlib.Path(file).read_text() for file in files.split(",")).splitlines():
        if line and not line.startswith("#"):
            question, theirs, ours = re.fullmatch(r"(.*) \| (\S.*) \| (\S.*)", line).groups()
            differences[question] = (theirs, ours)
    return differences


def main():
    files, our_folder, their_folder, *command = sys.argv[1:]
    if not pathlib.Path(their_folder, "libfftw3f.so.3").exists():
        print(f"skipped: there is no {their_folder}/libfftw3f.so.3")
        sys.exit(77)
    ours, theirs, allowed = report(command, our_folder), report(command, their_folder), documented(files)
    failures = []
    if ours.keys() != theirs.keys() or len(ours) < 100:
        failures.append(f"{len(ours)} answers here, {len(theirs)} there")
    for question in ours.keys() & theirs.keys():
        pair = (theirs[question], ours[question])
        if question in allowed:
            if pair[0] != allowed[question][0] or allowed[question][1] not in (pair[1], "*") or pair[0] == pair[1]:
                failures.append(f"{question}: documented as {allowed[question]}, is {pair}")
        elif not equal(*pair):
            failures.append(f"{question}: there {pair[0]}, here {pair[1]}")
    failures += [f"{question}: documented, but never asked" for question in allowed.keys() - ours.keys()]
    print("\n".join("FAILED: " + f for f in sorted(failures)))
    print(f"{len(ours)} answers, {len(allowed)} documented differences, {len(failures)} failures")
    sys.exit(1 if failures else 0)


main()
